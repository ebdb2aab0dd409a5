// The fake CoreText and what CoreGraphics it needs: every character is a block, as high as a digit
// of the real font and nearly as wide as its advance, drawn where the context's transform puts it.

#import <AppKit/AppKit.h>
#include <CoreText/CoreText.h>

#include "tests/platform/macos/fakes/core_foundation_objects.h"
#include "tests/platform/macos/fakes/objects.h"

#include <cmath>
#include <cstring>

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wunused-parameter"

using namespace amperly::fake_mac;

namespace {

// Ems of the block that stands for a character.
constexpr double kAdvance = 0.6;
constexpr double kBearing = 0.05;
constexpr double kWidth = 0.5;
constexpr double kHeight = 0.7;
constexpr double kWidthOfOne = 0.3; // the one character that is narrower

struct Font {
    double size = 0.0;
    double weight = 0.0;
};

struct Text {
    char32_t character = 0;
    Font font;
};

struct Context {
    unsigned char* data = nullptr;
    int width = 0;
    int height = 0;
    double scale = 1.0;
    double x = 0.0;
    double y = 0.0;
    bool smooths = true;
};

Text& textOf(CTLineRef line)
{
    return payload<Text>(line);
}

Context& contextOf(CGContextRef context)
{
    return payload<Context>(context);
}

} // namespace

extern const NSFontWeight NSFontWeightRegular = 0.0;
extern const NSFontWeight NSFontWeightMedium = 0.23;
const NSAttributedStringKey NSFontAttributeName = @"NSFont";

const NSFontDescriptorSystemDesign NSFontDescriptorSystemDesignRounded = @"NSCTFontUIFontDesignRounded";

@implementation NSFontDescriptor

- (NSFontDescriptor*)fontDescriptorWithDesign:(NSFontDescriptorSystemDesign)design
{
    return stage().system.roundedFamily.empty() ? nil : [NSFontDescriptor new];
}

@end

@implementation NSFont

+ (NSFont*)systemFontOfSize:(CGFloat)size
{
    return [self monospacedDigitSystemFontOfSize:size weight:NSFontWeightRegular];
}

+ (NSFont*)fontWithDescriptor:(NSFontDescriptor*)descriptor size:(CGFloat)size
{
    return [self systemFontOfSize:size];
}

- (NSFontDescriptor*)fontDescriptor
{
    return [NSFontDescriptor new];
}

- (NSString*)familyName
{
    return makeString(stage().system.roundedFamily);
}

+ (NSFont*)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight
{
    NSFont* const font = [NSFont new];
    font->_fakeState = new Font{size, weight};
    return font;
}

@end

@implementation NSAttributedString

- (instancetype)initWithString:(NSString*)string attributes:(NSDictionary*)attributes
{
    const id font = objectIn(attributes, NSFontAttributeName);
    if (font == nil) {
        fault("text without a font");
        return self;
    }
    auto* const text = new Text{0, *static_cast<const Font*>(static_cast<NSFont*>(font)->_fakeState)};
    const std::u32string characters = charactersOf(string);
    text->character = characters.empty() ? U'\0' : characters.front();
    _fakeState = text;
    return self;
}

@end

extern "C" {

CTLineRef CTLineCreateWithAttributedString(CFAttributedStringRef text)
{
    const auto* const string = (__bridge NSAttributedString*)text;
    return static_cast<CTLineRef>(makePayload(*static_cast<const Text*>(string->_fakeState)));
}

double CTLineGetTypographicBounds(CTLineRef line, CGFloat*, CGFloat*, CGFloat*)
{
    return textOf(line).font.size * kAdvance;
}

CGRect CTLineGetBoundsWithOptions(CTLineRef line, CTLineBoundsOptions options)
{
    if (options != kCTLineBoundsUseGlyphPathBounds)
        fault("bounds that are not those of the ink");
    const Text& text = textOf(line);
    const double size = text.font.size;
    if (text.character == U' ')
        return CGRect{{0.0, 0.0}, {0.0, 0.0}};
    return CGRect{
        {size * kBearing, 0.0}, {size * (text.character == U'1' ? kWidthOfOne : kWidth), size * kHeight}};
}

void CTLineDraw(CTLineRef line, CGContextRef reference)
{
    const Context& context = contextOf(reference);
    if (context.smooths)
        fault("smoothed text in a mask");
    const CGRect ink = CTLineGetBoundsWithOptions(line, kCTLineBoundsUseGlyphPathBounds);
    const auto pixel = [](double position) { return static_cast<int>(std::lround(position)); };
    const int left = pixel(context.x + ink.origin.x * context.scale);
    const int right = pixel(context.x + (ink.origin.x + ink.size.width) * context.scale);
    const int bottom = pixel(context.y + ink.origin.y * context.scale);
    const int top = pixel(context.y + (ink.origin.y + ink.size.height) * context.scale);
    for (int y = bottom; y < top; ++y) {
        for (int x = left; x < right; ++x) {
            if (x < 0 || y < 0 || x >= context.width || y >= context.height)
                fault("ink outside of its mask");
            else
                context.data[(context.height - 1 - y) * context.width + x] = 255;
        }
    }
}

CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
    size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo)
{
    if (bitsPerComponent != 8 || bytesPerRow != width || space != nullptr || bitmapInfo != kCGImageAlphaOnly)
        fault("a bitmap context of another kind than the fake has");
    if (allocationFails())
        return nullptr;
    Context context;
    context.data = static_cast<unsigned char*>(data);
    context.width = static_cast<int>(width);
    context.height = static_cast<int>(height);
    return static_cast<CGContextRef>(const_cast<void*>(makePayload(context)));
}

void CGContextSetShouldSmoothFonts(CGContextRef context, bool smooths)
{
    contextOf(context).smooths = smooths;
}

void CGContextTranslateCTM(CGContextRef context, CGFloat x, CGFloat y)
{
    contextOf(context).x += x * contextOf(context).scale;
    contextOf(context).y += y * contextOf(context).scale;
}

void CGContextScaleCTM(CGContextRef context, CGFloat x, CGFloat y)
{
    if (x != y)
        fault("text that is squeezed");
    contextOf(context).scale *= x;
}

void CGContextSetTextPosition(CGContextRef, CGFloat x, CGFloat y)
{
    if (x != 0.0 || y != 0.0)
        fault("text that is not at the origin");
}

} // extern "C"
