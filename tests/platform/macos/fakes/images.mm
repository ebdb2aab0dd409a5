// The fake AppKit's images, bitmaps and symbols. A symbol is a block that fills its box, twice as
// wide as its points are many and as high; a heavier one is a point wider.

#include "tests/platform/macos/fakes/images.h"

#include <cmath>

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-property-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wunused-parameter"

using namespace amperly::fake_mac;

namespace {

struct BitmapFields {
    NSSize size{};
    NSInteger pixelsWide = 0;
    NSInteger pixelsHigh = 0;
    std::vector<unsigned char> bytes;
};

struct ConfigurationFields {
    double pointSize = 0.0;
    double weight = 0.0;
};

struct ContextFields {
    NSBitmapImageRep* bitmap = nil;
};

NSGraphicsContext* currentContext;
std::vector<NSGraphicsContext*> savedContexts;

} // namespace

const NSColorSpaceName NSDeviceRGBColorSpace = @"NSDeviceRGBColorSpace";

@implementation NSImageRep

- (NSSize)size
{
    return fields<BitmapFields>(self).size;
}

- (void)setSize:(NSSize)size
{
    fields<BitmapFields>(self).size = size;
}

- (NSInteger)pixelsWide
{
    return fields<BitmapFields>(self).pixelsWide;
}

- (NSInteger)pixelsHigh
{
    return fields<BitmapFields>(self).pixelsHigh;
}

@end

@implementation NSBitmapImageRep

- (instancetype)initWithBitmapDataPlanes:(unsigned char**)planes
                              pixelsWide:(NSInteger)width
                              pixelsHigh:(NSInteger)height
                           bitsPerSample:(NSInteger)bitsPerSample
                         samplesPerPixel:(NSInteger)samplesPerPixel
                                hasAlpha:(BOOL)hasAlpha
                                isPlanar:(BOOL)isPlanar
                          colorSpaceName:(NSColorSpaceName)colorSpaceName
                             bytesPerRow:(NSInteger)bytesPerRow
                            bitsPerPixel:(NSInteger)bitsPerPixel
{
    if (planes != nullptr || bitsPerSample != 8 || samplesPerPixel != 4 || !hasAlpha || isPlanar
        || bytesPerRow != 0 || bitsPerPixel != 0 || width < 1 || height < 1)
        fault("a bitmap of another kind than the fake has");
    BitmapFields& bitmap = fields<BitmapFields>(self);
    bitmap.pixelsWide = width;
    bitmap.pixelsHigh = height;
    bitmap.bytes.resize(static_cast<size_t>(self.bytesPerRow * height), 0x55); // what was there before
    return self;
}

- (unsigned char*)bitmapData
{
    return fields<BitmapFields>(self).bytes.data();
}

- (NSInteger)bytesPerRow
{
    return (self.pixelsWide * 4 + 63) / 64 * 64; // rows are padded, as the real ones are
}

@end

@implementation NSImageSymbolConfiguration

+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight
{
    NSImageSymbolConfiguration* const configuration = [NSImageSymbolConfiguration new];
    fields<ConfigurationFields>(configuration) = {.pointSize = pointSize, .weight = weight};
    return configuration;
}

@end

@implementation NSImage

+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description
{
    if (!stage().system.symbols.contains(textOf(name)))
        return nil;
    NSImage* const image = [NSImage new];
    fields<ImageFields>(image).isSymbol = true;
    return image;
}

- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration
{
    const ConfigurationFields& style = fields<ConfigurationFields>(configuration);
    NSImage* const image = [NSImage new];
    fields<ImageFields>(image).isSymbol = true;
    fields<ImageFields>(image).size
        = NSMakeSize(2.0 * style.pointSize + (style.weight > 0.0 ? 1.0 : 0.0), style.pointSize);
    ++stage().system.symbolsMade;
    return image;
}

- (instancetype)initWithSize:(NSSize)size
{
    fields<ImageFields>(self).size = size;
    return self;
}

- (NSSize)size
{
    return fields<ImageFields>(self).size;
}

- (void)addRepresentation:(NSImageRep*)representation
{
    if (representation.size.width != self.size.width || representation.size.height != self.size.height)
        fault("a representation that is not as large as its image, in points");
    fields<ImageFields>(self).representations.push_back(static_cast<NSBitmapImageRep*>(representation));
}

- (void)setTemplate:(BOOL)isTemplate
{
    fields<ImageFields>(self).isTemplate = isTemplate;
}

- (BOOL)isTemplate
{
    return fields<ImageFields>(self).isTemplate;
}

- (void)drawInRect:(NSRect)rect
{
    NSBitmapImageRep* const bitmap
        = currentContext == nil ? nil : fields<ContextFields>(currentContext).bitmap;
    if (bitmap == nil || !fields<ImageFields>(self).isSymbol) {
        fault("drawing without a context, or something else than a symbol");
        return;
    }
    const auto pixel = [](double position) { return static_cast<NSInteger>(std::lround(position)); };
    for (NSInteger y = pixel(rect.origin.y); y < pixel(rect.origin.y + rect.size.height); ++y) {
        for (NSInteger x = pixel(rect.origin.x); x < pixel(rect.origin.x + rect.size.width); ++x) {
            if (x < 0 || y < 0 || x >= bitmap.pixelsWide || y >= bitmap.pixelsHigh)
                fault("a symbol outside of its bitmap");
            else
                bitmap.bitmapData[(bitmap.pixelsHigh - 1 - y) * bitmap.bytesPerRow + x * 4 + 3] = 255;
        }
    }
}

@end

@implementation NSGraphicsContext

+ (NSGraphicsContext*)graphicsContextWithBitmapImageRep:(NSBitmapImageRep*)bitmap
{
    NSGraphicsContext* const context = [NSGraphicsContext new];
    fields<ContextFields>(context).bitmap = bitmap;
    return context;
}

+ (NSGraphicsContext*)currentContext
{
    return currentContext;
}

+ (void)setCurrentContext:(NSGraphicsContext*)context
{
    currentContext = context;
}

+ (void)saveGraphicsState
{
    savedContexts.push_back(currentContext);
}

+ (void)restoreGraphicsState
{
    if (savedContexts.empty()) {
        fault("restoring a state that was not saved");
        return;
    }
    currentContext = savedContexts.back();
    savedContexts.pop_back();
}

@end
