// The names and default values of everything the user can choose, and three small constants
// that the views share. An accessor yields the key under which a choice is stored; three keys
// differ from their accessor's name, and must, because keys are what outlives a run.
#pragma once

#include "platform/desktop.h"
#include "platform/preference_store.h"
#include "prefs/reading_style.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace amperly {

/// One row of the table of preferences.
struct Preference {
    std::string_view key;
    std::variant<std::string_view, std::int64_t, bool, double> fallback;
};

/// An icon offered for the computer reading.
struct MacIcon {
    std::string_view symbol; ///< the glyph's name, which is what is stored
    std::string_view name; ///< what the picker shows
};

struct Pref {
    static constexpr std::string_view macStyle = "macStyle"; ///< a ReadingStyle's raw value
    static constexpr std::string_view chargerStyle = "chargerStyle"; ///< a ReadingStyle's raw value
    static constexpr std::string_view batteryStyle = "batteryStyle"; ///< a ReadingStyle's raw value
    static constexpr std::string_view macIcon = "macIcon"; ///< a symbol of macIcons
    static constexpr std::string_view decimals = "decimals"; ///< fraction digits of watts
    static constexpr std::string_view showUnit = "showUnit"; ///< in the one-line layout
    static constexpr std::string_view showUnitStacked = "showUnitStacked";
    static constexpr std::string_view largeText = "largeText";
    static constexpr std::string_view compact = "compactSpacing";
    static constexpr std::string_view stacked = "stackedLayout";
    static constexpr std::string_view hideIdleBattery = "hideIdleBattery";
    static constexpr std::string_view interval = "updateInterval"; ///< seconds between samples
    static constexpr std::string_view smoothing = "smoothing";
    static constexpr std::string_view clickShows = "clickShows"; ///< "menu"; anything else is the panel

    /// Whether the program has once registered itself to start at login. It has no row and no
    /// default: it reads false at first, and a reset does not repeat the registration.
    static constexpr std::string_view loginItemConfigured = "loginItemConfigured";

    /// Every preference that has a default, each with its stored type.
    static constexpr std::array<Preference, 14> rows{{
        {macStyle, "iconAndValue"},
        {chargerStyle, "iconAndValue"},
        {batteryStyle, "iconAndValue"},
        {macIcon, "laptopcomputer"},
        {decimals, std::int64_t{1}},
        {showUnit, true},
        {showUnitStacked, false},
        {largeText, false},
        {compact, false},
        {stacked, true},
        {hideIdleBattery, false},
        {interval, 2.0},
        {smoothing, true},
        {clickShows, "panel"},
    }};

    /// The icons offered for the computer reading, in the picker's order.
    static constexpr std::array<MacIcon, 5> macIcons{{
        {"laptopcomputer", "Laptop"},
        {"bolt.fill", "Bolt"},
        {"gauge.with.dots.needle.50percent", "Gauge"},
        {"cpu", "Chip"},
        {"powerplug.fill", "Plug"},
    }};

    /// The rows as a dictionary, to be registered with a store before anything reads it.
    [[nodiscard]] static const PreferenceDictionary& defaults();

    /// How the reading whose style is stored under `key` is shown. A missing, empty or unknown
    /// text shows icon and value: a reading never vanishes by mistake.
    [[nodiscard]] static ReadingStyle style(
        std::string_view key, const PreferenceStore& store = PreferenceStore::standard());

    /// Removes every key of the rows from `store`, and nothing else, so that the registered
    /// defaults show through again.
    static void resetToDefaults(PreferenceStore& store = PreferenceStore::standard());

    /// The version that the installation states of itself, or the empty text.
    [[nodiscard]] static std::string version(const Desktop& desktop);

    /// The address of the donation page.
    [[nodiscard]] static std::string_view coffeeURL();
};

} // namespace amperly
