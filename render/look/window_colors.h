// Colours that the toolkit's palette does not name, worked out from those that it does, so that
// they suit light and dark desktops alike.
#pragma once

#include <QColor>
#include <QPalette>

namespace amperly {

/// Whether text is lighter than what it stands on.
[[nodiscard]] bool isDark(const QPalette& palette);

/// Text of the second rank: captions, footers, what is not in use.
[[nodiscard]] QColor secondaryColor(const QPalette& palette);

/// A hairline between parts of a window.
[[nodiscard]] QColor separatorColor(const QPalette& palette);

/// `front` over `back` at `opacity` from 0 to 1; both are taken as opaque.
[[nodiscard]] QColor blended(const QColor& front, const QColor& back, double opacity);

} // namespace amperly
