// A quantity that does not jump to a new value but glides there, briefly, for as long as somebody
// can see it.
#pragma once

#include <QVariantAnimation>

class QWidget;

namespace amperly {

class Glide {
public:
    /// `widget` is repainted at every step, and must outlive this.
    explicit Glide(QWidget& widget, double value = 0.0);

    [[nodiscard]] double value() const { return m_value; }

    /// Heads for `target`: at once where nobody sees it or the desktop wants no animation.
    void to(double target);

    void jumpTo(double target);

private:
    QWidget& m_widget;
    double m_value;
    double m_target;
    QVariantAnimation m_animation;
};

} // namespace amperly
