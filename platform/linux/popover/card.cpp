#include "platform/linux/popover/card.h"

#include <QPaintEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace amperly {
namespace {

/// How the sheet lies on the desktop. Lengths in logical pixels.
struct CardLook {
    int shadowReach;
    int shadowDrop; ///< light falls from above
    int shadowStepAlpha; ///< of the innermost of the shadow's steps, one a pixel
    int hairlineAlpha;
};
constexpr CardLook kCard{
    .shadowReach = 24,
    .shadowDrop = 4,
    .shadowStepAlpha = 6, // all steps together darken the edge by a fifth; found by eye
    .hairlineAlpha = 48,
};

void paintShadow(QPainter& painter, const QRectF& sheet)
{
    painter.setPen(Qt::NoPen);
    const QRectF dropped = sheet.translated(0, kCard.shadowDrop);
    constexpr int kSteps = kCard.shadowReach - kCard.shadowDrop;
    for (int step = kSteps; step > 0; --step) {
        painter.setBrush(QColor(0, 0, 0, (kCard.shadowStepAlpha * (kSteps - step) + kSteps - 1) / kSteps));
        const qreal radius = Card::kRadius + step;
        painter.drawRoundedRect(dropped.adjusted(-step, -step, step, step), radius, radius);
    }
}

void paintSheet(QPainter& painter, const QRectF& sheet, const QPalette& palette)
{
    QColor line = palette.color(QPalette::WindowText);
    line.setAlpha(kCard.hairlineAlpha);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::Window));
    painter.drawRoundedRect(sheet, Card::kRadius, Card::kRadius);
    painter.setPen(QPen(line, 1.0));
    painter.setBrush(Qt::NoBrush);
    constexpr qreal kHalf = 0.5; // the line's middle, so that it fills its pixels
    painter.drawRoundedRect(
        sheet.adjusted(kHalf, kHalf, -kHalf, -kHalf), Card::kRadius - kHalf, Card::kRadius - kHalf);
}

} // namespace

Card::Card(std::unique_ptr<QWidget> content, CardEdge edge, QWidget* parent)
    : QWidget(parent), m_edge(edge), m_content(content.release())
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(margins());
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(m_content);
}

QMargins Card::margins() const
{
    if (m_edge != CardEdge::Shadowed)
        return {};
    const int reach = kCard.shadowReach;
    return {reach, reach, reach, reach};
}

QRect Card::sheet() const
{
    return rect().marginsRemoved(margins());
}

void Card::paintEvent(QPaintEvent* event)
{
    if (m_edge == CardEdge::Bare)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // An animation inside repaints the sheet beneath it; the shadow lies outside of that.
    if (m_edge == CardEdge::Shadowed && !sheet().contains(event->rect()))
        paintShadow(painter, sheet());
    paintSheet(painter, sheet(), palette());
}

} // namespace amperly
