#include "render/look/window_colors.h"

#include "platform/display_settings.h"

#include <algorithm>
#include <cmath>

namespace amperly {

namespace {

/// Shares of the text's colour. On dark windows more is needed for the same contrast.
struct Shares {
    double secondaryOnLight = 0.6;
    double secondaryOnDark = 0.66;
    double separator = 0.14;
};
constexpr Shares kUsual;

/// For users who have asked for more contrast: the second rank is nearly the first, and lines
/// are as strong as the outline of a button.
constexpr Shares kStrong{.secondaryOnLight = 0.85, .secondaryOnDark = 0.88, .separator = 0.5};

const Shares& sharesFor(const DisplaySettings& display)
{
    return display.increasesContrast() ? kStrong : kUsual;
}

float mixed(float front, float back, double opacity)
{
    const double share = static_cast<double>(front) * opacity + static_cast<double>(back) * (1.0 - opacity);
    return static_cast<float>(share);
}

QColor text(const QPalette& palette)
{
    return palette.color(QPalette::Active, QPalette::WindowText);
}

QColor window(const QPalette& palette)
{
    return palette.color(QPalette::Active, QPalette::Window);
}

/// As the guidelines define it, from 0 for black to 1 for white.
double luminance(const QColor& color)
{
    const auto linear = [](float part) {
        const auto value = static_cast<double>(part);
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

bool isDark(const QPalette& palette)
{
    return text(palette).lightnessF() > window(palette).lightnessF();
}

QColor secondaryColor(const QPalette& palette, const DisplaySettings& display)
{
    const Shares& shares = sharesFor(display);
    return blended(
        text(palette), window(palette), isDark(palette) ? shares.secondaryOnDark : shares.secondaryOnLight);
}

QColor separatorColor(const QPalette& palette, const DisplaySettings& display)
{
    return blended(text(palette), window(palette), sharesFor(display).separator);
}

QColor linkColor(const QPalette& palette)
{
    // The toolkit's own link is a pure blue that no desktop chose.
    constexpr double kLegible = 4.5;
    constexpr int kSteps = 10;
    const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
    int step = 0;
    const auto mixture = [&] { return blended(text(palette), accent, static_cast<double>(step) / kSteps); };
    while (step < kSteps && contrastRatio(mixture(), window(palette)) < kLegible)
        ++step;
    return mixture();
}

double contrastRatio(const QColor& one, const QColor& other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QColor blended(const QColor& front, const QColor& back, double opacity)
{
    return QColor::fromRgbF(mixed(front.redF(), back.redF(), opacity),
        mixed(front.greenF(), back.greenF(), opacity), mixed(front.blueF(), back.blueF(), opacity));
}

} // namespace amperly
