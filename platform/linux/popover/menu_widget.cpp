#include "platform/linux/popover/menu_widget.h"

#include <QCoreApplication>

namespace amperly {
namespace {

QString titleOf(const MenuEntry& entry)
{
    // An ampersand would mark the letter after it.
    return QString::fromStdString(entry.title).replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

MenuWidget::MenuWidget(Menu& menu)
    : m_menu(menu), m_listener(menu.onEntryChanged([this](int index) { refresh(index); }))
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

MenuWidget::~MenuWidget()
{
    m_menu.stopListening(m_listener);
}

void MenuWidget::refresh(int index)
{
    const auto place = static_cast<std::size_t>(index);
    m_actions[place]->setText(titleOf(m_menu.entries()[place]));
    m_actions[place]->setVisible(m_menu.entries()[place].visible);
}

} // namespace amperly
