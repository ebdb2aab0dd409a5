// The symbols that stand for the computer, the charger and the battery, as coverage masks.
//
// Every symbol has two masters: a regular one and a sturdier one for small sizes. Most have each
// of them a second time, a pixel higher, for larger text. Their boxes are listed here, so that
// measuring a symbol reads nothing; the drawing is only read when a size is needed that has not
// been drawn yet, and let go again.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/ui_font.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace amperly {

/// A symbol and how wide the boxes of its masters are, in their units.
struct GlyphForm {
    std::string_view name;
    int regularWidth = 0;
    int mediumWidth = 0;
    // Of the masters for larger text. Nothing where one would be blurred: a box that grows by one
    // pixel has its middle between two, and the chip and the dial have a stroke there.
    int largeRegularWidth = 0;
    int largeMediumWidth = 0;
};

/// What the two masters have in common over all symbols.
inline constexpr int kRegularBoxHeight = 26; ///< units, of which so many are the point size
inline constexpr int kMediumBoxHeight = 20; ///< units
inline constexpr int kMediumUnitsPerSize = 19; ///< so that 9.5 points have 2 units to the point
inline constexpr int kLargeRegularBoxHeight = 28; ///< units
inline constexpr int kLargeMediumBoxHeight = 22; ///< units

/// The sizes of larger text, at which its masters have 2 units to the point.
inline constexpr double kLargeRegularSize = 14.0;
inline constexpr double kLargeMediumSize = 10.5;

inline constexpr std::array<GlyphForm, 13> kGlyphForms{{
    {"laptopcomputer", 40, 28, 44, 30},
    {"bolt.fill", 20, 14, 22, 16},
    {"gauge.with.dots.needle.50percent", 26, 20},
    {"cpu", 26, 22},
    {"powerplug.fill", 22, 18, 22, 18},
    {"powerplug", 22, 18, 22, 18},
    {"battery.0percent", 44, 36, 48, 40},
    {"battery.25percent", 44, 36, 48, 40},
    {"battery.50percent", 44, 36, 48, 40},
    {"battery.75percent", 44, 36, 48, 40},
    {"battery.100percent", 44, 36, 48, 40},
    {"battery.100percent.bolt", 44, 36, 48, 40},
    {"exclamationmark.triangle.fill", 26, 22},
}};

/// What is shown for a name that is no symbol's.
inline constexpr std::string_view kFallbackGlyph = "bolt.fill";

/// The form called `name`, else the fallback's.
[[nodiscard]] const GlyphForm& glyphNamed(std::string_view name);

struct GlyphStyle {
    double pointSize = 0.0;
    FontWeight weight = FontWeight::Regular;
    friend bool operator==(const GlyphStyle&, const GlyphStyle&) = default;
};

/// Points.
struct GlyphSize {
    double width = 0.0;
    double height = 0.0;
    friend bool operator==(const GlyphSize&, const GlyphSize&) = default;
};

struct GlyphMaster;

/// The box of a symbol in a style, the same at every scale. Where the system has symbols of its
/// own, it is the box of the system's.
[[nodiscard]] GlyphSize glyphSize(std::string_view name, const GlyphStyle& style);

/// The nearest number of pixels per unit of a master's grid at which its strokes fill whole
/// pixels, if that is hardly another size; else `pixelsPerUnit` as it is.
[[nodiscard]] double crispPixelsPerUnit(double pixelsPerUnit);

/// A symbol in pixels.
struct GlyphDrawing {
    CoverageMask mask;
    double width = 0.0; ///< pixels of the box; the mask is this rounded up, the box at its upper left
    double height = 0.0;
};

class GlyphSet {
public:
    /// A symbol as it is drawn at `scale` pixels per point, to be centred in its box: it may be
    /// a little smaller or larger so that its strokes are crisp. Valid until the next call.
    [[nodiscard]] const GlyphDrawing& drawing(std::string_view name, const GlyphStyle& style, double scale);

    /// A master's whole box at so many pixels per unit. Valid until the next call.
    [[nodiscard]] const GlyphDrawing& drawingPerUnit(
        std::string_view name, FontWeight weight, double pixelsPerUnit);

private:
    [[nodiscard]] const GlyphDrawing& drawingOf(
        const GlyphForm& form, const GlyphMaster& master, double pixelsPerUnit);

    struct Entry {
        const GlyphForm* form = nullptr;
        const GlyphMaster* master = nullptr;
        double pixelsPerUnit = 0.0;
        GlyphDrawing drawing;
    };

    /// A symbol as the system draws it.
    struct SystemEntry {
        std::string name;
        GlyphStyle style;
        double scale = 0.0;
        GlyphDrawing drawing;
    };
    [[nodiscard]] const GlyphDrawing* systemDrawing(
        std::string_view name, const GlyphStyle& style, double scale);

    std::vector<Entry> m_entries;
    std::vector<SystemEntry> m_systemEntries;
};

} // namespace amperly
