#include "platform/linux/popover/linux_popover_host.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>

#include <gtest/gtest.h>
#include <sys/prctl.h>

namespace amperly {
namespace {

using std::chrono::milliseconds;

class PopoverHostTest : public testing::Test {
protected:
    TimerSlack slack;
    milliseconds m_now{5000};
    int m_closings = 0;
    QPointer<QWidget> m_content;
    bool m_contentAliveAtClosing = false;
    LinuxPopoverHost host{slack, WindowKind::Popup, {.clock = [this] { return m_now; }}};

    void SetUp() override
    {
        QCursor::setPos(400, 300);
        host.onDidClose([this] {
            ++m_closings;
            m_contentAliveAtClosing = !m_content.isNull();
        });
    }

    void show()
    {
        auto content = std::make_unique<QWidget>();
        content->setFixedSize(120, 80);
        m_content = content.get();
        host.show(std::move(content), ScreenPoint{400, 2});
    }

    static void runEvents()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QWidget& window() const { return *m_content->window(); }

    void press(QPoint inWindow) const
    {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(inWindow),
            QPointF(window().mapToGlobal(inWindow)), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &event);
    }

    void pressKey(Qt::Key key) const
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(m_content, &event);
    }
};

TEST_F(PopoverHostTest, ShowsTheContentAtItsOwnSize)
{
    show();
    EXPECT_TRUE(host.isShown());
    EXPECT_TRUE(m_content->isVisible());
    EXPECT_EQ(m_content->size(), QSize(120, 80));
}

TEST_F(PopoverHostTest, StaysWithinTheScreen)
{
    show();
    const QPoint corner = m_content->mapToGlobal(QPoint(0, 0));
    EXPECT_TRUE(window().screen()->availableGeometry().contains(QRect(corner, m_content->size())));
}

TEST_F(PopoverHostTest, ClosingIsToldOnceWithTheContentGone)
{
    show();
    host.close();
    EXPECT_FALSE(host.isShown());
    EXPECT_EQ(m_closings, 0); // not from within whoever asked
    runEvents();
    EXPECT_EQ(m_closings, 1);
    EXPECT_FALSE(m_contentAliveAtClosing);
    host.close();
    runEvents();
    EXPECT_EQ(m_closings, 1);
}

TEST_F(PopoverHostTest, TheContentMayCloseItFromWithinAButton)
{
    auto button = std::make_unique<QPushButton>();
    QObject::connect(button.get(), &QPushButton::clicked, [this] { host.close(); });
    QPointer<QPushButton> pressed = button.get();
    m_content = button.get();
    host.show(std::move(button), std::nullopt);
    pressed->click();
    EXPECT_FALSE(pressed.isNull());
    runEvents();
    EXPECT_TRUE(pressed.isNull());
    EXPECT_EQ(m_closings, 1);
}

TEST_F(PopoverHostTest, EscapeCloses)
{
    show();
    pressKey(Qt::Key_Escape);
    EXPECT_FALSE(host.isShown());
}

TEST_F(PopoverHostTest, AnotherKeyDoesNot)
{
    show();
    pressKey(Qt::Key_Space);
    EXPECT_TRUE(host.isShown());
}

TEST_F(PopoverHostTest, APressOutsideCloses)
{
    show();
    press(QPoint(-50, 10));
    EXPECT_FALSE(host.isShown());
}

TEST_F(PopoverHostTest, APressOnTheShadowIsOutside)
{
    show();
    press(QPoint(2, 2));
    EXPECT_FALSE(host.isShown());
}

TEST_F(PopoverHostTest, APressOnTheSheetIsNot)
{
    show();
    press(window().rect().center());
    EXPECT_TRUE(host.isShown());
}

TEST_F(PopoverHostTest, TheClickThatClosedItDoesNotReopenIt)
{
    show();
    press(QPoint(-50, 10));
    runEvents();
    m_now += milliseconds(150);
    EXPECT_FALSE(host.takesClick());
    EXPECT_TRUE(host.takesClick()) << "it was one click";
}

TEST_F(PopoverHostTest, TheNextClickDoes)
{
    show();
    press(QPoint(-50, 10));
    m_now += milliseconds(900);
    EXPECT_TRUE(host.takesClick());
}

TEST_F(PopoverHostTest, AClickSoonAfterEscapeOpensAgain)
{
    show();
    pressKey(Qt::Key_Escape);
    EXPECT_TRUE(host.takesClick());
}

