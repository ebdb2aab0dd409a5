#include "render/look/window_colors.h"

namespace amperly {

namespace {

// Shares of the text's colour. On dark windows more is needed for the same contrast.
constexpr double kSecondaryOnLight = 0.6;
constexpr double kSecondaryOnDark = 0.66;
constexpr double kSeparator = 0.14;

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

} // namespace

bool isDark(const QPalette& palette)
{
    return text(palette).lightnessF() > window(palette).lightnessF();
}

QColor secondaryColor(const QPalette& palette)
{
    return blended(text(palette), window(palette), isDark(palette) ? kSecondaryOnDark : kSecondaryOnLight);
}

QColor separatorColor(const QPalette& palette)
{
    return blended(text(palette), window(palette), kSeparator);
}

QColor blended(const QColor& front, const QColor& back, double opacity)
{
    return QColor::fromRgbF(mixed(front.redF(), back.redF(), opacity),
        mixed(front.greenF(), back.greenF(), opacity), mixed(front.blueF(), back.blueF(), opacity));
}

} // namespace amperly
