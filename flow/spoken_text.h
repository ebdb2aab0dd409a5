// A widget that paints words in a way of its own and is a plain text to assistive technology,
// by its accessible name.
#pragma once

#include <QWidget>

namespace amperly {

class SpokenText : public QWidget {
public:
    explicit SpokenText(QWidget* parent = nullptr);

protected:
    /// What is heard from now on.
    void say(const QString& words);
};

} // namespace amperly
