#include "platform/linux/tray/ink_source.h"

namespace amperly {

namespace {

/// Rec. 601 weights; enough to tell a light text from a dark one.
bool isLight(Ink ink)
{
    const std::uint32_t red = (ink.argb >> 16) & 0xff;
    const std::uint32_t green = (ink.argb >> 8) & 0xff;
    const std::uint32_t blue = ink.argb & 0xff;
    return 299 * red + 587 * green + 114 * blue > 127'500;
}

} // namespace

Ink chooseInk(PanelInk panel, const InkFacts& facts)
{
    if (facts.tray)
        return *facts.tray;
    switch (panel) {
    case PanelInk::White:
        break;
    case PanelInk::Palette:
        return facts.paletteText;
    case PanelInk::ColorScheme:
        // A desktop without a scheme still gives its windows colours, or its theme a name that the
        // windows' colours go by, and its panels are alike.
        return facts.prefersDark.value_or(isLight(facts.paletteText)) ? kWhiteInk : kBlackInk;
    }
    return kWhiteInk;
}

} // namespace amperly