TEST_F(PopoverHostTest, ASecondShowingReplacesTheFirst)
{
    show();
    const QPointer<QWidget> first = m_content;
    show();
    runEvents();
    EXPECT_TRUE(first.isNull());
    EXPECT_TRUE(host.isShown());
    EXPECT_EQ(m_closings, 1);
}

TEST_F(PopoverHostTest, FollowsTheContentThatGrows)
{
    show();
    m_content->setFixedSize(200, 160);
    runEvents();
    EXPECT_EQ(m_content->size(), QSize(200, 160));
    const QPoint corner = m_content->mapToGlobal(QPoint(0, 0));
    EXPECT_TRUE(window().screen()->availableGeometry().contains(QRect(corner, m_content->size())));
}

TEST_F(PopoverHostTest, TimeIsExactWhileItIsShown)
{
    slack.addTolerance(0.5);
    const int lenient = prctl(PR_GET_TIMERSLACK);
    show();
    EXPECT_LT(prctl(PR_GET_TIMERSLACK), lenient);
    host.close();
    runEvents();
    EXPECT_EQ(prctl(PR_GET_TIMERSLACK), lenient);
}

TEST_F(PopoverHostTest, ItsEndTakesAnOpenPopoverAlongWithoutAWord)
{
    {
        LinuxPopoverHost ending(slack, WindowKind::Popup, {.clock = [this] { return m_now; }});
        ending.onDidClose([this] { ++m_closings; });
        auto content = std::make_unique<QWidget>();
        m_content = content.get();
        ending.show(std::move(content), std::nullopt);
    }
    runEvents();
    EXPECT_TRUE(m_content.isNull());
    EXPECT_EQ(m_closings, 0);
}

TEST_F(PopoverHostTest, TheEdgeOfTheSheetIsDrawnAndItsCornersAreRound)
{
    show();
    QWidget& card = *m_content->parentWidget();
    QImage picture(card.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    card.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
    const QRect sheet(m_content->pos(), m_content->size());
    EXPECT_EQ(qAlpha(picture.pixel(sheet.center())), 255);
    EXPECT_LT(qAlpha(picture.pixel(sheet.topLeft())), 128);
    EXPECT_GT(qAlpha(picture.pixel(sheet.center().x(), sheet.bottom() + 3)), 0);
    EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);
}

class ToplevelPopoverTest : public testing::Test {
protected:
    TimerSlack slack;
    LinuxPopoverHost host{slack, WindowKind::Toplevel};
    QPointer<QWidget> m_content;

    void show()
    {
        auto content = std::make_unique<QWidget>();
        content->setFixedSize(120, 80);
        m_content = content.get();
        host.show(std::move(content), std::nullopt);
    }

    QAbstractButton* closeButton() const { return m_content->window()->findChild<QAbstractButton*>(); }
};

TEST_F(ToplevelPopoverTest, ItsCloseButtonClosesIt)
{
    show();
    QAbstractButton* const button = closeButton();
    ASSERT_NE(button, nullptr);
    EXPECT_TRUE(button->isVisible());
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Close"));
    button->click();
    EXPECT_FALSE(host.isShown());
}

TEST_F(ToplevelPopoverTest, ItsCloseButtonLiesOnTheCornerAndLeavesThePaddingOfTheContentFree)
{
    constexpr int kPadding = 16;
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QGuiApplication::setLayoutDirection(direction);
        show();
        const QRect sheet(m_content->mapTo(m_content->window(), QPoint()), m_content->size());
        const QRect button = closeButton()->geometry();
        EXPECT_TRUE(m_content->window()->rect().contains(button));
        EXPECT_TRUE(sheet.intersects(button));
        EXPECT_FALSE(sheet.adjusted(kPadding, kPadding, -kPadding, -kPadding).intersects(button));
        EXPECT_EQ(button.center().x() > sheet.center().x(), direction == Qt::LeftToRight);
        host.close();
    }
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(ToplevelPopoverTest, TheContentHasTheKeyboardFirst)
{
    show();
    EXPECT_FALSE(closeButton()->hasFocus());
}

TEST_F(PopoverHostTest, WhereAPressElsewhereClosesItThereIsNoButtonForThat)
{
    show();
    EXPECT_EQ(window().findChild<QAbstractButton*>(), nullptr);
}

TEST_F(ToplevelPopoverTest, LosingTheFocusClosesIt)
{
    show();
    m_content->window()->activateWindow();
    QCoreApplication::processEvents();
    EXPECT_TRUE(host.isShown());
    QWidget other;
    other.show();
    other.activateWindow();
    QCoreApplication::processEvents();
    EXPECT_FALSE(host.isShown());
}

} // namespace
} // namespace amperly
