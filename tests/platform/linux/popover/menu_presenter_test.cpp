#include "platform/linux/popover/menu_presenter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QWindow>
#include <qpa/qwindowsysteminterface.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace amperly {
namespace {

using testing::ElementsAre;

class MenuPresenterTest : public testing::TestWithParam<WindowKind> {
protected:
    Menu menu;
    std::vector<std::string> m_events;
    int m_reading = 0;
    int m_hidden = 0;
    std::chrono::milliseconds m_now{5000};
    MenuPresenter presenter{GetParam(), {.clock = [this] { return m_now; }}};

    void SetUp() override
    {
        m_reading = menu.add({.title = "Mac using: 12 W", .enabled = false});
        m_hidden = menu.add({.title = "Charger", .enabled = false, .visible = false});
        menu.add({.separator = true});
        menu.add({.title = "Bread & Butter", .shortcut = ',', .activate = [this] {
                      m_events.emplace_back("butter");
                  }});
        menu.add({.title = "Quit", .shortcut = 'q', .activate = [this] { m_events.emplace_back("quit"); }});
        menu.willOpen = [this] {
            m_events.emplace_back("will open");
            menu.setTitle(m_reading, "Mac using: 34 W");
        };
        menu.didClose = [this] { m_events.emplace_back("did close"); };
    }

    /// As a press there does: the popup holds the pointer, a window loses the focus.
    static void pressOutside()
    {
        QWindow* const window = shown()->window()->windowHandle();
        const QPoint outside = window->geometry().bottomRight() + QPoint(50, 50);
        QCursor::setPos(outside);
        if (GetParam() == WindowKind::Popup) {
            for (const auto& [button, type] : {std::pair(Qt::LeftButton, QEvent::MouseButtonPress),
                     std::pair(Qt::NoButton, QEvent::MouseButtonRelease)})
                QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::SynchronousDelivery>(
                    window, window->mapFromGlobal(outside), outside, button, Qt::LeftButton, type);
        } else {
            QWidget other;
            other.show();
            for (QWidget* const each : {shown()->window(), &other}) {
                each->activateWindow();
                QCoreApplication::processEvents();
            }
        }
    }

    void open() { presenter.open(menu, ScreenPoint{10, 10}); }

    static QMenu* shown()
    {
        for (QWidget* const widget : QApplication::allWidgets()) {
            if (auto* const found = qobject_cast<QMenu*>(widget);
                found != nullptr && found->isVisibleTo(found->parentWidget()))
                return found;
        }
        return nullptr;
    }
    static QAction& action(int index) { return *shown()->actions().at(index); }

    static void runEvents()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    /// As a click on the entry would.
    static void choose(int index)
    {
        QMenu* const widget = shown();
        widget->setActiveAction(widget->actions().at(index));
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &enter);
    }
};

TEST_P(MenuPresenterTest, TellsOfTheOpeningFirstSoThatTheEntriesAreFresh)
{
    open();
    EXPECT_THAT(m_events, ElementsAre("will open"));
    EXPECT_EQ(action(0).text(), QStringLiteral("Mac using: 34 W"));
}

TEST_P(MenuPresenterTest, EntriesLookAsTheyAreDescribed)
{
    open();
    EXPECT_FALSE(action(0).isEnabled());
    EXPECT_FALSE(action(1).isVisible());
    EXPECT_TRUE(action(2).isSeparator());
    EXPECT_EQ(action(3).text(), QStringLiteral("Bread && Butter"));
    EXPECT_EQ(action(3).shortcut(), QKeySequence(QStringLiteral("Ctrl+,")));
    EXPECT_EQ(action(4).shortcut(), QKeySequence(QStringLiteral("Ctrl+Q")));
}

TEST_P(MenuPresenterTest, AnOpenMenuFollowsItsEntries)
{
    open();
    menu.setTitle(m_reading, "Mac using: 56 W");
    menu.setVisible(m_hidden, true);
    EXPECT_EQ(action(0).text(), QStringLiteral("Mac using: 56 W"));
    EXPECT_TRUE(action(1).isVisible());
}

TEST_P(MenuPresenterTest, AChoiceIsActedOnAfterTheClosingWasTold)
{
    open();
    choose(4);
    runEvents();
    EXPECT_THAT(m_events, ElementsAre("will open", "did close", "quit"));
    EXPECT_FALSE(presenter.isOpen());
}

TEST_P(MenuPresenterTest, ClosingWithoutAChoiceDoesNothingElse)
{
    open();
    presenter.close();
    runEvents();
    EXPECT_THAT(m_events, ElementsAre("will open", "did close"));
    EXPECT_EQ(shown(), nullptr);
    presenter.close();
    EXPECT_EQ(m_events.size(), 2u);
}

TEST_P(MenuPresenterTest, OpeningAgainClosesWhatWasOpen)
{
    open();
    open();
    runEvents();
    EXPECT_THAT(m_events, ElementsAre("will open", "did close", "will open"));
    EXPECT_TRUE(presenter.isOpen());
}

TEST_P(MenuPresenterTest, AClosedMenuMayChangeWithoutAnybodyListening)
{
    open();
    presenter.close();
    runEvents();
    menu.setTitle(m_reading, "Mac using: 78 W");
    open();
    EXPECT_EQ(action(0).text(), QStringLiteral("Mac using: 34 W")); // willOpen sets it anew
}

TEST_P(MenuPresenterTest, TheClickThatClosedItDoesNotReopenIt)
{
    open();
    pressOutside();
    m_now += std::chrono::milliseconds(150);
    open();
    EXPECT_FALSE(presenter.isOpen());
    EXPECT_THAT(m_events, ElementsAre("will open", "did close"));
}

TEST_P(MenuPresenterTest, TheNextClickDoes)
{
    open();
    pressOutside();
    m_now += std::chrono::milliseconds(900);
    open();
    EXPECT_TRUE(presenter.isOpen());
}

TEST_P(MenuPresenterTest, EscapeCloses)
{
    open();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(shown(), &escape);
    EXPECT_THAT(m_events, ElementsAre("will open", "did close"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, MenuPresenterTest, testing::Values(WindowKind::Popup, WindowKind::Toplevel),
    [](const auto& kind) { return kind.param == WindowKind::Popup ? "Popup" : "InWindow"; });

} // namespace
} // namespace amperly
