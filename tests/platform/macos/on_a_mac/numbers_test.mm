#include "platform/preference_value.h"
#include "render/decimal_formatter.h"
#include "render/locale_decimals.h"
#include "render/number_locale.h"

#include <limits>

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(NumbersOnAMacTest, EnglishAndGermanOnesAreWrittenAsTheyAre)
{
    EXPECT_EQ(LocaleDecimals("en_US", 1).text(1234.5), "1,234.5");
    EXPECT_EQ(LocaleDecimals("de_DE", 1).text(1234.5), "1.234,5");
    EXPECT_EQ(LocaleDecimals("en_US", 0).text(12.0), "12");
}

TEST(NumbersOnAMacTest, AHalfIsRoundedToTheEvenDigit)
{
    EXPECT_EQ(LocaleDecimals("en_US", 0).text(0.5), "0");
    EXPECT_EQ(LocaleDecimals("en_US", 0).text(1.5), "2");
    EXPECT_EQ(LocaleDecimals("en_US", 1).text(0.25), "0.2");
}

TEST(NumbersOnAMacTest, TheProgramsOwnWritingIsTheSystems)
{
    for (const char* const locale : {"en_US", "de_DE", "de_CH", "fr_FR", "es_ES", "hi_IN", "ar_EG"}) {
        for (const double value : {0.0, 0.25, 9.5, 12.34, 99.99, 123.75, 1234.5, 12345.6, 1e6}) {
            const std::optional<std::string> system = LocaleDecimals(locale, 1).text(value);
            EXPECT_EQ(DecimalFormatter(locale, 1).text(value), system) << locale << ' ' << value;
        }
    }
}

TEST(NumbersOnAMacTest, TheUsersOwnAreWrittenSomehow)
{
    const std::optional<std::string> text = LocaleDecimals(numberLocaleOfUser(), 1).text(12.5);
    ASSERT_TRUE(text);
    EXPECT_GE(text->size(), 4U);
}

TEST(NumbersOnAMacTest, PlainOnesAreReadInAnyLocale)
{
    EXPECT_EQ(asReal(PreferenceValue("2.5")), 2.5);
    EXPECT_EQ(asReal(PreferenceValue("1e999")), std::numeric_limits<double>::max());
}

} // namespace
} // namespace amperly
