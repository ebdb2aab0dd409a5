#include "flow/headline.h"

#include "render/look/pixel_painting.h"
#include "render/look/text_style.h"
#include "render/look/window_colors.h"
#include "render/status_renderer.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

constexpr int kFigureSize = 30; // points
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
    // A figure that has waited for another one begins to roll.
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
    const double words = QFontMetricsF(textFont(TextStyle::Caption)).horizontalAdvance(caption());
    return {static_cast<int>(std::ceil(std::max(words, m_figure.width()))),
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

} // namespace amperly
