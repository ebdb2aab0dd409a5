#include "platform/linux/text/font_match.h"

#include <fontconfig/fontconfig.h>
#include <memory>

namespace amperly {

namespace {

template <auto destroy>
struct Destroyer {
    template <typename T>
    void operator()(T* object) const
    {
        destroy(object);
    }
};

using Config = std::unique_ptr<FcConfig, Destroyer<FcConfigDestroy>>;
using Pattern = std::unique_ptr<FcPattern, Destroyer<FcPatternDestroy>>;
using CharSet = std::unique_ptr<FcCharSet, Destroyer<FcCharSetDestroy>>;
using FontSet = std::unique_ptr<FcFontSet, Destroyer<FcFontSetDestroy>>;

const FcChar8* bytes(const std::string& text)
{
    return reinterpret_cast<const FcChar8*>(text.c_str());
}

CharSet charSet(std::u32string_view characters)
{
    CharSet set(FcCharSetCreate());
    for (const char32_t character : characters)
        FcCharSetAddChar(set.get(), character);
    return set;
}

/// How many of `wanted` a font lacks.
FcChar32 missing(FcPattern* font, const FcCharSet* wanted)
{
    FcCharSet* has = nullptr;
    if (FcPatternGetCharSet(font, FC_CHARSET, 0, &has) != FcResultMatch)
        return FcCharSetCount(wanted);
    return FcCharSetSubtractCount(wanted, has);
}

std::optional<FontFace> faceOf(FcPattern* font)
{
    FcChar8* file = nullptr;
    if (FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch)
        return std::nullopt;
    FontFace face{reinterpret_cast<const char*>(file), 0};
    FcPatternGetInteger(font, FC_INDEX, 0, &face.faceIndex);
    return face;
}

} // namespace

std::optional<FontFace> matchFont(
    const std::string& family, FontWeight weight, std::u32string_view characters)
{
    const Config config(FcInitLoadConfigAndFonts());
    const Pattern pattern(FcPatternCreate());
    if (!config || !pattern)
        return std::nullopt;

    const CharSet wanted = charSet(characters);
    FcPatternAddString(pattern.get(), FC_FAMILY, bytes(family));
    FcPatternAddInteger(
        pattern.get(), FC_WEIGHT, weight == FontWeight::Medium ? FC_WEIGHT_MEDIUM : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_OUTLINE, FcTrue);
    FcPatternAddCharSet(pattern.get(), FC_CHARSET, wanted.get());
    FcConfigSubstitute(config.get(), pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());

    // The nearest in style comes first; the first of them that has every character is the one.
    FcResult result = FcResultNoMatch;
    const FontSet sorted(FcFontSort(config.get(), pattern.get(), FcFalse, nullptr, &result));
    if (!sorted || sorted->nfont == 0)
        return std::nullopt;
    FcPattern* best = sorted->fonts[0];
    for (int index = 1; index < sorted->nfont && missing(best, wanted.get()) > 0; ++index) {
        if (missing(sorted->fonts[index], wanted.get()) < missing(best, wanted.get()))
            best = sorted->fonts[index];
    }
    return faceOf(best);
}

} // namespace amperly
