#include "settings/quiet_scroll_bar.h"

#include "render/look/window_colors.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

namespace amperly {

namespace {

constexpr int kWidth = 14; // points, to be hit
constexpr double kHandleWidth = 6.0;
constexpr double kEnds = 2.0; // between the handle and the window's edges

// Shares of the text's colour.
constexpr double kResting = 0.3;
constexpr double kTouched = 0.5;

} // namespace

QuietScrollBar::QuietScrollBar() : QScrollBar(Qt::Vertical)
{
    setAttribute(Qt::WA_Hover);
}

QSize QuietScrollBar::sizeHint() const
{
    return {kWidth, QScrollBar::sizeHint().height()};
}

void QuietScrollBar::paintEvent(QPaintEvent*)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRectF slot
        = style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
    const QRectF handle(
        (width() - kHandleWidth) * 0.5, slot.top() + kEnds, kHandleWidth, slot.height() - 2 * kEnds);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(blended(palette().color(QPalette::WindowText), palette().color(QPalette::Window),
        isSliderDown() || underMouse() ? kTouched : kResting));
    painter.drawRoundedRect(handle, kHandleWidth * 0.5, kHandleWidth * 0.5);
}

} // namespace amperly
