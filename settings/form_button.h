// A push button in the manner of the form.
#pragma once

#include <QPushButton>

namespace amperly {

class FormButton : public QPushButton {
public:
    /// An ampersand in `text` stands before the letter that, with Alt, presses the button.
    explicit FormButton(const QString& text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }
};

} // namespace amperly
