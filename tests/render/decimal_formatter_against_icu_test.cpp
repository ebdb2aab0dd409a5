// The formatter writes digits by its own arithmetic. Here ICU is asked for the same numbers,
// in every locale it has.
#include "render/decimal_formatter.h"
#include "render/locale_decimals.h"

#include <unicode/locid.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace amperly {
namespace {

/// Compares one number and tells which, when ICU writes it otherwise.
void expectSame(const DecimalFormatter& ours, const LocaleDecimals& icus, double value)
{
    const std::optional<std::string> expected = icus.text(value);
    ASSERT_TRUE(expected);
    EXPECT_EQ(ours.text(value), *expected) << "for " << std::hexfloat << value;
}

class AgainstIcuTest : public testing::TestWithParam<int> {
protected:
    DecimalFormatter m_ours{"en_US", GetParam()};
    LocaleDecimals m_icus{"en_US", GetParam()};
    std::mt19937_64 m_random{20}; // the same numbers in every run
};

TEST_P(AgainstIcuTest, EveryTenthAPowerSupplyCanShow)
{
    for (int tenth = 0; tenth <= 12000; ++tenth)
        expectSame(m_ours, m_icus, tenth / 10.0);
}

TEST_P(AgainstIcuTest, HalvesOfTenthsAndTheirNeighbours)
{
    for (int twentieth = 1; twentieth < 8000; twentieth += 2) {
        const double half = twentieth / 20.0;
        expectSame(m_ours, m_icus, half);
        expectSame(m_ours, m_icus, std::nextafter(half, 0.0));
        expectSame(m_ours, m_icus, std::nextafter(half, 1e9));
    }
}

TEST_P(AgainstIcuTest, HalvesOfOnesAndTheirNeighbours)
{
    for (double half = 0.5; half < 1000.0; half += 1.0) {
        expectSame(m_ours, m_icus, half);
        expectSame(m_ours, m_icus, std::nextafter(half, 0.0));
        expectSame(m_ours, m_icus, std::nextafter(half, 1e9));
    }
}

TEST_P(AgainstIcuTest, AveragesAsSmoothingMakesThem)
{
    std::uniform_int_distribution<int> milliwatts{0, 250000};
    double average = 0.0;
    for (int sample = 0; sample < 5000; ++sample) {
        average = 0.5 * average + 0.5 * (milliwatts(m_random) / 1000.0);
        expectSame(m_ours, m_icus, average);
    }
}

TEST_P(AgainstIcuTest, SinglePrecisionReadingsWidened)
{
    std::uniform_real_distribution<float> watts{0.0F, 200.0F};
    for (int sample = 0; sample < 5000; ++sample)
        expectSame(m_ours, m_icus, static_cast<double>(watts(m_random)));
}

TEST_P(AgainstIcuTest, AnyPositiveDouble)
{
    for (int sample = 0; sample < 5000; ++sample) {
        const double value = std::bit_cast<double>(m_random() >> 1); // the sign bit cleared
        if (std::isfinite(value))
            expectSame(m_ours, m_icus, value);
    }
}

TEST_P(AgainstIcuTest, AnyMagnitudeThatShowsDigits)
{
    std::uniform_real_distribution<double> power{-3.0, 17.0};
    for (int sample = 0; sample < 5000; ++sample)
        expectSame(m_ours, m_icus, std::pow(10.0, power(m_random)));
}

TEST_P(AgainstIcuTest, NumbersAtTheEdgesOfTheirKind)
{
    using Limits = std::numeric_limits<double>;
    for (const double value : {0.0, Limits::denorm_min(), 17 * Limits::denorm_min(), Limits::min(),
             Limits::epsilon(), Limits::max(), Limits::infinity(), std::nextafter(1e15, 0.0), 1e15,
             std::nextafter(1e15, 1e16), 0x1p53, 0x1p53 - 1, 999999999999999.4, 99999999999999.95,
             0.049999999999999996, 0.95, 9.95, 99.95, 999.95, 9007199254740.993})
        expectSame(m_ours, m_icus, value);
}

INSTANTIATE_TEST_SUITE_P(Decimals, AgainstIcuTest, testing::Values(0, 1), testing::PrintToStringParamName());

TEST(AgainstIcuInEveryLocaleTest, SampledNumbersAreTheSame)
{
    const std::vector<double> samples{0.0, 0.04, 0.05, 0.25, 0.35, 0.5, 1.5, 7.0, 9.95, 14.2, 98.76, 100.0,
        999.9, 999.95, 1000.0, 1234.5, 5678.94, 9999.9, 9999.95, 10000.0, 12345.6, 98765.4, 100000.0,
        1234567.8, 23456789.0, 102030405.6, 9876543210.9, 123456789012345.6, 999999999999999.9, 1e15};
    int32_t count = 0;
    const icu::Locale* const locales = icu::Locale::getAvailableLocales(count);
    ASSERT_GT(count, 0);
    for (int32_t locale = 0; locale < count; ++locale) {
        const std::string localeId = locales[locale].getName();
        SCOPED_TRACE(localeId);
        const std::optional<NumberShape> shape = harvestNumberShape(localeId);
        EXPECT_TRUE(shape) << "every number would take the slow way";
        for (const int fractionDigits : {0, 1}) {
            const DecimalFormatter ours{localeId, shape, fractionDigits};
            const LocaleDecimals icus{localeId, fractionDigits};
            for (const double value : samples)
                expectSame(ours, icus, value);
        }
    }
}

TEST(AgainstIcuInEveryLocaleTest, NumberingSystemsAskedForByNameAreTheSame)
{
    for (const char* const localeId : {"ar_EG@numbers=latn", "en_US@numbers=hanidec", "en_US@numbers=arab",
             "hi_IN@numbers=deva", "th_TH@numbers=thai", "zh_CN@numbers=hans", "en_US@numbers=mathsanb"}) {
        SCOPED_TRACE(localeId);
        const DecimalFormatter ours{localeId, 1};
        const LocaleDecimals icus{localeId, 1};
        for (const double value : {0.0, 14.25, 1234.5, 9876543210.9})
            expectSame(ours, icus, value);
    }
}

} // namespace
} // namespace amperly
