// A reading is taken at every tick for as long as the machine runs, so once the first one has
// been taken it must not need the heap. Every allocation of this program is counted.

#include "platform/simulated/laptop/simulated_laptop.h"
#include "telemetry/power_reader.h"
#include "tests/support/allocation_count.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

class PowerReaderMemoryTest : public testing::Test {
protected:
    /// Allocations of one reading, after a first one.
    long allocationsOfAReading()
    {
        EXPECT_TRUE(reader.read());
        const AllocationCount count;
        const bool present = reader.read().has_value();
        const long made = count.value();
        EXPECT_TRUE(present);
        return made;
    }

    SimulatedLaptop laptop;
    PowerReader reader{laptop.smc(), laptop.registry()};
};

TEST_F(PowerReaderMemoryTest, TheFirstReadingIsCounted)
{
    const AllocationCount count;
    EXPECT_TRUE(reader.read());
    EXPECT_GT(count.value(), 0) << "the client and its memory of keys are made then";
}

TEST_F(PowerReaderMemoryTest, AReadingFromTheControllerTakesNothingFromTheHeap)
{
    laptop.plugIn(AdapterWatts{67});
    EXPECT_EQ(allocationsOfAReading(), 0);
}

TEST_F(PowerReaderMemoryTest, AMissingKeyTakesNothingFromTheHeap)
{
    laptop.plugIn(AdapterWatts{67});
    laptop.refuse("SBAP");
    EXPECT_EQ(allocationsOfAReading(), 0);
}

TEST_F(PowerReaderMemoryTest, AReadingFromTheRegistryTakesNothingFromTheHeap)
{
    laptop.loseController();
    laptop.plugIn(AdapterWatts{67});
    EXPECT_EQ(allocationsOfAReading(), 0);
}

} // namespace
} // namespace amperly
