#include "platform/linux/memory/rest_keeper.h"

#include "tests/support/run_until.h"

#include <QWindow>

#include <gtest/gtest.h>

namespace amperly {
namespace {

class RestKeeperTest : public testing::Test {
protected:
    /// Lets the settling time pass in the event loop, which is where it is waited for.
    void settle()
    {
        const int before = returns;
        EXPECT_TRUE(runUntil([&] { return returns != before; }));
    }

    int returns = 0;
    RestKeeper keeper{[this] { ++returns; }};
};

TEST_F(RestKeeperTest, MemoryGoesBackOnceAfterTheStartAndAfterTheLastWindowHasGone)
{
    settle();
    EXPECT_EQ(returns, 1);

    QWindow window;
    window.show();
    window.hide();
    EXPECT_EQ(returns, 1) << "not before the program has come to rest";
    settle();
    EXPECT_EQ(returns, 2);
}

} // namespace
} // namespace amperly
