#include "render/status_renderer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace amperly {
namespace {

constexpr std::string_view kChargingSymbol = "battery.100percent.bolt";
constexpr std::string_view kFullSymbol = "battery.100percent";

/// Glyphs of a battery that is not charging, each for the percentages below its limit.
struct LevelGlyph {
    int belowPercent = 0;
    std::string_view symbol{};
};

// The limits lie midway between two levels, rounded up.
constexpr std::array kLevelGlyphs{
    LevelGlyph{.belowPercent = 13, .symbol = "battery.0percent"},
    LevelGlyph{.belowPercent = 38, .symbol = "battery.25percent"},
    LevelGlyph{.belowPercent = 63, .symbol = "battery.50percent"},
    LevelGlyph{.belowPercent = 88, .symbol = "battery.75percent"},
};

void appendInteger(std::string& text, int number)
{
    std::array<char, std::numeric_limits<int>::digits10 + 2> digits{};
    text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

void appendFlow(std::string& text, double value, bool known)
{
    if (known)
        StatusRenderer::appendWatts(text, value, 1);
    else
        text += StatusRenderer::noValue;
}

} // namespace

std::string_view StatusRenderer::batterySymbol(const PowerSample& sample)
{
    if (sample.batteryKnown && sample.battery > idleWatts)
        return kChargingSymbol;
    if (!sample.batteryPercent)
        return kFullSymbol;
    for (const LevelGlyph& glyph : kLevelGlyphs) {
        if (*sample.batteryPercent < glyph.belowPercent)
            return glyph.symbol;
    }
    return kFullSymbol;
}

void StatusRenderer::appendBatteryDescription(std::string& text, const PowerSample& sample)
{
    if (!sample.batteryKnown) {
        // Off the charger its direction is known all the same.
        text += sample.isUnplugged() ? "Battery draining: " : "Battery: ";
        text += noValue;
    } else if (std::abs(sample.battery) < idleWatts) {
        text += "Battery idle";
    } else {
        text += sample.battery > 0.0 ? "Battery charging: " : "Battery draining: ";
        appendWatts(text, sample.battery, 1);
    }

    if (sample.batteryPercent) {
        text += " (";
        appendInteger(text, *sample.batteryPercent);
        text += "%)";
    }
}

std::string StatusRenderer::batteryDescription(const PowerSample& sample)
{
    std::string text;
    appendBatteryDescription(text, sample);
    return text;
}

void StatusRenderer::appendAccessibilityText(std::string& text, const std::optional<PowerSample>& sample)
{
    if (!sample) {
        text += "Amperly: no power data";
        return;
    }
    text += "Mac using ";
    appendFlow(text, sample->systemLoad, sample->systemLoadKnown);
    if (sample->externalConnected) {
        text += ", charger supplying ";
        appendFlow(text, sample->adapterIn, sample->adapterInKnown);
    }
    text += ", ";
    appendBatteryDescription(text, *sample);
}

std::string StatusRenderer::accessibilityText(const std::optional<PowerSample>& sample)
{
    std::string text;
    appendAccessibilityText(text, sample);
    return text;
}

} // namespace amperly
