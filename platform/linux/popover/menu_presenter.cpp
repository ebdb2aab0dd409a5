#include "platform/linux/popover/menu_presenter.h"

#include <QCursor>
#include <QGuiApplication>

#include <utility>

namespace amperly {

namespace {

/// Why a popup that is about to hide does.
ClosedBy reasonOf(const QWidget& popup)
{
    const bool pressed = QGuiApplication::mouseButtons() != Qt::NoButton;
    return pressed && !popup.geometry().contains(QCursor::pos()) ? ClosedBy::OutsidePress : ClosedBy::Request;
}

} // namespace

MenuPresenter::MenuPresenter(WindowKind kind, ReopenGuard::Senses senses)
    : m_kind(kind), m_guard(std::move(senses))
{
}

MenuPresenter::~MenuPresenter()
{
    close();
    for (const QPointer<QWidget>& widget : m_leaving)
        delete widget;
}

void MenuPresenter::open(Menu& menu, std::optional<ScreenPoint> anchor)
{
    close();
    if (m_guard.belongsToPress(QCursor::pos()))
        return;
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
    QObject::connect(widget, &QMenu::aboutToHide, &m_context, [this, widget] { finish(reasonOf(*widget)); });
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
    window->onClosed([this](ClosedBy by) { finish(by); });
    TransientWindow* const opening = window.release();
    m_shown = opening;
    opening->open(anchor);
}

void MenuPresenter::close()
{
    if (m_shown)
        m_shown->close();
}

void MenuPresenter::finish(ClosedBy by)
{
    Menu* const closed = std::exchange(m_open, nullptr);
    if (closed == nullptr)
        return;
    if (by == ClosedBy::OutsidePress)
        m_guard.closedByPress(QCursor::pos());
    m_shown->deleteLater(); // the choice of an entry is still being delivered
    std::erase_if(m_leaving, [](const QPointer<QWidget>& widget) { return widget.isNull(); });
    m_leaving.push_back(m_shown);
    m_shown.clear();
    closed->announceDidClose();
}

} // namespace amperly
