// Every number that says how a glass tube looks. Lengths are points; positions across the tube are
// fractions of its half width there, positive on the upper side, which the light falls on.
#pragma once

namespace amperly::glass {

/// A ribbon along the tube, from one position across it to another.
struct Ribbon {
    double lower = 0.0;
    double upper = 0.0;
    double opacity = 0.0;
};

/// A ribbon that only swellings have; the opacity is for a full one and falls with the swell.
using SwellBand = Ribbon;

struct GlassLook {
    // The swellings and how they travel.
    double pulseSpacing = 84.0; ///< from one pulse's centre to the next
    double pulseSigma = 15.0; ///< standard deviation of a pulse along the tube
    double endTaper = 34.0; ///< over which a pulse grows at the start and shrinks at the end
    double swelling = 0.8; ///< how much wider the tube is in the middle of a pulse

    // Blurs. A blur's radius is the standard deviation of its Gaussian, which is how the filters
    // that these numbers were found with take it; it is given as a fraction of the tube's width.
    double outerGlowOpacity = 0.22;
    double outerGlowRadius = 0.9;
    SwellBand pulseHalo{-1.4, 1.4, 0.35};
    double pulseHaloRadius = 0.7;

    // The glass, back to front.
    double bodyOpacityAtStart = 0.22;
    double bodyOpacityAtEnd = 0.34;
    Ribbon lowerShade{-1.0, -0.45, 0.22};
    Ribbon lowerInnerShade{-0.78, -0.5, 0.18};
    SwellBand pulseCore{-0.82, -0.42, 0.75};
    double pulseCoreWhite = 0.45; ///< how far its colour is moved towards white
    Ribbon upperSheen{0.15, 0.85, 0.06}; ///< white
    double rimOpacity = 0.55;
    double rimLineWidth = 0.7;
    double specularPosition = 0.93;
    double specularOpacity = 0.22; ///< white
    double specularLineWidth = 0.6;
    Ribbon highlightBand{0.42, 0.62, 0.12}; ///< white
    SwellBand pulseHighlight{0.36, 0.68, 0.7}; ///< white

    // From which swell on something is there at all.
    double leastSwellOfRun = 0.03;
    double leastSwellOfGlint = 0.55;

    // Glints, all white. Lengths are multiples of a glint's size unless they say points.
    double glintPosition = 0.52;
    double glintSize = 0.22; ///< of the tube's width
    double leastGlintSize = 2.2; ///< points
    double glintDiscRadius = 2.4;
    double glintDiscOpacity = 0.35;
    double glintArmAcross = 1.6;
    double glintArmUp = 1.0;
    double glintArmOpacity = 0.8;
    double glintArmLineWidth = 0.8; ///< points
    double glintDotRadius = 1.0; ///< points
    double glintDotOpacity = 0.95;
};

inline constexpr GlassLook kGlassLook{};

static_assert(kGlassLook.leastSwellOfRun < kGlassLook.leastSwellOfGlint, "a glint sits on a swelling");

} // namespace amperly::glass
