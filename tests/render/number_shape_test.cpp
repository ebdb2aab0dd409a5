#include "render/number_shape.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

ShortText shortText(std::string_view text)
{
    return ShortText::from(text).value();
}

NumberShape plainShape()
{
    NumberShape shape;
    for (std::size_t digit = 0; digit < shape.digits.size(); ++digit)
        shape.digits[digit] = shortText(std::to_string(digit));
    shape.decimalSeparator = shortText(".");
    shape.groupingSeparator = shortText(",");
    return shape;
}

std::string written(const NumberShape& shape, std::uint64_t scaled, int fractionDigits)
{
    std::string text;
    shape.append(text, scaled, fractionDigits);
    return text;
}

TEST(ShortTextTest, HoldsAsManyBytesAsItSaysAndNotOneMore)
{
    const std::string full(ShortText::kCapacity, 'x');
    EXPECT_EQ(ShortText::from(full)->view(), full);
    EXPECT_EQ(ShortText::from(full + "x"), std::nullopt);
    EXPECT_EQ(ShortText::from("")->view(), "");
}

TEST(NumberShapeTest, WithoutGroupsDigitsStandTogether)
{
    EXPECT_EQ(written(plainShape(), 1234567, 0), "1234567");
    EXPECT_EQ(written(plainShape(), 1234567, 1), "123456.7");
}

TEST(NumberShapeTest, ZeroHasOneDigitBeforeTheSeparator)
{
    EXPECT_EQ(written(plainShape(), 0, 0), "0");
    EXPECT_EQ(written(plainShape(), 0, 1), "0.0");
    EXPECT_EQ(written(plainShape(), 9, 1), "0.9");
}

TEST(NumberShapeTest, TheFirstGroupMayDifferFromTheOthers)
{
    NumberShape shape = plainShape();
    shape.primaryGroup = 3;
    shape.secondaryGroup = 2;
    EXPECT_EQ(written(shape, 123, 0), "123");
    EXPECT_EQ(written(shape, 1234, 0), "1,234");
    EXPECT_EQ(written(shape, 12345678, 0), "1,23,45,678");
}

TEST(NumberShapeTest, GroupsWaitForTheMinimumOfDigitsBeforeThem)
{
    NumberShape shape = plainShape();
    shape.primaryGroup = 3;
    shape.secondaryGroup = 3;
    shape.minimumGroupingDigits = 2;
    EXPECT_EQ(written(shape, 1234, 0), "1234");
    EXPECT_EQ(written(shape, 12345, 0), "12,345");
    EXPECT_EQ(written(shape, 12345, 1), "1234.5");
}

TEST(NumberShapeTest, MarksStandAroundTheWholeNumber)
{
    NumberShape shape = plainShape();
    shape.prefix = shortText("<");
    shape.suffix = shortText(">");
    EXPECT_EQ(written(shape, 15, 1), "<1.5>");
}

TEST(NumberShapeTest, TheLongestNumberInTheWidestPiecesFits)
{
    const std::string wide(ShortText::kCapacity, '#');
    NumberShape shape;
    shape.digits.fill(shortText(wide));
    shape.prefix = shape.suffix = shape.decimalSeparator = shape.groupingSeparator = shortText(wide);
    shape.primaryGroup = 1;
    shape.secondaryGroup = 1;
    // 20 digits, 18 separators between the 19 before the point, the point, and both marks.
    EXPECT_EQ(written(shape, UINT64_MAX, 1).size(), (20 + 18 + 1 + 2) * wide.size());
}

TEST(NumberShapeTest, AppendingKeepsWhatIsThere)
{
    std::string text = "about ";
    plainShape().append(text, 15, 1);
    EXPECT_EQ(text, "about 1.5");
}

TEST(NumberShapeHarvestTest, EnglishGroupsThreesWithCommas)
{
    NumberShape expected = plainShape();
    expected.primaryGroup = 3;
    expected.secondaryGroup = 3;
    EXPECT_EQ(harvestNumberShape("en_US"), expected);
}

TEST(NumberShapeHarvestTest, PosixHasNoGroups)
{
    const auto shape = harvestNumberShape("en_US_POSIX");
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->primaryGroup, 0);
    EXPECT_EQ(shape->decimalSeparator.view(), ".");
}

TEST(NumberShapeHarvestTest, HindiGroupsTwosAfterTheFirstThree)
{
    const auto shape = harvestNumberShape("hi_IN");
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->primaryGroup, 3);
    EXPECT_EQ(shape->secondaryGroup, 2);
}

TEST(NumberShapeHarvestTest, SpanishWaitsForTwoDigitsBeforeTheSeparator)
{
    const auto shape = harvestNumberShape("es_ES");
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->minimumGroupingDigits, 2);
}

TEST(NumberShapeHarvestTest, DigitsBeyondTheFirstPlaneAreWhole)
{
    const auto shape = harvestNumberShape("ff_Adlm_GN"); // two UTF-16 units, four UTF-8 bytes each
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->digits[0].view(), "\U0001E950");
    EXPECT_EQ(shape->digits[9].view(), "\U0001E959");
}

TEST(NumberShapeHarvestTest, ANumberingSystemThatDoesNotExistHasNoShape)
{
    EXPECT_EQ(harvestNumberShape("en_US@numbers=nosuch"), std::nullopt);
}

} // namespace
} // namespace amperly
