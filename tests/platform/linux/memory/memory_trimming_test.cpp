#include "platform/linux/memory/memory_trimming.h"

#include "tests/support/run_until.h"

#include <QWindow>

#include <gtest/gtest.h>

namespace amperly {
namespace {

class MemoryTrimmingTest : public testing::Test {
protected:
    /// Lets the time until the next trimming pass in the event loop, which is where it is waited for.
    void settle()
    {
        const int before = trimmings;
        EXPECT_TRUE(runUntil([&] { return trimmings != before; }));
    }

    int trimmings = 0;
    MemoryTrimming trimming{[this] { ++trimmings; }};
};

TEST_F(MemoryTrimmingTest, MemoryIsTrimmedOnceAfterTheStartAndAfterTheLastWindowHasGone)
{
    settle();
    EXPECT_EQ(trimmings, 1);

    QWindow window;
    window.show();
    window.hide();
    EXPECT_EQ(trimmings, 1) << "not before the window's last animation is over";
    settle();
    EXPECT_EQ(trimmings, 2);
}

} // namespace
} // namespace amperly
