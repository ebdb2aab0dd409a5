#include "prefs/reading_style.h"

#include <gmock/gmock.h>

#include <unordered_set>

namespace amperly {
namespace {

using testing::ElementsAre;

TEST(ReadingStyleTest, AllCasesStandInTheOrderOfThePickers)
{
    EXPECT_THAT(allCases,
        ElementsAre(ReadingStyle::iconAndValue, ReadingStyle::valueOnly, ReadingStyle::iconOnly,
            ReadingStyle::hidden));
}

TEST(ReadingStyleTest, RawValuesAreTheStoredTexts)
{
    EXPECT_EQ(rawValue(ReadingStyle::iconAndValue), "iconAndValue");
    EXPECT_EQ(rawValue(ReadingStyle::valueOnly), "valueOnly");
    EXPECT_EQ(rawValue(ReadingStyle::iconOnly), "iconOnly");
    EXPECT_EQ(rawValue(ReadingStyle::hidden), "hidden");
}

TEST(ReadingStyleTest, LabelsAreWhatTheUserReads)
{
    EXPECT_EQ(label(ReadingStyle::iconAndValue), "Icon + value");
    EXPECT_EQ(label(ReadingStyle::valueOnly), "Value only");
    EXPECT_EQ(label(ReadingStyle::iconOnly), "Icon only");
    EXPECT_EQ(label(ReadingStyle::hidden), "Hidden");
}

TEST(ReadingStyleTest, StylesSayWhichHalvesTheyShow)
{
    EXPECT_TRUE(showsIcon(ReadingStyle::iconAndValue));
    EXPECT_TRUE(showsValue(ReadingStyle::iconAndValue));
    EXPECT_FALSE(showsIcon(ReadingStyle::valueOnly));
    EXPECT_TRUE(showsValue(ReadingStyle::valueOnly));
    EXPECT_TRUE(showsIcon(ReadingStyle::iconOnly));
    EXPECT_FALSE(showsValue(ReadingStyle::iconOnly));
    EXPECT_FALSE(showsIcon(ReadingStyle::hidden));
    EXPECT_FALSE(showsValue(ReadingStyle::hidden));
}

TEST(ReadingStyleTest, EveryStyleComesBackFromItsRawValue)
{
    for (const ReadingStyle style : allCases) {
        EXPECT_EQ(readingStyle(rawValue(style)), style);
        EXPECT_EQ(id(style), rawValue(style));
    }
}

TEST(ReadingStyleTest, AnyOtherTextIsNoStyle)
{
    for (const std::string_view text : {"", "Hidden", "hidden ", "icon", "iconAndValueX", "Icon + value"})
        EXPECT_EQ(readingStyle(text), std::nullopt) << text;
}

TEST(ReadingStyleTest, StylesHashAsTheirRawValues)
{
    for (const ReadingStyle style : allCases)
        EXPECT_EQ(std::hash<ReadingStyle>{}(style), std::hash<std::string_view>{}(rawValue(style)));
    EXPECT_EQ(std::unordered_set<ReadingStyle>(allCases.begin(), allCases.end()).size(), allCases.size());
}

} // namespace
} // namespace amperly
