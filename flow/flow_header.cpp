#include "flow/flow_header.h"

#include "render/look/pixel_painting.h"
#include "render/look/text_style.h"
#include "render/look/window_colors.h"
#include "render/status_renderer.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

// Points.
constexpr int kFigureSize = 30;
constexpr int kGap = 8; ///< at least, between headline and pill

const QString& caption()
{
    static const QString text = QStringLiteral("Mac is using");
    return text;
}

} // namespace

Headline::Headline(const DisplaySettings& display, QWidget* parent)
    : SpokenText(parent), m_display(display), m_figure(figureFont(kFigureSize, QFont::DemiBold))
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Headline::setSample(const PowerSample& sample)
{
    const bool first = m_figure.text().isEmpty();
    const QString text = QString::fromStdString(StatusRenderer::systemLoadText(sample, 1));
    say(caption() + QLatin1Char(' ') + text);
    if (text == m_figure.text())
        return;
    m_figure.setText(text);
    if (first)
        m_figure.settle();
    updateGeometry();
    update();
}

void Headline::advance(double now)
{
    const double width = m_figure.width();
    if (!m_figure.advance(now))
        return;
    // A figure that has waited for an earlier one to finish begins to roll.
    if (m_figure.width() != width)
        updateGeometry();
    update();
}

void Headline::settle()
{
    if (!m_figure.isRolling())
        return;
    m_figure.settle();
    update();
}

double Headline::captionHeight() const
{
    const QFontMetricsF metrics(textFont(TextStyle::Caption));
    return metrics.ascent() + metrics.descent();
}

QSize Headline::sizeHint() const
{
    const double captionWidth = QFontMetricsF(textFont(TextStyle::Caption)).horizontalAdvance(caption());
    return {static_cast<int>(std::ceil(std::max(captionWidth, m_figure.width()))),
        static_cast<int>(std::ceil(captionHeight() + m_figure.height()))};
}

void Headline::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const double scale = pixelScale(painter);
    const QFont font = textFont(TextStyle::Caption);
    const QFontMetricsF metrics(font);
    const bool fromRight = layoutDirection() == Qt::RightToLeft;
    m_figure.setAnchor(fromRight ? 1.0 : 0.0);
    const auto left = [&](double width) { return fromRight ? this->width() - width : 0.0; };
    painter.setFont(font);
    painter.setPen(secondaryColor(palette(), m_display));
    painter.drawText(
        QPointF(left(metrics.horizontalAdvance(caption())), onPixels(metrics.ascent(), scale)), caption());
    m_figure.paint(painter, QPointF(left(m_figure.width()), captionHeight()),
        palette().color(QPalette::Active, QPalette::WindowText));
}

void Headline::changeEvent(QEvent* event)
{
    SpokenText::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange) {
        m_figure.setFont(figureFont(kFigureSize, QFont::DemiBold));
        updateGeometry();
    }
    if (event->type() == QEvent::PaletteChange)
        update();
}

FlowHeader::FlowHeader(const DisplaySettings& display, QWidget* parent)
    : QWidget(parent), m_headline(new Headline(display, this)), m_pill(new StatusPill(this))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FlowHeader::setSample(const PowerSample& sample)
{
    m_headline->setSample(sample);
    m_pill->setPill(pill(sample));
    arrange();
}

QSize FlowHeader::sizeHint() const
{
    const QSize headline = m_headline->sizeHint();
    const QSize pill = m_pill->sizeHint();
    return {headline.width() + kGap + pill.width(), std::max(headline.height(), pill.height())};
}

void FlowHeader::arrange()
{
    const QSize headline = m_headline->sizeHint();
    m_pill->setAvailableWidth(width() - headline.width() - kGap);
    const QSize pill = m_pill->sizeHint();
    const auto centred = [this](QPoint left, QSize size) {
        return QStyle::visualRect(
            layoutDirection(), rect(), QRect(left + QPoint(0, (height() - size.height()) / 2), size));
    };
    // All the width that is left: figures that become shorter still need it while they move.
    m_headline->setGeometry(centred({0, 0}, {width() - pill.width() - kGap, headline.height()}));
    m_pill->setGeometry(centred({width() - pill.width(), 0}, pill));
}

void FlowHeader::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

bool FlowHeader::event(QEvent* event)
{
    // The headline grows by a digit, or the fonts have changed.
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::LayoutDirectionChange)
        arrange();
    return QWidget::event(event);
}

} // namespace amperly
