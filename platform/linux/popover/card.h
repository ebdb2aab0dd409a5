// The rounded sheet that a popover's content lies on, with a hairline around it and, where the
// screen can show it, a soft shadow. It is as large as its content wants to be at any moment.
#pragma once

#include <QWidget>

#include <memory>

namespace amperly {

enum class CardEdge {
    Shadowed, ///< for translucent windows: the card floats on its shadow
    Plain, ///< the card alone, for windows that are cut to its outline
    Bare, ///< nothing is drawn: the content brings its own ground
};

class Card : public QWidget {
public:
    static constexpr int kRadius = 12; ///< logical pixels

    Card(std::unique_ptr<QWidget> content, CardEdge edge, QWidget* parent);

    /// Where the sheet lies within this widget; around it is only shadow.
    [[nodiscard]] QRect sheet() const;

    /// How much the shadow adds on each side.
    [[nodiscard]] QMargins margins() const;

    [[nodiscard]] QWidget& content() const { return *m_content; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CardEdge m_edge;
    QWidget* m_content;
};

} // namespace amperly
