#include "platform/linux/shell/menu_presenter.h"

#include <QCursor>

#include <utility>

namespace amperly {

MenuPresenter::MenuPresenter(WindowKind kind) : m_kind(kind) { }

MenuPresenter::~MenuPresenter()
{
    close();
    delete m_shown;
}

void MenuPresenter::open(Menu& menu, std::optional<ScreenPoint> anchor)
{
    close();
    // First the news, so that the readings are fresh when the entries are laid out.
    m_open = &menu;
    menu.announceWillOpen();
    auto widget = std::make_unique<MenuWidget>(menu);
    if (m_kind == WindowKind::Popup)
        openAsPopup(widget.release(), anchor);
    else
        openInWindow(std::move(widget), anchor);
}

void MenuPresenter::openAsPopup(MenuWidget* widget, std::optional<ScreenPoint> anchor)
{
    m_shown = widget;
    QObject::connect(widget, &QMenu::aboutToHide, &m_context, [this] { finish(); });
    const QPoint pointer = QCursor::pos();
    widget->popup(placeOfClick(pointer, anchor, screenAround(pointer)));
}

void MenuPresenter::openInWindow(std::unique_ptr<MenuWidget> widget, std::optional<ScreenPoint> anchor)
{
    // Such a compositor shows a menu only over a window of the program's that has just been
    // clicked, so the menu lies inside of a window instead.
    QObject::connect(widget.get(), &QMenu::aboutToHide, &m_context, [this] { close(); });
    QObject::connect(widget.get(), &QMenu::triggered, &m_context, [this] { close(); });
    auto window = makeTransientWindow(m_kind, std::move(widget), CardEdge::Bare);
    window->onClosed([this](ClosedBy) { finish(); });
    TransientWindow* const opening = window.release();
    m_shown = opening;
    opening->open(anchor);
}

void MenuPresenter::close()
{
    if (m_shown && m_open)
        m_shown->close();
}

void MenuPresenter::finish()
{
    Menu* const closed = std::exchange(m_open, nullptr);
    if (closed == nullptr)
        return;
    m_shown->deleteLater(); // the choice of an entry is still being delivered
    closed->announceDidClose();
}

} // namespace amperly
