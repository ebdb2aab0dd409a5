// Contact sheets of the status image in all its shapes.
#pragma once

#include <QString>

namespace amperly {

class StatusArt;

/// Writes the sheets as PNG files into `folder`, which must exist. Tells whether all went well.
[[nodiscard]] bool writeStatusGallery(const QString& folder, StatusArt& art);

} // namespace amperly
