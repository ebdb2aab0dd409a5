// Pictures of the settings window.
#pragma once

#include <QString>

namespace amperly {

class StatusArt;

/// Writes the settings form in light and dark, at 1x and 2x, from left to right and mirrored, and
/// its rarer states, into `folder`. Needs a QApplication. Tells whether all went well.
[[nodiscard]] bool writeSettingsGallery(const QString& folder, StatusArt& art);

} // namespace amperly
