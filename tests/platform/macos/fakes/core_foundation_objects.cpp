#include "tests/platform/macos/fakes/core_foundation_objects.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace amperly::fake_mac {
namespace {

enum Kind : CFTypeID {
    KindString = 7,
    KindDictionary = 18,
    KindArray,
    KindData,
    KindBoolean,
    KindNumber,
    KindOpaque
};

enum class Lifetime { Counted, Forever };

struct Object {
    explicit Object(Kind kindOfObject, Lifetime lifetimeOfObject = Lifetime::Counted)
        : kind(kindOfObject), lifetime(lifetimeOfObject)
    {
    }
    Kind kind;
    Lifetime lifetime;
    long references = 1;
    bool isFloat = false;
    std::int64_t integer = 0;
    double real = 0.0;
    std::string text;
    Data data;
    std::vector<std::pair<Object*, Object*>> entries;
    std::vector<Object*> elements;
    std::any opaque;
};

std::set<Object*> live;
std::set<Object*> dead; // kept until the reset, so that misuse is seen instead of undefined
std::map<std::string, Object*> constants;
int made = 0;

Object& booleanObject(bool value)
{
    static Object objects[]
        = {Object(KindBoolean, Lifetime::Forever), Object(KindBoolean, Lifetime::Forever)};
    return objects[value ? 1 : 0];
}

bool isConstant(const Object* object)
{
    return object == &booleanObject(true) || object == &booleanObject(false)
        || std::any_of(
            constants.begin(), constants.end(), [&](const auto& each) { return each.second == object; });
}

/// The object behind a reference, or null with a note of what is wrong with it.
Object* checked(CFTypeRef reference, const char* who)
{
    auto* const object = const_cast<Object*>(static_cast<const Object*>(reference));
    if (object == nullptr) {
        violation(std::string(who) + ": NULL, which crashes");
        return nullptr;
    }
    if (live.contains(object) || isConstant(object))
        return object;
    violation(std::string(who) + (dead.contains(object) ? ": released before" : ": no object"));
    return nullptr;
}

Object* checked(CFTypeRef reference, Kind kind, const char* who)
{
    Object* const object = checked(reference, who);
    if (object != nullptr && object->kind != kind) {
        violation(std::string(who) + ": object of another type");
        return nullptr;
    }
    return object;
}

Object* make(Kind kind)
{
    auto* const object = new Object(kind);
    live.insert(object);
    ++made;
    return object;
}

void dropReference(Object* object)
{
    if (dead.contains(object)) {
        violation("a value was released by somebody who only borrowed it");
        return;
    }
    if (object->lifetime == Lifetime::Forever || --object->references > 0)
        return;
    for (const auto& [key, value] : object->entries) {
        dropReference(key);
        dropReference(value);
    }
    for (Object* const element : object->elements)
        dropReference(element);
    live.erase(object);
    dead.insert(object);
}

struct Builder {
    Object* operator()(std::int64_t number) const
    {
        Object* const object = make(KindNumber);
        object->integer = number;
        object->real = static_cast<double>(number);
        return object;
    }
    Object* operator()(double number) const
    {
        Object* const object = make(KindNumber);
        object->integer = static_cast<std::int64_t>(number);
        object->real = number;
        object->isFloat = true;
        return object;
    }
    Object* operator()(bool value) const { return &booleanObject(value); }
    Object* operator()(const std::string& text) const
    {
        Object* const object = make(KindString);
        object->text = text;
        return object;
    }
    Object* operator()(const Data& data) const
    {
        Object* const object = make(KindData);
        object->data = data;
        return object;
    }
    Object* operator()(const Dictionary& dictionary) const
    {
        Object* const object = make(KindDictionary);
        for (const auto& [key, value] : dictionary) {
            const bool numbered = machine().dictionaryKeysAreNumbers;
            object->entries.emplace_back(
                numbered ? (*this)(std::int64_t{7}) : (*this)(key), std::visit(*this, value.content));
        }
        return object;
    }
    Object* operator()(const Array& array) const
    {
        Object* const object = make(KindArray);
        for (const Value& value : array)
            object->elements.push_back(std::visit(*this, value.content));
        return object;
    }
};

} // namespace

std::optional<BridgedNumber> (*bridgedNumber)(CFTypeRef object) = nullptr;

CFTypeRef makeObject(const Value& value)
{
    return std::visit(Builder{}, value.content);
}

CFTypeRef makeOpaque(std::any content)
{
    Object* const object = make(KindOpaque);
    object->opaque = std::move(content);
    return object;
}

std::any& opaqueContent(CFTypeRef reference)
{
    static std::any none;
    Object* const object = checked(reference, KindOpaque, "using an object");
    return object == nullptr ? none : object->opaque;
}

