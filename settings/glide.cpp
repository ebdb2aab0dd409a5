#include "settings/glide.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace amperly {

namespace {

constexpr int kLongestMilliseconds = 140; // longer feels as if the control hesitated

} // namespace

Glide::Glide(QWidget& widget, double value) : m_widget(widget), m_value(value), m_target(value)
{
    m_animation.setEasingCurve(QEasingCurve::OutCubic);
    QObject::connect(
        &m_animation, &QVariantAnimation::valueChanged, &m_animation, [this](const QVariant& step) {
            m_value = step.toDouble();
            m_widget.update();
        });
}

void Glide::to(double target)
{
    if (target == m_target)
        return;
    const int wanted = m_widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &m_widget);
    if (wanted <= 0 || !m_widget.isVisible()) {
        jumpTo(target);
        return;
    }
    m_target = target;
    m_animation.stop();
    m_animation.setDuration(std::min(wanted, kLongestMilliseconds));
    m_animation.setStartValue(m_value);
    m_animation.setEndValue(target);
    m_animation.start();
}

void Glide::jumpTo(double target)
{
    m_animation.stop();
    m_target = target;
    m_value = target;
    m_widget.update();
}

} // namespace amperly
