// Colours that the toolkit's palette does not name, worked out from those that it does, so that
// they suit light and dark desktops alike, and stand out more where the user asks for that.
#pragma once

#include <QColor>
#include <QPalette>

namespace amperly {

class DisplaySettings;

/// Whether text is lighter than what it stands on.
[[nodiscard]] bool isDark(const QPalette& palette);

/// Text of the second rank: captions, footers, what is not in use.
[[nodiscard]] QColor secondaryColor(const QPalette& palette, const DisplaySettings& display);

/// A hairline between parts of a window.
[[nodiscard]] QColor separatorColor(const QPalette& palette, const DisplaySettings& display);

/// What can be clicked and leads elsewhere: the desktop's accent, as legible as text.
[[nodiscard]] QColor linkColor(const QPalette& palette);

/// From 1, for the same colour twice, to 21, for black and white: the contrast ratio of the Web
/// Content Accessibility Guidelines.
[[nodiscard]] double contrastRatio(const QColor& one, const QColor& other);

/// `front` over `back` at `opacity` from 0 to 1; both are taken as opaque.
[[nodiscard]] QColor blended(const QColor& front, const QColor& back, double opacity);

} // namespace amperly
