// The window around a form that may be taller: it scrolls, and wherever the keyboard's focus goes in
// the form, there it scrolls to.
#pragma once

#include <QScrollArea>

namespace amperly {

class FormScroll : public QScrollArea {
public:
    /// Takes `form` over. Its scroll bar, while there is one, lies in the form's margin: nothing
    /// moves for it.
    explicit FormScroll(QWidget* form);
};

} // namespace amperly
