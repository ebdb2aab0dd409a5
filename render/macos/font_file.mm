// The system's font, drawn by the system: its shapes, its digits of one width, and its choice of
// a font for what it lacks.

#include "render/font_file.h"

#include "platform/macos/foundation/cf_ref.h"

#import <AppKit/AppKit.h>
#include <CoreText/CoreText.h>

#include <cmath>
#include <utility>

namespace amperly {
namespace {

/// The font changes its shapes with its size. Menu bar text is from 9.5 to 13 points high, so all
/// of it is drawn in the shapes for this many, made larger or smaller.
constexpr CGFloat kDesignPoints = 11.0;

NSString* stringOf(char32_t character)
{
    NSString* const string = [[NSString alloc] initWithBytes:&character
                                                      length:sizeof character
                                                    encoding:NSUTF32LittleEndianStringEncoding];
    return string != nil ? string : @"";
}

} // namespace

struct FontFile::Face {
    NSFont* font;

    /// A line with one character in it.
    [[nodiscard]] CfRef<CTLineRef> lineWith(char32_t character) const
    {
        NSDictionary* const attributes = [NSDictionary dictionaryWithObject:font forKey:NSFontAttributeName];
        NSAttributedString* const text = [[NSAttributedString alloc] initWithString:stringOf(character)
                                                                         attributes:attributes];
        return CfRef(CTLineCreateWithAttributedString((__bridge CFAttributedStringRef)text));
    }

    /// The ink of a character, in points of the design, upwards from the baseline.
    [[nodiscard]] static CGRect inkOf(CTLineRef line)
    {
        return CTLineGetBoundsWithOptions(line, kCTLineBoundsUseGlyphPathBounds);
    }

    [[nodiscard]] static double advanceOf(CTLineRef line)
    {
        return CTLineGetTypographicBounds(line, nullptr, nullptr, nullptr);
    }
};

FontFile::FontFile(std::unique_ptr<Face> face) : m_face(std::move(face)) { }
FontFile::~FontFile() = default;
FontFile::FontFile(FontFile&&) noexcept = default;
FontFile& FontFile::operator=(FontFile&&) noexcept = default;

std::optional<FontFile> FontFile::open(const FontFace& face)
{
    const bool isMedium = face.faceIndex == static_cast<int>(FontWeight::Medium);
    NSFont* const font =
        [NSFont monospacedDigitSystemFontOfSize:kDesignPoints
                                         weight:isMedium ? NSFontWeightMedium : NSFontWeightRegular];
    if (font == nil)
        return std::nullopt;
    return FontFile(std::make_unique<Face>(Face{font}));
}

bool FontFile::has(char32_t) const
{
    return true; // in this font or in another that the system takes instead
}

double FontFile::advance(char32_t character) const
{
    return Face::advanceOf(m_face->lineWith(character).get()) / kDesignPoints;
}

double FontFile::inkWidth(char32_t character) const
{
    return Face::inkOf(m_face->lineWith(character).get()).size.width / kDesignPoints;
}

double FontFile::rise(char32_t character) const
{
    const CGRect ink = Face::inkOf(m_face->lineWith(character).get());
    return (ink.origin.y + ink.size.height) / kDesignPoints;
}

std::optional<FontFile::Drawing> FontFile::draw(char32_t character, double pixelSize)
{
    const CfRef<CTLineRef> line = m_face->lineWith(character);
    const double scale = pixelSize / kDesignPoints;
    const CGRect ink = Face::inkOf(line.get());

    Drawing drawing;
    drawing.left = static_cast<int>(std::floor(ink.origin.x * scale));
    drawing.top = static_cast<int>(std::ceil((ink.origin.y + ink.size.height) * scale));
    drawing.advance = static_cast<int>(std::lround(Face::advanceOf(line.get()) * scale));
    const int right = static_cast<int>(std::ceil((ink.origin.x + ink.size.width) * scale));
    const int bottom = static_cast<int>(std::floor(ink.origin.y * scale));
    if (right <= drawing.left || drawing.top <= bottom)
        return drawing; // a space

    CoverageMask& mask = drawing.mask;
    mask.clear(right - drawing.left, drawing.top - bottom);
    const auto width = static_cast<std::size_t>(mask.width);
    const auto height = static_cast<std::size_t>(mask.height);
    const CfRef context(CGBitmapContextCreate(mask.coverage.data(), width, height, 8, width, nullptr,
        static_cast<std::uint32_t>(kCGImageAlphaOnly)));
    if (!context)
        return std::nullopt;
    // Smoothing is for text in a colour on a known background; here only coverage counts.
    CGContextSetShouldSmoothFonts(context.get(), false);
    CGContextTranslateCTM(context.get(), -drawing.left, -bottom);
    CGContextScaleCTM(context.get(), scale, scale);
    CGContextSetTextPosition(context.get(), 0.0, 0.0);
    CTLineDraw(line.get(), context.get());
    return drawing;
}

} // namespace amperly
