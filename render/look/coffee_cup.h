// The hot-beverage sign, drawn: fonts have it as a blot, in colours of their own, or not at all.
#pragma once

#include <QChar>
#include <QColor>
#include <QImage>

namespace amperly {

/// The character that the drawing stands for.
inline constexpr QChar kHotBeverage{0x2615};

/// A cup for text of `size` points, for screens of `scale` pixels per point. The picture knows its
/// scale; it is as high as `size` and stands on the text's baseline.
[[nodiscard]] QImage coffeeCup(double size, const QColor& color, double scale);

} // namespace amperly
