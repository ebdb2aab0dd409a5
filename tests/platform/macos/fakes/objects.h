// What the fake classes have in common.
#pragma once

#import <Foundation/Foundation.h>

#include "tests/platform/macos/fakes/fake_desktop.h"

namespace amperly::fake_mac {

/// What an object holds, by the class it is of.
template <typename Fields>
Fields& fields(NSObject* object)
{
    if (object->_fakeState == nullptr)
        object->_fakeState = new Fields();
    return *static_cast<Fields*>(object->_fakeState);
}

/// Writes down a misuse.
void fault(const std::string& what);

/// Sends an object a message with one argument, or with none of that value; a selector it does
/// not know is a fault.
void send(id target, SEL selector, id argument = nullptr);

[[nodiscard]] bool responds(id target, SEL selector);

[[nodiscard]] NSString* makeString(const std::string& text);
[[nodiscard]] std::string textOf(NSString* string);

/// A copy of a block, which lives until the program ends.
[[nodiscard]] const void* keptBlock(const void* block);

/// The object that a dictionary has for a key.
[[nodiscard]] id objectIn(NSDictionary* dictionary, NSString* key);

/// The characters of a string, one by one.
[[nodiscard]] std::u32string charactersOf(NSString* string);

/// Tells the observers of `name` at one of the centres.
void post(NSNotificationName name, NSNotificationCenter* center);

/// Forgets observers, timers, queued work and stored values.
void resetFoundation();

} // namespace amperly::fake_mac
