#include "platform/preference_value.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace amperly {
namespace {

using namespace std::string_literals;

constexpr std::int64_t kLargestInteger = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kSmallestInteger = std::numeric_limits<std::int64_t>::min();
constexpr double kLargestReal = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNotANumber = std::nan("");

TEST(PreferenceValueTest, TextReadsAsTheIntegerAtItsStart)
{
    EXPECT_EQ(asInteger("2"s), 2);
    EXPECT_EQ(asInteger("2.7"s), 2);
    EXPECT_EQ(asInteger("-3"s), -3);
    EXPECT_EQ(asInteger("+3"s), 3);
    EXPECT_EQ(asInteger(" \t7"s), 7);
    EXPECT_EQ(asInteger("12 seconds"s), 12);
    EXPECT_EQ(asInteger("1e3"s), 1);
    EXPECT_EQ(asInteger("007"s), 7);
}

TEST(PreferenceValueTest, TextWithoutLeadingNumberReadsAsZero)
{
    for (const std::string& text :
        {""s, " "s, "-"s, "+"s, "+-2"s, "--2"s, "- 2"s, "two"s, "nan"s, "inf"s, "true"s, "-x"s, "\0002"s}) {
        EXPECT_EQ(asInteger(text), 0) << text;
        EXPECT_EQ(asReal(text), 0.0) << text;
    }
}

TEST(PreferenceValueTest, IntegersOutOfRangeSaturate)
{
    EXPECT_EQ(asInteger("9223372036854775807"s), kLargestInteger);
    EXPECT_EQ(asInteger("9223372036854775808"s), kLargestInteger);
    EXPECT_EQ(asInteger("99999999999999999999999"s), kLargestInteger);
    EXPECT_EQ(asInteger("-9223372036854775808"s), kSmallestInteger);
    EXPECT_EQ(asInteger("-9223372036854775809"s), kSmallestInteger);
    EXPECT_EQ(asInteger(9223372036854775808.0), kLargestInteger);
    EXPECT_EQ(asInteger(-9223372036854775808.0), kSmallestInteger);
    EXPECT_EQ(asInteger(-1e300), kSmallestInteger);
    EXPECT_EQ(asInteger(kInfinity), kLargestInteger);
    EXPECT_EQ(asInteger(-kInfinity), kSmallestInteger);
}

TEST(PreferenceValueTest, NumbersReadAsIntegersWithoutTheirFraction)
{
    EXPECT_EQ(asInteger(2.9), 2);
    EXPECT_EQ(asInteger(-2.9), -2);
    EXPECT_EQ(asInteger(kNotANumber), 0);
    EXPECT_EQ(asInteger(std::int64_t{42}), 42);
    EXPECT_EQ(asInteger(true), 1);
    EXPECT_EQ(asInteger(false), 0);
}

TEST(PreferenceValueTest, ThreeWordsInEitherCaseReadAsTrue)
{
    for (const std::string& text : {"YES"s, "yes"s, "Yes"s, "true"s, "TRUE"s, "tRuE"s, "1"s})
        EXPECT_TRUE(asBoolean(text)) << text;
}

TEST(PreferenceValueTest, AnyOtherTextReadsAsFalse)
{
    for (const std::string& text :
        {""s, "NO"s, "false"s, "0"s, "2"s, "on"s, "y"s, "truely"s, "yes "s, " 1"s, "tru"s, "11"s})
        EXPECT_FALSE(asBoolean(text)) << text;
}

TEST(PreferenceValueTest, NumbersOtherThanZeroReadAsTrue)
{
    EXPECT_TRUE(asBoolean(std::int64_t{-1}));
    EXPECT_TRUE(asBoolean(0.25));
    EXPECT_TRUE(asBoolean(true));
    EXPECT_FALSE(asBoolean(std::int64_t{0}));
    EXPECT_FALSE(asBoolean(-0.0));
    EXPECT_FALSE(asBoolean(kNotANumber));
    EXPECT_FALSE(asBoolean(false));
}

TEST(PreferenceValueTest, TextReadsAsTheNumberAtItsStart)
{
    EXPECT_EQ(asReal("2.5"s), 2.5);
    EXPECT_EQ(asReal(".5"s), 0.5);
    EXPECT_EQ(asReal("5."s), 5.0);
    EXPECT_EQ(asReal(" -0.25 s"s), -0.25);
    EXPECT_EQ(asReal("+2"s), 2.0);
    EXPECT_EQ(asReal("1e3"s), 1000.0);
    EXPECT_EQ(asReal("1e"s), 1.0);
    EXPECT_EQ(asReal("0x10"s), 0.0);
    EXPECT_EQ(asReal("2,5"s), 2.0);
    EXPECT_EQ(asReal("."s), 0.0);
    EXPECT_EQ(asReal("-.e5"s), 0.0);
}

TEST(PreferenceValueTest, RealsOutOfRangeSaturate)
{
    EXPECT_EQ(asReal("1e999"s), kLargestReal);
    EXPECT_EQ(asReal("-1e999"s), -kLargestReal);
    EXPECT_EQ(asReal("1e99999999999999999999"s), kLargestReal);
    EXPECT_EQ(asReal(std::string(400, '9')), kLargestReal);
    EXPECT_EQ(asReal("1e-999"s), 0.0);
    EXPECT_EQ(asReal("1e-99999999999999999999"s), 0.0);
    EXPECT_EQ(asReal("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(asReal("0." + std::string(400, '0') + "1e800"), kLargestReal);
    EXPECT_EQ(asReal("1" + std::string(400, '0') + "e-800"), 0.0);
    EXPECT_EQ(asReal(kInfinity), kLargestReal);
}

TEST(PreferenceValueTest, RealsAreAlwaysFinite)
{
    for (const std::string& text : {"nan"s, "NaN"s, "-nan"s, "inf"s, "Infinity"s, "-inf"s, "nan(1)"s})
        EXPECT_EQ(asReal(text), 0.0) << text;
    EXPECT_EQ(asReal(kNotANumber), 0.0);
    EXPECT_EQ(asReal(-kInfinity), -kLargestReal);
}

TEST(PreferenceValueTest, OtherTypesReadAsReals)
{
    EXPECT_EQ(asReal(2.5), 2.5);
    EXPECT_EQ(asReal(std::int64_t{-3}), -3.0);
    EXPECT_EQ(asReal(true), 1.0);
    EXPECT_EQ(asReal(false), 0.0);
}

TEST(PreferenceValueTest, EveryTypeReadsAsText)
{
    EXPECT_EQ(asText("as it is \n"s), "as it is \n");
    EXPECT_EQ(asText(std::int64_t{-12}), "-12");
    EXPECT_EQ(asText(kSmallestInteger), "-9223372036854775808");
    EXPECT_EQ(asText(true), "1");
    EXPECT_EQ(asText(false), "0");
    EXPECT_EQ(asText(2.0), "2");
    EXPECT_EQ(asText(0.1), "0.1");
    EXPECT_EQ(asText(1e21), "1000000000000000000000");
    EXPECT_EQ(asText(kNotANumber), "0");
}

TEST(PreferenceValueTest, TextOfARealBringsTheSameRealBack)
{
    for (const double real :
        {0.1, 1.0 / 3.0, -2.5e-300, std::numeric_limits<double>::denorm_min(), kLargestReal})
        EXPECT_EQ(asReal(asText(real)), real);
    EXPECT_EQ(asReal(asText(kInfinity)), kLargestReal);
}

TEST(PreferenceValueTest, TheLocaleChangesNothing)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* const name : {"de_DE.UTF-8", "tr_TR.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, name);
        EXPECT_EQ(asReal("2.5"s), 2.5) << name;
        EXPECT_EQ(asText(2.5), "2.5") << name;
        EXPECT_EQ(asReal("1e999"s), kLargestReal) << name;
        EXPECT_TRUE(asBoolean("YES"s)) << name;
    }
    std::setlocale(LC_ALL, before.c_str());
}

} // namespace
} // namespace amperly
