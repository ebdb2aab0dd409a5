#include "render/decimal_formatter.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace amperly {
namespace {

std::string tenths(const char* localeId, double value)
{
    return DecimalFormatter{localeId, 1}.text(value);
}

std::string whole(const char* localeId, double value)
{
    return DecimalFormatter{localeId, 0}.text(value);
}

TEST(DecimalFormatterTest, FractionDigitsAreExact)
{
    EXPECT_EQ(tenths("en_US", 7.0), "7.0");
    EXPECT_EQ(tenths("en_US", 12.34), "12.3");
    EXPECT_EQ(whole("en_US", 12.34), "12");
    EXPECT_EQ((DecimalFormatter{"en_US", 0}.fractionDigits()), 0);
    EXPECT_EQ((DecimalFormatter{"en_US", 1}.fractionDigits()), 1);
}

TEST(DecimalFormatterTest, EnglishHasCommasAndAPoint)
{
    EXPECT_EQ(tenths("en_US", 1234.5), "1,234.5");
    EXPECT_EQ(whole("en_US", 1234567.0), "1,234,567");
}

TEST(DecimalFormatterTest, GermanHasPointsAndAComma)
{
    EXPECT_EQ(tenths("de_DE", 1234.5), "1.234,5");
    EXPECT_EQ(whole("de_DE", 1234567.0), "1.234.567");
}

TEST(DecimalFormatterTest, SwissGermanHasApostrophesAndAPoint)
{
    // Typographic or plain: the locale's data changed its mind between versions.
    EXPECT_THAT(tenths("de_CH", 1234.5), testing::AnyOf("1\u2019234.5", "1'234.5"));
}

TEST(DecimalFormatterTest, FrenchHasNarrowSpacesAndAComma)
{
    EXPECT_EQ(tenths("fr_FR", 1234.5), "1\u202F234,5");
}

TEST(DecimalFormatterTest, HindiGroupsTwosAfterTheFirstThree)
{
    EXPECT_EQ(tenths("hi_IN", 1234567.8), "12,34,567.8");
    EXPECT_EQ(whole("hi_IN", 12345678.0), "1,23,45,678");
}

TEST(DecimalFormatterTest, SpanishGroupsFromFiveDigitsOn)
{
    EXPECT_EQ(tenths("es_ES", 1234.5), "1234,5");
    EXPECT_EQ(tenths("es_ES", 12345.6), "12.345,6");
    EXPECT_EQ(tenths("es_ES", 9999.95), "10.000,0");
}

TEST(DecimalFormatterTest, ArabicWritesItsOwnDigits)
{
    EXPECT_EQ(tenths("ar_EG", 1234.5), "١٬٢٣٤٫٥");
}

TEST(DecimalFormatterTest, PersianWritesItsOwnDigits)
{
    EXPECT_EQ(tenths("fa_IR", 1234.5), "۱٬۲۳۴٫۵");
}

TEST(DecimalFormatterTest, BengaliWritesItsOwnDigits)
{
    EXPECT_EQ(tenths("bn_BD", 1234567.8), "১২,৩৪,৫৬৭.৮");
}

TEST(DecimalFormatterTest, BurmeseWritesItsOwnDigits)
{
    EXPECT_EQ(tenths("my_MM", 1234.5), "၁,၂၃၄.၅");
}

TEST(DecimalFormatterTest, PosixHasNoGroups)
{
    EXPECT_EQ(tenths("en_US_POSIX", 12345678.9), "12345678.9");
}

TEST(DecimalFormatterTest, ALanguageAloneIsEnough)
{
    EXPECT_EQ(tenths("de", 1234.5), "1.234,5");
}

TEST(DecimalFormatterTest, AnUnknownRegionOrVariantTakesTheLanguage)
{
    EXPECT_EQ(tenths("de_XX", 1234.5), "1.234,5");
    EXPECT_EQ(tenths("de_DE_EURO", 1234.5), "1.234,5");
}

TEST(DecimalFormatterTest, HalvesRoundToEven)
{
    EXPECT_EQ(tenths("en_US", 0.25), "0.2");
    EXPECT_EQ(tenths("en_US", 0.35), "0.4");
    EXPECT_EQ(tenths("en_US", 0.05), "0.0");
    EXPECT_EQ(whole("en_US", 0.5), "0");
    EXPECT_EQ(whole("en_US", 1.5), "2");
    EXPECT_EQ(whole("en_US", 2.5), "2");
}

TEST(DecimalFormatterTest, NumbersOfAQuadrillionAndMoreAreGroupedToo)
{
    EXPECT_EQ(tenths("en_US", 1e15), "1,000,000,000,000,000.0");
    EXPECT_EQ(tenths("de_DE", 1e15), "1.000.000.000.000.000,0");
    EXPECT_EQ(tenths("en_US", 999999999999999.9), "999,999,999,999,999.9");
    EXPECT_EQ(whole("en_US", std::nextafter(1e15, 0.0)), "1,000,000,000,000,000");
}

TEST(DecimalFormatterTest, WhatIsNoNumberIsSaidInTheLocalesWay)
{
    EXPECT_EQ(tenths("en_US", std::numeric_limits<double>::infinity()), "∞");
    EXPECT_EQ(tenths("en_US", std::numeric_limits<double>::quiet_NaN()), "NaN");
}

TEST(DecimalFormatterTest, NegativeNumbersGetTheLocalesSign)
{
    EXPECT_EQ(tenths("en_US", -1234.5), "-1,234.5");
    EXPECT_EQ(tenths("en_US", -0.0), "-0.0");
    EXPECT_EQ(tenths("sv_SE", -1.5), "\u22121,5");
}

TEST(DecimalFormatterTest, WithoutAnythingFromIcuDigitsArePlain)
{
    EXPECT_EQ(tenths("en_US@numbers=nosuch", 1234.56), "1234.6");
    EXPECT_EQ(whole("en_US@numbers=nosuch", 1234.56), "1235");
    EXPECT_EQ(tenths("en_US@numbers=nosuch", 0.0), "0.0");
    EXPECT_EQ(tenths("en_US@numbers=nosuch", std::numeric_limits<double>::infinity()), "inf");
}

TEST(DecimalFormatterTest, WithoutAnythingFromIcuTheLargestNumberIsWhole)
{
    const std::string text = tenths("en_US@numbers=nosuch", -std::numeric_limits<double>::max());
    EXPECT_EQ(text.size(), 312U); // sign, 309 digits, point, one digit
    EXPECT_EQ(text.substr(0, 6), "-17976");
    EXPECT_EQ(text.substr(310), ".0");
}

TEST(DecimalFormatterTest, WithoutAShapeIcuWritesEachNumber)
{
    const DecimalFormatter formatter{"de_DE", std::nullopt, 1};
    EXPECT_EQ(formatter.text(1234.25), "1.234,2");
}

TEST(DecimalFormatterTest, AppendingKeepsWhatIsThere)
{
    std::string text = "about ";
    DecimalFormatter{"en_US", 1}.append(text, 14.2);
    EXPECT_EQ(text, "about 14.2");
}

} // namespace
} // namespace amperly
