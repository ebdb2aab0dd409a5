// Pictures of the panel that a click opens: a contact sheet of its states, and the diagram as it
// moves.
#pragma once

#include <QString>

namespace amperly {

class StatusArt;

/// Writes the sheets as PNG files into `folder`, which must exist. Tells whether all went well.
[[nodiscard]] bool writePanelGallery(const QString& folder, StatusArt& art);

/// Frames a second of what writePanelFrames() writes.
inline constexpr int kGalleryFrameRate = 25;

/// Writes one round of the panel's movement, after which it starts over, as numbered PNG files
/// into `folder`, which is made. Tells whether all went well.
[[nodiscard]] bool writePanelFrames(const QString& folder, StatusArt& art);

} // namespace amperly
