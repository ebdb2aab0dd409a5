// A scroll bar that is no more than its handle.
#pragma once

#include <QScrollBar>

namespace amperly {

class QuietScrollBar : public QScrollBar {
public:
    QuietScrollBar();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace amperly
