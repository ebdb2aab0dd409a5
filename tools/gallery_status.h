// Contact sheets of the status image in all its shapes.
#pragma once

#include <QString>

namespace amperly {

class StatusArt;

/// Writes the picture at the head of the project's description. Tells whether all went well.
[[nodiscard]] bool writeHero(const QString& path, StatusArt& art);

/// Writes the sheets as PNG files into `folder`, which must exist. Tells whether all went well.
[[nodiscard]] bool writeStatusGallery(const QString& folder, StatusArt& art);

} // namespace amperly
