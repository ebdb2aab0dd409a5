#include "settings/form_scroll.h"

#include "settings/form_look.h"
#include "settings/quiet_scroll_bar.h"

#include <QApplication>

namespace amperly {

FormScroll::FormScroll(QWidget* form)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBar(new QuietScrollBar);
    setWidgetResizable(true);
    setAlignment(Qt::AlignHCenter);
    setWidget(form);
    // The window's own ground shows between the cards.
    form->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);

    // However the focus comes to a control, by Tab, by its letter or by a screen reader.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now != nullptr && widget() != nullptr && widget()->isAncestorOf(now))
            ensureWidgetVisible(now, 0, kForm.rowHeight);
    });
}

} // namespace amperly
