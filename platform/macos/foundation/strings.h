// Text on its way into Foundation and back.
#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace amperly {

/// `text` is UTF-8; what is not comes out empty.
inline NSString* nsString(std::string_view text)
{
    NSString* const string = [[NSString alloc] initWithBytes:text.data()
                                                      length:text.size()
                                                    encoding:NSUTF8StringEncoding];
    return string != nil ? string : @"";
}

inline std::string stdString(NSString* string)
{
    const char* const characters = string.UTF8String;
    return characters != nullptr ? std::string(characters) : std::string();
}

} // namespace amperly
