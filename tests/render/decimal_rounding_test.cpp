#include "render/decimal_rounding.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(DecimalRoundingTest, ZeroStaysZero)
{
    EXPECT_EQ(roundedHalfEven(0.0, 0), 0U);
    EXPECT_EQ(roundedHalfEven(0.0, 1), 0U);
}

TEST(DecimalRoundingTest, HalvesGoToTheEvenDigit)
{
    EXPECT_EQ(roundedHalfEven(0.5, 0), 0U);
    EXPECT_EQ(roundedHalfEven(1.5, 0), 2U);
    EXPECT_EQ(roundedHalfEven(2.5, 0), 2U);
    EXPECT_EQ(roundedHalfEven(0.25, 1), 2U);
    EXPECT_EQ(roundedHalfEven(0.75, 1), 8U);
}

TEST(DecimalRoundingTest, AHalfIsJudgedByTheShortestWritingNotByTheBits)
{
    EXPECT_EQ(roundedHalfEven(0.05, 1), 0U); // a little more than a twentieth in binary
    EXPECT_EQ(roundedHalfEven(0.15, 1), 2U); // a little less than three of them
    EXPECT_EQ(roundedHalfEven(0.35, 1), 4U);
    EXPECT_EQ(roundedHalfEven(0.45, 1), 4U);
    EXPECT_EQ(roundedHalfEven(1.005e3 + 0.05, 1), 10050U);
}

TEST(DecimalRoundingTest, TheNeighboursOfAHalfGoTheirOwnWays)
{
    EXPECT_EQ(roundedHalfEven(std::nextafter(0.5, 1.0), 0), 1U);
    EXPECT_EQ(roundedHalfEven(std::nextafter(0.5, 0.0), 0), 0U);
    EXPECT_EQ(roundedHalfEven(std::nextafter(1.5, 0.0), 0), 1U);
    EXPECT_EQ(roundedHalfEven(std::nextafter(0.25, 1.0), 1), 3U);
}

TEST(DecimalRoundingTest, ACarryRunsThroughEveryNine)
{
    EXPECT_EQ(roundedHalfEven(0.95, 1), 10U);
    EXPECT_EQ(roundedHalfEven(99.96, 1), 1000U);
    EXPECT_EQ(roundedHalfEven(99999.5, 0), 100000U);
}

TEST(DecimalRoundingTest, TheSmallestNumbersRoundToZero)
{
    EXPECT_EQ(roundedHalfEven(std::numeric_limits<double>::denorm_min(), 1), 0U);
    EXPECT_EQ(roundedHalfEven(std::numeric_limits<double>::min(), 1), 0U);
    EXPECT_EQ(roundedHalfEven(1e-17, 1), 0U);
    EXPECT_EQ(roundedHalfEven(1.2345678901234567e-5, 1), 0U);
    EXPECT_EQ(roundedHalfEven(0.049999999999999996, 1), 0U);
}

TEST(DecimalRoundingTest, RoundNumbersKeepTheirZeros)
{
    EXPECT_EQ(roundedHalfEven(7.0, 1), 70U);
    EXPECT_EQ(roundedHalfEven(1e14, 1), 1000000000000000U);
    EXPECT_EQ(roundedHalfEven(120.0, 0), 120U);
}

TEST(DecimalRoundingTest, TheLargestRoundableNumberIsExact)
{
    const double largest = std::nextafter(kLargestRoundable, 0.0); // 999999999999999.875
    EXPECT_EQ(roundedHalfEven(largest, 1), 9999999999999999U);
    EXPECT_EQ(roundedHalfEven(largest, 0), 1000000000000000U);
}

TEST(DecimalRoundingTest, NextToAHalfTheDigitsDecideAtEveryMagnitude)
{
    EXPECT_EQ(roundedHalfEven(0.25005, 1), 3U);
    EXPECT_EQ(roundedHalfEven(0.249995, 1), 2U);
    EXPECT_EQ(roundedHalfEven(99999999.85, 1), 999999998U);
    EXPECT_EQ(roundedHalfEven(100000000.75, 1), 1000000008U);
    EXPECT_EQ(roundedHalfEven(100000000.25, 1), 1000000002U);
}

} // namespace
} // namespace amperly
