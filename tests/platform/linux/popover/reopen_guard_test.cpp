#include "platform/linux/popover/reopen_guard.h"

#include "tests/support/run_until.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

using std::chrono::milliseconds;

class ReopenGuardTest : public testing::Test {
protected:
    milliseconds m_now{1000};
    bool m_pressed = false;
    const QPoint m_item{900, 10};
    ReopenGuard guard{{.clock = [this] { return m_now; }, .isPressed = [this] { return m_pressed; }}};
};

TEST_F(ReopenGuardTest, TheRestOfTheClosingClickBelongsToIt)
{
    guard.closedByPress(m_item);
    m_now += milliseconds(120);
    EXPECT_TRUE(guard.belongsToPress(m_item));
}

TEST_F(ReopenGuardTest, AHandThatShakesStillClicksInOnePlace)
{
    guard.closedByPress(m_item);
    EXPECT_TRUE(guard.belongsToPress(m_item + QPoint(12, -12)));
}

TEST_F(ReopenGuardTest, AClickElsewhereDoesNot)
{
    guard.closedByPress(m_item);
    EXPECT_FALSE(guard.belongsToPress(m_item + QPoint(13, 12)));
}

TEST_F(ReopenGuardTest, ALaterClickDoesNot)
{
    guard.closedByPress(m_item);
    m_now += ReopenGuard::kClickTime - milliseconds(1);
    EXPECT_TRUE(guard.belongsToPress(m_item));
    guard.closedByPress(m_item);
    m_now += ReopenGuard::kClickTime;
    EXPECT_FALSE(guard.belongsToPress(m_item));
}

TEST_F(ReopenGuardTest, APressSwallowsOneRequestOnly)
{
    m_pressed = true;
    guard.closedByPress(m_item);
    EXPECT_TRUE(guard.belongsToPress(m_item));
    EXPECT_FALSE(guard.belongsToPress(m_item));
}

TEST_F(ReopenGuardTest, WithoutAPressEveryRequestIsOne)
{
    EXPECT_FALSE(guard.belongsToPress(m_item));
}

TEST_F(ReopenGuardTest, AButtonThatIsHeldIsStillTheSameClickHoweverLong)
{
    m_pressed = true;
    guard.closedByPress(m_item);
    m_now += milliseconds(5000);
    EXPECT_TRUE(guard.belongsToPress(m_item));
}

TEST_F(ReopenGuardTest, AReleaseAfterLongIsReportedAMomentLater)
{
    m_pressed = true;
    guard.closedByPress(m_item);
    m_now += milliseconds(5000);
    m_pressed = false;
    ASSERT_TRUE(runUntil([this] { return !guard.isHeld(); }));
    m_now += ReopenGuard::kClickTime - milliseconds(1);
    EXPECT_TRUE(guard.belongsToPress(m_item));
}

TEST_F(ReopenGuardTest, TheNextClickAfterALongOneIsAnother)
{
    m_pressed = true;
    guard.closedByPress(m_item);
    m_now += milliseconds(5000);
    m_pressed = false;
    ASSERT_TRUE(runUntil([this] { return !guard.isHeld(); }));
    m_now += ReopenGuard::kClickTime;
    EXPECT_FALSE(guard.belongsToPress(m_item));
}

TEST(PointerTest, NobodyTellsOfItsButtonsWhereThereIsNoX11)
{
    EXPECT_FALSE(ReopenGuard::isPointerPressed());
}

} // namespace
} // namespace amperly
