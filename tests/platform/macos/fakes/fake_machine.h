// A Mac's kernel on Linux: what a test puts into its registry and its controller, and what it
// asks afterwards about the objects that were handed out.
//
// Below it stand IOKit and CoreFoundation as far as Amperly calls them, with the true C
// signatures. They count every object, keep what was released as a tombstone and write down
// each misuse. They are a belief about the real frameworks, kept by hand.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/IOKitLib.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace amperly::fake_mac {

struct Value;
using Dictionary = std::map<std::string, Value>;
using Array = std::vector<Value>;
using Data = std::vector<std::uint8_t>;

/// What a property can hold.
struct Value {
    std::variant<std::int64_t, double, bool, std::string, Data, Dictionary, Array> content;

    Value() = default;
    template <typename Content>
    Value(Content value) : content(std::move(value))
    {
    }
    Value(int number) : content(std::int64_t{number}) { }
    Value(const char* text) : content(std::string(text)) { }
};

/// A key of the controller.
struct SmcKey {
    std::uint32_t type = 0;
    Data bytes{};
    std::uint8_t result = 0; ///< the driver's answer; other than 0 is a refusal
};

struct Machine {
    std::map<std::string, Dictionary> services; ///< properties by class name
    std::map<std::uint32_t, SmcKey> smcKeys;

    kern_return_t openResult = kIOReturnSuccess;
    kern_return_t callResult = kIOReturnSuccess;
    std::uint32_t onlyClientType = 0; ///< the driver refuses clients of any other
    int allocationsUntilFailure = -1; ///< 0 lets the next one fail, once; negative lets none fail
    bool dictionaryKeysAreNumbers = false; ///< for the dictionaries copied from now on

    std::vector<io_connect_t> closed; ///< what IOServiceClose was asked to close; nothing is no misuse
    std::vector<Data> requests; ///< every struct call's bytes, as they were sent
};

[[nodiscard]] Machine& machine();

/// What is still held, and what was done that crashes or leaks on a Mac.
struct Audit {
    int coreFoundationObjects = 0;
    int kernelObjects = 0;
    int connections = 0;
    std::vector<std::string> violations;
};

[[nodiscard]] Audit audit();

/// How many objects have been handed out since the start of the test.
[[nodiscard]] int objectsHandedOut();

/// A machine without services, nothing handed out.
void resetMachine();

/// A CoreFoundation object as the frameworks make it, one reference owned by the caller.
[[nodiscard]] CFTypeRef makeObject(const Value& value);

} // namespace amperly::fake_mac
