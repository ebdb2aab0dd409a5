// The sizes of text in the program's own windows, all in the desktop's own font.
#pragma once

#include <QFont>

namespace amperly {

enum class TextStyle { Body, Callout, Caption, Caption2 };

/// The desktop's font at the size of `style`: 13, 12, 11 or 10 points of the screen.
[[nodiscard]] QFont textFont(TextStyle style, QFont::Weight weight = QFont::Normal);

/// The desktop's font at a size of its own, in points of the screen.
[[nodiscard]] QFont sizedFont(int points, QFont::Weight weight);

} // namespace amperly
