#include "render/number_locale.h"

#include "render/decimal_formatter.h"

#include <map>

#include <gtest/gtest.h>

namespace amperly {
namespace {

std::string localeOf(const std::map<std::string, std::string>& environment)
{
    return userNumberLocale([&](const char* name) {
        const auto variable = environment.find(name);
        return variable == environment.end() ? nullptr : variable->second.c_str();
    });
}

TEST(NumberLocaleTest, TheVariableForEverythingWins)
{
    EXPECT_EQ(localeOf({{"LC_ALL", "de_DE"}, {"LC_NUMERIC", "fr_FR"}, {"LANG", "en_US"}}), "de_DE");
}

TEST(NumberLocaleTest, TheVariableForNumbersWinsOverTheLanguage)
{
    EXPECT_EQ(localeOf({{"LC_NUMERIC", "fr_FR"}, {"LANG", "en_US"}}), "fr_FR");
}

TEST(NumberLocaleTest, TheLanguageCountsWhenItIsAlone)
{
    EXPECT_EQ(localeOf({{"LANG", "en_US"}}), "en_US");
}

TEST(NumberLocaleTest, VariablesSetToNothingCountAsNotSet)
{
    EXPECT_EQ(localeOf({{"LC_ALL", ""}, {"LC_NUMERIC", ""}, {"LANG", "de_CH"}}), "de_CH");
    EXPECT_EQ(localeOf({{"LC_ALL", ""}, {"LC_NUMERIC", "fr_FR"}, {"LANG", ""}}), "fr_FR");
}

TEST(NumberLocaleTest, AnEmptyEnvironmentIsTheCLocale)
{
    EXPECT_EQ(localeOf({}), "en_US_POSIX");
    EXPECT_EQ(localeOf({{"LANG", ""}}), "en_US_POSIX");
}

TEST(NumberLocaleTest, VariablesForOtherThingsDoNotCount)
{
    EXPECT_EQ(localeOf({{"LANGUAGE", "de:fr"}, {"LC_MESSAGES", "de_DE"}, {"LC_MONETARY", "de_DE"},
                  {"LC_TIME", "de_DE"}, {"LANG", "en_GB"}}),
        "en_GB");
}

TEST(NumberLocaleTest, NumbersInTheCLocaleStayPlainInAGermanDesktop)
{
    EXPECT_EQ(localeOf({{"LC_NUMERIC", "C"}, {"LANG", "de_DE.UTF-8"}}), "en_US_POSIX");
}

TEST(NumberLocaleTest, TheCLocaleHasManySpellings)
{
    for (const char* const name : {"C", "POSIX", "C.UTF-8", "C.utf8", "POSIX.UTF-8", "C@quot", ".UTF-8"})
        EXPECT_EQ(icuLocaleId(name), "en_US_POSIX") << name;
}

TEST(NumberLocaleTest, TheCharacterSetIsLeftOut)
{
    EXPECT_EQ(icuLocaleId("de_DE.UTF-8"), "de_DE");
    EXPECT_EQ(icuLocaleId("zh_TW.big5"), "zh_TW");
}

TEST(NumberLocaleTest, AModifierBecomesAVariant)
{
    EXPECT_EQ(icuLocaleId("de_DE.UTF-8@euro"), "de_DE_EURO");
    EXPECT_EQ(icuLocaleId("ca_ES@valencia"), "ca_ES_VALENCIA");
}

TEST(NumberLocaleTest, UnknownNamesAreLeftToIcu)
{
    EXPECT_EQ(icuLocaleId("xx_YY.UTF-8"), "xx_YY");
}

TEST(NumberLocaleTest, ANameTooLongForIcuStillYieldsDigits)
{
    for (const std::size_t length : {156U, 157U, 4000U})
        EXPECT_EQ((DecimalFormatter{icuLocaleId(std::string(length, 'q')), 1}.text(12.5)), "12.5") << length;
    EXPECT_EQ(icuLocaleId(std::string(4000, 'q')), "en_US_POSIX");
}

TEST(NumberLocaleTest, OutdatedCodesAreStillUnderstood)
{
    EXPECT_EQ((DecimalFormatter{icuLocaleId("iw_IL.UTF-8"), 1}.text(1234.5)), "1,234.5");
    EXPECT_EQ((DecimalFormatter{icuLocaleId("in_ID.UTF-8"), 1}.text(1234.5)), "1.234,5");
    EXPECT_EQ((DecimalFormatter{icuLocaleId("no_NO.UTF-8"), 1}.text(1234.5)), "1\u00A0234,5");
}

TEST(NumberLocaleTest, BytesThatNameNothingStillYieldDigits)
{
    for (const char* const name : {"/usr/share/locale/de", "\xff\xfe", "@", "@@", "_", "de_DE@=", "%s%n"}) {
        const DecimalFormatter formatter{icuLocaleId(name), 1};
        EXPECT_EQ(formatter.text(12.34).size(), 4U) << name;
    }
}

} // namespace
} // namespace amperly
