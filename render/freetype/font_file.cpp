// Fonts read with FreeType itself. The toolkit's way to a font, even to a single file of it, keeps
// some 400 KB of private memory after the font is closed; this way keeps next to none.

#include "render/font_file.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

namespace amperly {
namespace {

/// Font units are 26.6 fixed point wherever pixels are meant.
constexpr double kFixedOne = 64.0;
constexpr FT_UInt kPointsPerInch = 72; // one point is one pixel

// The automatic hinter in its normal mode fits upright stems as well as bars to the pixels. It
// works alike on every font, whether or not its designer added instructions.
constexpr FT_Int32 kLoadFlags = FT_LOAD_TARGET_NORMAL | FT_LOAD_FORCE_AUTOHINT | FT_LOAD_NO_BITMAP;

/// Puts an outline that is no more than a level bar on whole pixels: dashes and the true minus
/// belong to no script, so the hinter leaves them as they are.
void fitBar(FT_Outline& outline)
{
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    const double width = static_cast<double>(box.xMax - box.xMin) / kFixedOne;
    const double height = static_cast<double>(box.yMax - box.yMin) / kFixedOne;
    constexpr double kLeastSlenderness = 2.0;
    if (height <= 0.0 || width < kLeastSlenderness * height)
        return;
    const double bottom = static_cast<double>(box.yMin) / kFixedOne;
    const double fittedHeight = std::max(1.0, std::round(height));
    const double fittedBottom = std::round(bottom + (height - fittedHeight) * 0.5);
    for (int index = 0; index < outline.n_points; ++index) {
        FT_Pos& y = outline.points[index].y;
        const double share = (static_cast<double>(y) / kFixedOne - bottom) / height;
        y = std::lround((fittedBottom + share * fittedHeight) * kFixedOne);
    }
}

CoverageMask copied(const FT_Bitmap& bitmap)
{
    CoverageMask mask;
    mask.clear(static_cast<int>(bitmap.width), static_cast<int>(bitmap.rows));
    for (std::size_t row = 0; row < bitmap.rows; ++row) {
        const auto* source = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
        std::copy_n(
            source, bitmap.width, mask.coverage.begin() + static_cast<std::ptrdiff_t>(row * bitmap.width));
    }
    return mask;
}

} // namespace

struct FontFile::Face {
    FT_Library library = nullptr;
    FT_Face face = nullptr;

    Face() = default;
    ~Face()
    {
        // The face is closed before the library that opened it.
        if (face != nullptr)
            FT_Done_Face(face);
        if (library != nullptr)
            FT_Done_FreeType(library);
    }
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    [[nodiscard]] bool loadUnscaled(char32_t character) const
    {
        const FT_UInt glyph = FT_Get_Char_Index(face, character);
        return glyph != 0 && FT_Load_Glyph(face, glyph, FT_LOAD_NO_SCALE) == 0;
    }
};

FontFile::FontFile(std::unique_ptr<Face> face) : m_face(std::move(face)) { }
FontFile::~FontFile() = default;
FontFile::FontFile(FontFile&&) noexcept = default;
FontFile& FontFile::operator=(FontFile&&) noexcept = default;

std::optional<FontFile> FontFile::open(const FontFace& face)
{
    auto opened = std::make_unique<Face>();
    if (FT_Init_FreeType(&opened->library) != 0)
        return std::nullopt;
    // The index may also name an instance of a variable font, in its upper half.
    if (FT_New_Face(opened->library, face.path.c_str(), face.faceIndex, &opened->face) != 0)
        return std::nullopt;
    if (!FT_IS_SCALABLE(opened->face) || opened->face->units_per_EM == 0)
        return std::nullopt;
    return FontFile(std::move(opened));
}

bool FontFile::has(char32_t character) const
{
    return FT_Get_Char_Index(m_face->face, character) != 0;
}

double FontFile::advance(char32_t character) const
{
    if (!m_face->loadUnscaled(character))
        return 0.0;
    return static_cast<double>(m_face->face->glyph->metrics.horiAdvance) / m_face->face->units_per_EM;
}

double FontFile::inkWidth(char32_t character) const
{
    if (!m_face->loadUnscaled(character))
        return 0.0;
    return static_cast<double>(m_face->face->glyph->metrics.width) / m_face->face->units_per_EM;
}

double FontFile::rise(char32_t character) const
{
    if (!m_face->loadUnscaled(character))
        return 0.0;
    return static_cast<double>(m_face->face->glyph->metrics.horiBearingY) / m_face->face->units_per_EM;
}

std::optional<FontFile::Drawing> FontFile::draw(char32_t character, double pixelSize)
{
    const FT_UInt glyph = FT_Get_Char_Index(m_face->face, character);
    const auto size = static_cast<FT_F26Dot6>(std::lround(pixelSize * kFixedOne));
    if (glyph == 0 || FT_Set_Char_Size(m_face->face, 0, size, kPointsPerInch, kPointsPerInch) != 0
        || FT_Load_Glyph(m_face->face, glyph, kLoadFlags) != 0)
        return std::nullopt;
    const FT_GlyphSlot slot = m_face->face->glyph;
    fitBar(slot->outline);
    if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0)
        return std::nullopt;

    return Drawing{
        .mask = copied(slot->bitmap),
        .left = slot->bitmap_left,
        .top = slot->bitmap_top,
        .advance = static_cast<int>(std::lround(static_cast<double>(slot->advance.x) / kFixedOne)),
    };
}

} // namespace amperly
