// Opens a Menu as the program's own, for desktops that do not draw it themselves and for clicks
// that ask for it.
#pragma once

#include "platform/linux/popover/reopen_guard.h"
#include "platform/linux/popover/transient_window.h"
#include "platform/menu.h"

#include <QPointer>
#include <vector>

class QMenu;

namespace amperly {

class MenuPresenter {
public:
    explicit MenuPresenter(WindowKind kind = windowKindOfDesktop(), ReopenGuard::Inputs inputs = {});
    ~MenuPresenter();
    MenuPresenter(const MenuPresenter&) = delete;
    MenuPresenter& operator=(const MenuPresenter&) = delete;

    /// Opens `menu`, which must outlive this object, at `anchor` or where the pointer is, and
    /// returns at once. The menu is told around the opening, and an entry's action runs after
    /// it was told of the closing. Closes what was open. Does nothing when the request
    /// belongs to the click whose press has just closed the menu.
    void open(Menu& menu, std::optional<ScreenPoint> anchor);

    [[nodiscard]] bool isOpen() const { return m_open != nullptr; }

    void close();

private:
    void openAsPopup(QMenu* widget, std::optional<ScreenPoint> anchor);
    void openInWindow(std::unique_ptr<QMenu> widget, std::optional<ScreenPoint> anchor);
    void finish(ClosedBy by);

    WindowKind m_kind;
    ReopenGuard m_guard;
    Menu* m_open = nullptr;
    QPointer<QWidget> m_shown; ///< the widget itself, or the window around it
    std::vector<QPointer<QWidget>> m_leaving; ///< closed, about to be destroyed
    QObject m_context;
};

} // namespace amperly
