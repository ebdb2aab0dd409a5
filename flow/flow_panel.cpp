#include "flow/flow_panel.h"

#include "flow/flow_diagram.h"
#include "flow/flow_header.h"
#include "flow/spoken_text.h"
#include "platform/desktop.h"
#include "platform/display_settings.h"
#include "prefs/pref.h"
#include "render/look/pixel_painting.h"
#include "render/look/quiet_button.h"
#include "render/look/text_style.h"
#include "render/look/window_colors.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeySequence>
#include <QMetaObject>
#include <QPainter>
#include <QVBoxLayout>
#include <utility>

namespace amperly {

namespace {

/// Points.
struct PanelLook {
    int width = 340;
    int padding = 16;
    int spacing = 14;
    int edge = 1; ///< what the popover's outline takes of the panel's sides
    int diagramHeight = 200;
    int noDataHeight = 120;
};
constexpr PanelLook kPanel;

/// The diagram's light may spill over the panel's padding and the gaps above and below.
constexpr QMargins kSpill{
    kPanel.padding - kPanel.edge, kPanel.spacing, kPanel.padding - kPanel.edge, kPanel.spacing};

/// A thin line between two parts of the panel, one point high and on whole pixels.
class Divider : public QWidget {
public:
    Divider(const DisplaySettings& display, QWidget* parent) : QWidget(parent), m_display(display)
    {
        setFixedHeight(1);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        // At fractional scales the widget does not begin on a pixel; a picture of the line does.
        const double scale = pixelScale(painter);
        QImage line = clearPicture({static_cast<double>(width()), onPixels(1.0, scale)}, scale);
        line.fill(separatorColor(palette(), m_display));
        drawOnPixels(painter, {}, line);
    }

private:
    const DisplaySettings& m_display;
};

/// What the panel shows while there is no reading.
class NoData : public SpokenText {
public:
    explicit NoData(const DisplaySettings& display) : m_display(display)
    {
        say(QStringLiteral("No power data available"));
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setFont(textFont(TextStyle::Body));
        painter.setPen(secondaryColor(palette(), m_display));
        painter.drawText(rect(), Qt::AlignCenter, accessibleName());
    }

private:
    const DisplaySettings& m_display;
};

/// A column of one widget, set in from the sides of the panel.
QVBoxLayout* inset(QWidget* widget, const QMargins& margins)
{
    auto* const column = new QVBoxLayout;
    column->setContentsMargins(margins);
    column->addWidget(widget);
    return column;
}

} // namespace

FlowPanel::FlowPanel(LiveModel& live, const PanelServices& services, std::function<void()> openSettings)
    : m_live(live)
    , m_services(services)
    , m_column(new QVBoxLayout(this))
    , m_readings(new QVBoxLayout)
    , m_divider(new Divider(services.display, this))
    , m_moves(!services.display.reducesMotion())
{
    setFixedWidth(kPanel.width);
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(0);
    m_readings->setSpacing(0);
    m_column->addLayout(m_readings);
    m_column->addLayout(inset(m_divider, {kPanel.padding, 0, kPanel.padding, 0}));
    addFooter(std::move(openSettings));

    // The change is announced before it is made: look at it when the event loop comes round.
    m_subscription = m_live.objectWillChange([this] {
        QMetaObject::invokeMethod(
            this, [this] { refresh(); }, Qt::QueuedConnection);
    });
    refresh();
}

FlowPanel::~FlowPanel() = default;

void FlowPanel::addFooter(std::function<void()> openSettings)
{
    const auto button = [this](const QString& text, QuietButton::Tone tone, std::function<void()> action) {
        auto* const made = new QuietButton(text, tone, this);
        made->setFont(textFont(TextStyle::Callout));
        connect(made, &QuietButton::clicked, this, [act = std::move(action)] { act(); });
        return made;
    };
    auto* const settings
        = button(QStringLiteral("Settings"), QuietButton::Tone::Plain, std::move(openSettings));
    settings->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    auto* const coffee = button(QStringLiteral("☕ Buy me a coffee"), QuietButton::Tone::Link,
        [this] { m_services.desktop.openAddress(Pref::coffeeURL()); });
    auto* const quit
        = button(QStringLiteral("Quit"), QuietButton::Tone::Plain, [this] { m_services.desktop.quit(); });
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    auto* const footer = new QHBoxLayout;
    // The buttons' texts, not their backgrounds, line up with what is above them.
    const int side = kPanel.padding - QuietButton::kSidePadding;
    const int above = (quit->sizeHint().height() - quit->fontMetrics().height()) / 2;
    footer->setContentsMargins(side, kPanel.spacing - above, side, kPanel.padding - above);
    footer->setSpacing(0);
    footer->addWidget(settings);
    footer->addStretch();
    footer->addWidget(coffee);
    footer->addStretch();
    footer->addWidget(quit);
    m_column->addLayout(footer);
}

void FlowPanel::refresh()
{
    if (m_live.sample())
        showReading(*m_live.sample());
    else
        showNoData();
    followFrames();
}

void FlowPanel::showReading(const PowerSample& sample)
{
    if (m_diagram == nullptr) {
        clear();
        m_header = new FlowHeader(m_services.display);
        m_readings->addLayout(inset(m_header, {kPanel.padding, kPanel.padding, kPanel.padding, 0}));
        m_diagram = new FlowDiagram(sample, m_services.display);
        m_diagram->setContentsMargins(kSpill);
        m_diagram->setFixedHeight(kPanel.diagramHeight + kSpill.top() + kSpill.bottom());
        m_readings->addLayout(inset(m_diagram, {kPanel.edge, 0, kPanel.edge, 0}));
    }
    m_header->setSample(sample);
    m_diagram->setSample(sample);
    if (!m_moves) {
        m_header->settle();
        m_diagram->settle();
    }
}

void FlowPanel::showNoData()
{
    if (m_noData != nullptr)
        return;
    clear();
    m_noData = new NoData(m_services.display);
    m_noData->setMinimumHeight(kPanel.noDataHeight);
    m_readings->addLayout(inset(m_noData, {kPanel.padding, kPanel.padding, kPanel.padding, kPanel.spacing}));
}

void FlowPanel::clear()
{
    delete std::exchange(m_header, nullptr);
    delete std::exchange(m_diagram, nullptr);
    delete std::exchange(m_noData, nullptr);
    while (QLayoutItem* const emptied = m_readings->takeAt(0))
        delete emptied;
}

void FlowPanel::followFrames()
{
    // Without a reading nothing moves; with one the computer's node always breathes.
    if (!m_moves || m_diagram == nullptr || !isVisible())
        m_run.reset();
    else if (!m_run)
        m_run = m_services.frames.start(*this, [this](double now) { advance(now); });
}

void FlowPanel::advance(double now)
{
    m_header->advance(now);
    m_diagram->advance(now);
    // Header and diagram are painted together, now, while the display waits for them.
    QEvent paint(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(window(), &paint);
}

void FlowPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    followFrames();
}

void FlowPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    // Whether things may move is announced like a change of the desktop's colours.
    if (event->type() == QEvent::PaletteChange && m_moves == m_services.display.reducesMotion()) {
        m_moves = !m_moves;
        refresh();
    }
}

void FlowPanel::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    followFrames();
}

} // namespace amperly
