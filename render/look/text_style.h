// Text in the program's own windows: its sizes, all in the desktop's own font, and its direction.
#pragma once

#include <QFont>
#include <QString>

#include <string_view>

namespace amperly {

enum class TextStyle { Body, Callout, Caption, Caption2 };

/// The desktop's font at the size of `style`: 13, 12, 11 or 10 points of the screen.
[[nodiscard]] QFont textFont(TextStyle style, QFont::Weight weight = QFont::Normal);

/// The desktop's font at a size of its own, in points of the screen.
[[nodiscard]] QFont sizedFont(int points, QFont::Weight weight);

/// The font of figures: the desktop's own, in its rounded design where it has one.
[[nodiscard]] QFont figureFont(int points, QFont::Weight weight);

/// The same at the size of `style`, for figures among words.
[[nodiscard]] QFont figureFont(TextStyle style, QFont::Weight weight);

/// `font` in another family, or as it is where that family's name leads to another font.
[[nodiscard]] QFont inFamily(const QFont& font, const QString& family);

/// UTF-8 as the toolkit keeps text.
[[nodiscard]] QString toText(std::string_view utf8);

/// In which direction a text runs by itself, as a flag for drawing: fixed English keeps its full
/// stop at its end in a window that is mirrored.
[[nodiscard]] int textDirection(const QString& text);

} // namespace amperly
