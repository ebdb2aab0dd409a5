// A button without a border, for footers: text in the accent colour or, quieter, in the text's
// own. It shows the pointer over it, the press and the keyboard's focus.
#pragma once

#include <QAbstractButton>

namespace amperly {

class QuietButton : public QAbstractButton {
public:
    enum class Tone { Plain, Link };

    /// Points between its text and its left and right edge.
    static constexpr int kSidePadding = 6;

    /// Links say so to screen readers.
    QuietButton(const QString& text, Tone tone, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] Tone tone() const { return m_tone; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    Tone m_tone;
};

} // namespace amperly
