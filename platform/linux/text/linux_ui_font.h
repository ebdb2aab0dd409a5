// The desktop's font, looked up with fontconfig.
//
// Fontconfig reads every font's description for one answer and keeps a third of a megabyte of it
// for the rest of the run. The question is therefore asked in a child process, which takes all
// of that with it when it ends.
#pragma once

#include "platform/ui_font.h"

#include <string>

namespace amperly {

class LinuxUiFont : public UiFont {
public:
    /// `family` is the desktop's user interface font by name, or a generic name such as "Sans".
    explicit LinuxUiFont(std::string family);

    [[nodiscard]] std::optional<FontFace> face(
        FontWeight weight, std::u32string_view characters) const override;

private:
    std::string m_family;
};

} // namespace amperly
