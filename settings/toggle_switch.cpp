#include "settings/toggle_switch.h"

#include "render/look/window_colors.h"
#include "settings/form_look.h"

#include <QKeyEvent>
#include <QPainter>

namespace amperly {

namespace {

/// Points.
struct SwitchLook {
    double width = 36.0;
    double height = 20.0;
    double rim = 2.0; ///< around the knob
};
constexpr SwitchLook kSwitch;

constexpr double kPressed = 0.2; // how much of what it lies on shows through a pressed knob

} // namespace

ToggleSwitch::ToggleSwitch()
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QCheckBox::toggled, this, [this](bool on) { m_on.to(on ? 1.0 : 0.0); });
}

QSize ToggleSwitch::sizeHint() const
{
    const int room = 2 * kForm.focusRoom;
    return {static_cast<int>(kSwitch.width) + room, static_cast<int>(kSwitch.height) + room};
}

void ToggleSwitch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kForm.disabledOpacity);
    const FormColors colors = FormColors::of(palette());
    const double on = m_on.value();

    const QRectF body(
        (width() - kSwitch.width) * 0.5, (height() - kSwitch.height) * 0.5, kSwitch.width, kSwitch.height);
    drawPlate(painter, body, kSwitch.height * 0.5, blended(colors.accent, colors.off, on),
        blended(colors.accentEdge, colors.offEdge, on));

    const double diameter = kSwitch.height - 2.0 * kSwitch.rim;
    const double way = kSwitch.width - kSwitch.height;
    const double passed = isRightToLeft() ? 1.0 - on : on;
    const QRectF knob(body.left() + kSwitch.rim + way * passed, body.top() + kSwitch.rim, diameter, diameter);
    const QColor fill = blended(colors.knob, colors.offKnob, on);
    drawPlate(painter, knob, diameter * 0.5, isDown() ? blended(colors.off, fill, kPressed) : fill,
        blended(colors.accentEdge, colors.offKnobEdge, on));

    drawFocus(painter, *this, body, kSwitch.height * 0.5);
}

void ToggleSwitch::keyPressEvent(QKeyEvent* event)
{
    // Return as well as the space bar: the form has no default button.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QCheckBox::keyPressEvent(event);
}

bool ToggleSwitch::hitButton(const QPoint& position) const
{
    return rect().contains(position);
}

} // namespace amperly