int liveObjects()
{
    return static_cast<int>(live.size());
}

int objectsMade()
{
    return made;
}

void resetObjects()
{
    for (const Object* const object : live)
        delete object;
    for (const Object* const object : dead)
        delete object;
    live.clear();
    dead.clear();
    made = 0;
}

std::string matchingClass(CFTypeRef dictionary)
{
    const Object* const object = checked(dictionary, KindDictionary, "IOServiceGetMatchingService");
    if (object == nullptr)
        return {};
    for (const auto& [key, value] : object->entries) {
        if (key->text == "IOProviderClass")
            return value->text;
    }
    return {};
}

std::string textOf(CFStringRef string)
{
    const Object* const object = checked(string, KindString, "reading a string");
    return object == nullptr ? std::string() : object->text;
}

} // namespace amperly::fake_mac

using namespace amperly::fake_mac;

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;

CFTypeID CFStringGetTypeID(void)
{
    return KindString;
}
CFTypeID CFNumberGetTypeID(void)
{
    return KindNumber;
}
CFTypeID CFBooleanGetTypeID(void)
{
    return KindBoolean;
}
CFTypeID CFDictionaryGetTypeID(void)
{
    return KindDictionary;
}

CFTypeID CFGetTypeID(CFTypeRef reference)
{
    if (bridgedNumber != nullptr) {
        if (const std::optional<BridgedNumber> number = bridgedNumber(reference))
            return number->isBoolean ? KindBoolean : KindNumber;
    }
    const Object* const object = checked(reference, "CFGetTypeID");
    return object == nullptr ? CFTypeID{0} : CFTypeID{object->kind};
}

void CFRelease(CFTypeRef reference)
{
    if (Object* const object = checked(reference, "CFRelease"))
        dropReference(object);
}

CFStringRef __CFStringMakeConstantString(const char* text)
{
    Object*& constant = constants[text];
    if (constant == nullptr) {
        constant = new Object(KindString, Lifetime::Forever);
        constant->text = text;
    }
    return reinterpret_cast<CFStringRef>(constant);
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding)
{
    if (encoding != kCFStringEncodingUTF8)
        violation("CFStringCreateWithCString: an encoding that is not UTF-8");
    if (allocationFails())
        return nullptr;
    return static_cast<CFStringRef>(makeObject(std::string(text)));
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding)
{
    if (encoding != kCFStringEncodingUTF8)
        violation("CFStringGetCString: an encoding that is not UTF-8");
    const Object* const object = checked(string, KindString, "CFStringGetCString");
    if (object == nullptr || size <= static_cast<CFIndex>(object->text.size()))
        return 0;
    std::memcpy(buffer, object->text.c_str(), object->text.size() + 1);
    return 1;
}

Boolean CFNumberIsFloatType(CFNumberRef number)
{
    if (bridgedNumber != nullptr) {
        if (const std::optional<BridgedNumber> bridged = bridgedNumber(number))
            return bridged->isFloat ? 1 : 0;
    }
    const Object* const object = checked(number, KindNumber, "CFNumberIsFloatType");
    return object != nullptr && object->isFloat ? 1 : 0;
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value)
{
    const Object* const object = checked(number, KindNumber, "CFNumberGetValue");
    if (object == nullptr)
        return 0;
    switch (type) { // the answer says whether the number came through whole
    case kCFNumberSInt32Type: {
        const auto narrow = static_cast<std::int32_t>(object->integer);
        std::memcpy(value, &narrow, sizeof narrow);
        return object->real == static_cast<double>(narrow) ? 1 : 0;
    }
    case kCFNumberSInt64Type:
        std::memcpy(value, &object->integer, sizeof object->integer);
        return !object->isFloat || object->real == static_cast<double>(object->integer) ? 1 : 0;
    case kCFNumberFloat64Type:
        std::memcpy(value, &object->real, sizeof object->real);
        return 1;
    default:
        violation("CFNumberGetValue: a type that is not faked");
        return 0;
    }
}

Boolean CFBooleanGetValue(CFBooleanRef boolean)
{
    return checked(boolean, KindBoolean, "CFBooleanGetValue") == &booleanObject(true) ? 1 : 0;
}

void CFDictionaryApplyFunction(CFDictionaryRef dictionary, CFDictionaryApplierFunction applier, void* context)
{
    const Object* const object = checked(dictionary, KindDictionary, "CFDictionaryApplyFunction");
    if (object == nullptr)
        return;
    for (const auto& [key, value] : object->entries)
        applier(key, value, context);
}

} // extern "C"
