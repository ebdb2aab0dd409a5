#include "platform/linux/rest/rest_keeper.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
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
        QDeadlineTimer patience(4 * RestKeeper::kSettlingMilliseconds);
        while (returns == before && !patience.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
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
