#include "platform/macos/power/io_object.h"

#include "platform/macos/foundation/cf_ref.h"

#include <string>

namespace amperly {

IoObject IoObject::firstService(std::string_view className)
{
    CfRef<CFMutableDictionaryRef> matching(IOServiceMatching(std::string(className).c_str()));
    if (!matching)
        return IoObject(IO_OBJECT_NULL);
    // The look-up consumes the dictionary, found or not.
    return IoObject(IOServiceGetMatchingService(kIOMainPortDefault, matching.release()));
}

} // namespace amperly
