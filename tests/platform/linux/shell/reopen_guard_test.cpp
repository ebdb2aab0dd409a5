#include "platform/linux/shell/popover/reopen_guard.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

using std::chrono::milliseconds;

class ReopenGuardTest : public testing::Test {
protected:
    const milliseconds m_press{1000};
    const QPoint m_item{900, 10};
    ReopenGuard guard;

    void SetUp() override { guard.closedByPress(m_press, m_item); }
};

TEST_F(ReopenGuardTest, TheRestOfTheClosingClickBelongsToIt)
{
    EXPECT_TRUE(guard.belongsToPress(m_press + milliseconds(120), m_item));
}

TEST_F(ReopenGuardTest, AHandThatShakesStillClicksInOnePlace)
{
    EXPECT_TRUE(guard.belongsToPress(m_press, m_item + QPoint(12, -12)));
}

TEST_F(ReopenGuardTest, AClickElsewhereDoesNot)
{
    EXPECT_FALSE(guard.belongsToPress(m_press, m_item + QPoint(13, 12)));
}

TEST_F(ReopenGuardTest, ALaterClickDoesNot)
{
    EXPECT_TRUE(
        ReopenGuard(guard).belongsToPress(m_press + ReopenGuard::kOneClick - milliseconds(1), m_item));
    EXPECT_FALSE(guard.belongsToPress(m_press + ReopenGuard::kOneClick, m_item));
}

TEST_F(ReopenGuardTest, APressSwallowsOneRequestOnly)
{
    EXPECT_TRUE(guard.belongsToPress(m_press, m_item));
    EXPECT_FALSE(guard.belongsToPress(m_press, m_item));
}

TEST(ReopenGuardAtRestTest, WithoutAPressEveryRequestIsOne)
{
    EXPECT_FALSE(ReopenGuard().belongsToPress(milliseconds(0), QPoint()));
}

} // namespace
} // namespace amperly
