#include "platform/linux/popover/menu_presenter.h"

#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QMenu>

#include <utility>
#include <vector>

namespace amperly {

namespace {

QString titleOf(const MenuEntry& entry)
{
    // An ampersand would mark the letter after it.
    return QString::fromStdString(entry.title).replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// The toolkit's picture of a Menu, kept like it while it lives.
class MenuWidget : public QMenu {
public:
    /// `menu` must outlive the widget. What an entry does is done from the event loop, when the
    /// menu is closed already.
    explicit MenuWidget(Menu& menu);

private:
    void refresh(int index);

    Menu& m_menu;
    std::vector<QAction*> m_actions; ///< by index of the entry
    Subscription m_subscription;
};

MenuWidget::MenuWidget(Menu& menu)
    : m_menu(menu), m_subscription(menu.onEntryChanged([this](int index) { refresh(index); }))
{
    for (const MenuEntry& entry : menu.entries()) {
        QAction* const action = entry.separator ? addSeparator() : addAction(titleOf(entry));
        action->setEnabled(entry.enabled);
        action->setVisible(entry.visible);
        if (entry.shortcut != 0) {
            const int key = QChar::fromLatin1(entry.shortcut).toUpper().unicode();
            action->setShortcut(QKeyCombination(Qt::ControlModifier, static_cast<Qt::Key>(key)));
            action->setShortcutVisibleInContextMenu(true);
        }
        if (entry.activate) {
            connect(action, &QAction::triggered, this, [activate = entry.activate] {
                QMetaObject::invokeMethod(qApp, activate, Qt::QueuedConnection);
            });
        }
        m_actions.push_back(action);
    }
}

void MenuWidget::refresh(int index)
{
    const auto position = static_cast<std::size_t>(index);
    m_actions[position]->setText(titleOf(m_menu.entries()[position]));
    m_actions[position]->setVisible(m_menu.entries()[position].visible);
}

/// Why a popup that is about to hide does.
ClosedBy reasonOf(const QWidget& popup)
{
    const bool pressed = QGuiApplication::mouseButtons() != Qt::NoButton;
    return pressed && !popup.geometry().contains(QCursor::pos()) ? ClosedBy::OutsidePress : ClosedBy::Request;
}

} // namespace

MenuPresenter::MenuPresenter(WindowKind kind, ReopenGuard::Inputs inputs)
    : m_kind(kind), m_guard(std::move(inputs))
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

void MenuPresenter::openAsPopup(QMenu* widget, std::optional<ScreenPoint> anchor)
{
    m_shown = widget;
    QObject::connect(widget, &QMenu::aboutToHide, &m_context, [this, widget] { finish(reasonOf(*widget)); });
    const QPoint pointer = QCursor::pos();
    widget->popup(clickedPoint(pointer, anchor, screenAround(pointer)));
}

void MenuPresenter::openInWindow(std::unique_ptr<QMenu> widget, std::optional<ScreenPoint> anchor)
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
