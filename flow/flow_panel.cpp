#include "flow/flow_panel.h"

#include "render/status_renderer.h"

#include <QLabel>
#include <QMetaObject>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

namespace amperly {

namespace {

// Points.
constexpr int kWidth = 340;
constexpr int kPadding = 16;
constexpr int kSpacing = 14;
constexpr int kCaptionSize = 11;
constexpr int kHeadlineSize = 30;

QFont sized(QFont font, int pixels, QFont::Weight weight)
{
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

} // namespace

FlowPanel::FlowPanel(LiveModel& live, std::function<void()> openSettings)
    : m_live(live), m_caption(new QLabel(QStringLiteral("Mac is using"))), m_headline(new QLabel)
{
    m_caption->setFont(sized(font(), kCaptionSize, QFont::Normal));
    m_caption->setForegroundRole(QPalette::PlaceholderText);
    m_headline->setFont(sized(font(), kHeadlineSize, QFont::DemiBold));

    auto* const settings = new QPushButton(QStringLiteral("Settings"));
    settings->setFlat(true);
    connect(settings, &QPushButton::clicked, this, [open = std::move(openSettings)] { open(); });

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    layout->setSpacing(kSpacing);
    auto* const figures = new QVBoxLayout;
    figures->setSpacing(0);
    figures->addWidget(m_caption);
    figures->addWidget(m_headline);
    layout->addLayout(figures);
    layout->addWidget(settings, 0, Qt::AlignLeft);
    setFixedWidth(kWidth);

    // The change is announced before it is made: look at it when the event loop comes round.
    m_subscription = m_live.objectWillChange([this] {
        QMetaObject::invokeMethod(
            this, [this] { refresh(); }, Qt::QueuedConnection);
    });
    refresh();
}

void FlowPanel::refresh()
{
    const std::optional<PowerSample>& sample = m_live.sample();
    m_caption->setVisible(sample.has_value());
    m_headline->setText(QString::fromStdString(
        sample ? StatusRenderer::systemLoadText(*sample, 1, true) : "No power data available"));
}

} // namespace amperly
