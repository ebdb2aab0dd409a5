// Keys are read at every tick for as long as the machine runs, so once the client knows them it must
// not need the heap. Every allocation of this program is counted.

#include "platform/simulated/laptop/simulated_laptop.h"
#include "telemetry/smc.h"
#include "tests/support/allocation_count.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

class SmcMemoryTest : public testing::Test {
protected:
    /// Allocations of asking for a key once more.
    long allocationsOfAsking(std::string_view key)
    {
        static_cast<void>(smc->floatValue(key));
        const AllocationCount count;
        static_cast<void>(smc->floatValue(key));
        return count.value();
    }

    SimulatedLaptop laptop;
    std::unique_ptr<SMC> smc = SMC::open(laptop.smc());
};

TEST_F(SmcMemoryTest, TheFirstReadingIsCounted)
{
    const AllocationCount count;
    EXPECT_TRUE(smc->floatValue("PSTR"));
    EXPECT_GT(count.value(), 0) << "what the client remembers of the key is made then";
}

TEST_F(SmcMemoryTest, AKeyThatIsKnownTakesNothingFromTheHeap)
{
    EXPECT_EQ(allocationsOfAsking("PSTR"), 0);
    EXPECT_TRUE(smc->floatValue("PSTR"));
}

TEST_F(SmcMemoryTest, AMissingKeyTakesNothingFromTheHeap)
{
    laptop.refuse("SBAP");
    EXPECT_EQ(allocationsOfAsking("SBAP"), 0);
    EXPECT_FALSE(smc->floatValue("SBAP"));
}

} // namespace
} // namespace amperly
