#include "render/look/rounded_font.h"

#include "platform/macos/foundation/strings.h"

#import <AppKit/AppKit.h>

namespace amperly {

std::string roundedFontFamily()
{
    NSFontDescriptor* const plain = [NSFont systemFontOfSize:0.0].fontDescriptor;
    NSFontDescriptor* const rounded = [plain fontDescriptorWithDesign:NSFontDescriptorSystemDesignRounded];
    if (rounded == nil)
        return {};
    NSFont* const font = [NSFont fontWithDescriptor:rounded size:0.0];
    return font.familyName != nil ? stdString(font.familyName) : std::string();
}

} // namespace amperly
