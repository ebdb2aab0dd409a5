// The toolkit's picture of a Menu, kept like it while it lives.
#pragma once

#include "platform/menu.h"

#include <QMenu>

#include <vector>

namespace amperly {

class MenuWidget : public QMenu {
public:
    /// `menu` must outlive the widget. What an entry does is done from the event loop, when the
    /// menu is closed already.
    explicit MenuWidget(Menu& menu);
    ~MenuWidget() override;

private:
    void refresh(int index);

    Menu& m_menu;
    Menu::Listener m_listener;
    std::vector<QAction*> m_actions; ///< by index of the entry
};

} // namespace amperly
