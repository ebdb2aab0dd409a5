// Turns readings into what people see and hear: the texts of the status item, its tooltip, the
// menu and the panel, and the status item's picture. There is no state but one lazily built
// cache of number formatters.
//
// A figure that the machine cannot measure shows as a dash alone, without unit or sign.
#pragma once

#include "platform/power_sample.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace amperly {

class DecimalFormatter;
class PreferenceStore;
class StatusImage;

class StatusRenderer {
public:
    StatusRenderer() = delete;

    /// Watts. A battery flow smaller than this counts as idle.
    static constexpr double idleWatts = 0.3;

    /// Stands for a value that is not known: an en dash.
    static constexpr std::string_view noValue = "\u2013";

    /// The text of one wattage in the user's locale, such as "1,234.5 W". `decimals` is limited
    /// to 0 and 1. Without `signedValue` the magnitude is shown; with it "+" or a true minus
    /// sign stands before whatever doesn't round to zero. Allocates nothing but a result of
    /// more than 15 bytes.
    [[nodiscard]] static std::string watts(
        double value, int decimals, bool unit = true, bool signedValue = false);

    /// One flow of a sample: its watts or, where it is not known, the dash. The battery's is
    /// signed: plus while charging.
    [[nodiscard]] static std::string systemLoadText(
        const PowerSample& sample, int decimals, bool unit = true);
    [[nodiscard]] static std::string adapterInText(const PowerSample& sample, int decimals, bool unit = true);
    [[nodiscard]] static std::string batteryText(const PowerSample& sample, int decimals, bool unit = true);

    /// Name of the glyph for the battery's state; lives as long as the program.
    [[nodiscard]] static std::string_view batterySymbol(const PowerSample& sample);

    /// One line on the battery's state, such as "Battery charging: 12.3 W (82%)".
    [[nodiscard]] static std::string batteryDescription(const PowerSample& sample);

    /// What a screen reader says for the status item; nothing known at all is said as well.
    [[nodiscard]] static std::string accessibilityText(const std::optional<PowerSample>& sample);

    /// The same texts, added to the end of one that the caller keeps: a tick that reuses its
    /// text allocates nothing.
    static void appendWatts(
        std::string& text, double value, int decimals, bool unit = true, bool signedValue = false);
    static void appendBatteryDescription(std::string& text, const PowerSample& sample);
    static void appendAccessibilityText(std::string& text, const std::optional<PowerSample>& sample);

    /// The status item's picture. `sample` is the latest reading, nothing while there is none;
    /// what is shown and how comes from `store`, read afresh.
    [[nodiscard]] static StatusImage image(
        const std::optional<PowerSample>& sample, const PreferenceStore& store);

    /// The formatters behind watts(), by their number of decimals. Built for the user's locale
    /// at the first call, from whichever thread, and anew for another locale only.
    [[nodiscard]] static const std::array<DecimalFormatter, 2>& formatters();

    /// Writes numbers in another locale from now on, by the system's name for it.
    static void useLocale(const std::string& localeId);
};

} // namespace amperly
