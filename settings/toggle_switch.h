// A switch: on or off, at once. To the keyboard and to screen readers it is a check box.
#pragma once

#include "settings/glide.h"

#include <QCheckBox>

namespace amperly {

class ToggleSwitch : public QCheckBox {
public:
    ToggleSwitch();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override;

private:
    Glide m_on{*this}; ///< 0 off, 1 on
};

} // namespace amperly
