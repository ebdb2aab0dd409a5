// The letter of a title that, with Alt, leads to its control. It is underlined while Alt is held
// and not before, so that the form is quiet for those who don't need it.
#pragma once

#include <QString>

class QWidget;

namespace amperly {

/// The title as people read it: without the ampersand before the letter.
[[nodiscard]] QString withoutMnemonic(const QString& title);

/// Whether the letters of `window`'s titles are underlined.
void showMnemonics(QWidget& window, bool shown);

/// How to draw a title of `widget`, as a flag for drawing.
[[nodiscard]] int mnemonicFlag(const QWidget& widget);

} // namespace amperly
