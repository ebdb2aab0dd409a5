#include "render/locale_decimals.h"

#include "render/decimal_formatter.h"
#include "render/number_locale.h"
#include "tests/platform/macos/fakes/fake_desktop_test.h"

namespace amperly {
namespace {

class LocaleDecimalsTest : public FakeDesktopTest { };

TEST_F(LocaleDecimalsTest, NumbersAreWrittenAsTheLocaleHasThem)
{
    EXPECT_EQ(LocaleDecimals("en_US", 1).text(1234.5), "1,234.5");
    EXPECT_EQ(LocaleDecimals("de_DE", 1).text(1234.5), "1.234,5");
    EXPECT_EQ(LocaleDecimals("de_DE", 0).text(12.0), "12");
}

TEST_F(LocaleDecimalsTest, TheUsersOwnLocaleIsTheSystems)
{
    stage.system.locale = "de_DE";
    EXPECT_EQ(LocaleDecimals(numberLocaleOfUser(), 1).text(12.5), "12,5");
}

TEST_F(LocaleDecimalsTest, TheUsersOwnLocaleIsFollowed)
{
    const LocaleDecimals decimals(numberLocaleOfUser(), 1);
    fake_mac::changeLocale("de_DE");
    EXPECT_EQ(decimals.text(12.5), "12,5");
}

TEST_F(LocaleDecimalsTest, TheSignsOfALocaleAreKnown)
{
    const auto symbols = numberSymbols("de_DE");
    ASSERT_TRUE(symbols);
    EXPECT_EQ(symbols->decimalSeparator.view(), ",");
    EXPECT_EQ(symbols->groupingSeparator.view(), ".");
    EXPECT_EQ(symbols->digits[7].view(), "7");
}

TEST_F(LocaleDecimalsTest, TheFormatterWritesWhatTheSystemWrites)
{
    const DecimalFormatter german("de_DE", 1);
    for (const double value : {0.0, 0.25, 0.75, 9.5, 12.34, 99.99, 123.75, 1234.5, 1e6, 1e15, 1e16})
        EXPECT_EQ(german.text(value), LocaleDecimals("de_DE", 1).text(value)) << value;
}

} // namespace
} // namespace amperly
