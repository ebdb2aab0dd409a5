// One row of a card: what it is about at its beginning, the control at its end.
#pragma once

#include "settings/form_look.h"

#include <QWidget>

class QAbstractButton;

namespace amperly {

class FormRow : public QWidget {
public:
    /// A row of one control. An ampersand in `title` stands before the letter that, with Alt,
    /// leads to the control; the control's spoken name is the title. A switch can be clicked
    /// anywhere in its row.
    FormRow(const QString& title, QWidget* control);

    /// A row of anything, each of which may be null. The trailing one has so much room around
    /// what is seen of it, which is taken off the row's end.
    FormRow(QWidget* leading, QWidget* trailing, int trailingRoom = kForm.focusRoom);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QAbstractButton* m_switch; ///< null where the row has none
};

} // namespace amperly
