// For systems whose fonts come in one design.

#include "render/look/rounded_font.h"

namespace amperly {

std::string roundedFontFamily()
{
    return {};
}

} // namespace amperly
