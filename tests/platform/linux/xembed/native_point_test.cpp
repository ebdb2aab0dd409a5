#include "platform/linux/xembed/xembed_item.h"

#include <array>
#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr std::array kLaptopAndMonitor{
    ScaledScreen{.x = 0, .y = 0, .width = 1440, .height = 900, .scale = 2.0},
    ScaledScreen{.x = 2880, .y = 0, .width = 1920, .height = 1080, .scale = 1.0},
};

TEST(LogicalPoint, IsScaledOnItsScreen)
{
    EXPECT_EQ(logicalPoint({2879, 21}, kLaptopAndMonitor), (ScreenPoint{1439, 10}));
}

TEST(LogicalPoint, CountsFromTheCornerOfItsScreen)
{
    EXPECT_EQ(logicalPoint({2880, 21}, kLaptopAndMonitor), (ScreenPoint{2880, 21}));
    EXPECT_EQ(logicalPoint({3000, 500}, kLaptopAndMonitor), (ScreenPoint{3000, 500}));
}

TEST(LogicalPoint, BeyondAllScreensStaysWhatItIs)
{
    EXPECT_EQ(logicalPoint({10, 5000}, kLaptopAndMonitor), (ScreenPoint{10, 5000}));
    EXPECT_EQ(logicalPoint({-3, 4}, kLaptopAndMonitor), (ScreenPoint{-3, 4}));
}

} // namespace
} // namespace amperly
