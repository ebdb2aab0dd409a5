// A thin line between two parts of a window, one point high and on whole pixels.
#pragma once

#include <QWidget>

namespace amperly {

class Hairline : public QWidget {
public:
    explicit Hairline(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace amperly
