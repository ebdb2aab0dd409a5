#include "render/decimal_formatter.h"
#include "render/number_locale.h"
#include "render/status_renderer.h"

#include <algorithm>
#include <cmath>

namespace amperly {
namespace {

constexpr std::string_view kPlus = "+";
constexpr std::string_view kMinus = "\u2212"; // as wide as the plus, so that the digits stay put
constexpr std::string_view kUnit = " W";

std::array<DecimalFormatter, 2> formattersFor(const std::string& localeId)
{
    const std::optional<NumberShape> shape = harvestNumberShape(localeId);
    return {DecimalFormatter{localeId, shape, 0}, DecimalFormatter{localeId, shape, 1}};
}

std::array<DecimalFormatter, 2>& formattersInUse()
{
    static std::array<DecimalFormatter, 2> formatters = formattersFor(numberLocaleOfUser());
    return formatters;
}

/// Whether the value shows as more than zero. It counts halves away from zero although the
/// digits round them to even, so that a half of the last place shows as zero with a sign.
bool showsAsSomething(double magnitude, int decimals)
{
    return std::round(magnitude * (decimals == 0 ? 1.0 : 10.0)) > 0.0;
}

std::string flowText(double value, bool known, int decimals, bool unit, bool signedValue)
{
    return known ? StatusRenderer::watts(value, decimals, unit, signedValue)
                 : std::string{StatusRenderer::noValue};
}

} // namespace

const std::array<DecimalFormatter, 2>& StatusRenderer::formatters()
{
    return formattersInUse();
}

void StatusRenderer::useLocale(const std::string& localeId)
{
    formattersInUse() = formattersFor(localeId);
}

void StatusRenderer::appendWatts(std::string& text, double value, int decimals, bool unit, bool signedValue)
{
    const int shownDecimals = std::clamp(decimals, 0, 1);
    const double magnitude = std::abs(value);
    if (signedValue && showsAsSomething(magnitude, shownDecimals))
        text += value > 0.0 ? kPlus : kMinus;
    formatters()[static_cast<std::size_t>(shownDecimals)].append(text, magnitude);
    if (unit)
        text += kUnit;
}

std::string StatusRenderer::watts(double value, int decimals, bool unit, bool signedValue)
{
    std::string text;
    appendWatts(text, value, decimals, unit, signedValue);
    return text;
}

std::string StatusRenderer::systemLoadText(const PowerSample& sample, int decimals, bool unit)
{
    return flowText(sample.systemLoad, sample.systemLoadKnown, decimals, unit, false);
}

std::string StatusRenderer::adapterInText(const PowerSample& sample, int decimals, bool unit)
{
    return flowText(sample.adapterIn, sample.adapterInKnown, decimals, unit, false);
}

std::string StatusRenderer::batteryText(const PowerSample& sample, int decimals, bool unit)
{
    return flowText(sample.battery, sample.batteryKnown, decimals, unit, true);
}

} // namespace amperly
