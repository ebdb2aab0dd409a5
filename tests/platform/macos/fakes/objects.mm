// The fake Objective-C objects: what all of them are, and strings.

#include "tests/platform/macos/fakes/objects.h"
#include "render/code_points.h"

#include <cstring>
#include <string_view>

// The classes do what is needed of them and nothing more.
#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wunused-parameter"

// The runtime's own functions, as libobjc has them.
extern "C" {
using Method = id (*)(id, SEL);
id class_createInstance(Class, size_t);
const char* class_getName(Class);
Class class_getSuperclass(Class);
const char* sel_getName(SEL);
SEL sel_registerName(const char*);
signed char class_respondsToSelector(Class, SEL);
Method class_getMethodImplementation(Class, SEL);
void* copyBlock(const void*) __asm__("_Block_copy");
}

using namespace amperly::fake_mac;

// The runtime keeps its table of classes for good.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libobjc.so";
}

namespace {

Class classOf(id object)
{
    return *reinterpret_cast<Class*>(reinterpret_cast<void*>(object));
}

/// Everything ever made, so that the leak checker finds it reachable.
std::vector<const void*>& everything()
{
    static auto& all = *new std::vector<const void*>; // outlives the leak checker's look at it
    return all;
}

std::string encoded(const char32_t* characters, std::size_t count)
{
    std::string text;
    for (const char32_t character : std::u32string_view(characters, count)) {
        const auto append = [&](char32_t bits, int shift) {
            text += static_cast<char>(bits | ((character >> shift) & 0x3fU));
        };
        if (character < 0x80) {
            text += static_cast<char>(character);
            continue;
        }
        if (character < 0x800) {
            text += static_cast<char>(0xc0U | (character >> 6));
        } else {
            if (character < 0x10000) {
                text += static_cast<char>(0xe0U | (character >> 12));
            } else {
                text += static_cast<char>(0xf0U | (character >> 18));
                append(0x80, 12);
            }
            append(0x80, 6);
        }
        append(0x80, 0);
    }
    return text;
}

} // namespace

@implementation NSObject

+ (void)initialize
{
}

+ (instancetype)alloc
{
    const id object = class_createInstance(self, 0);
    SEL const construct = sel_registerName(".cxx_construct");
    for (Class each = self; each != nil; each = class_getSuperclass(each)) {
        if (class_respondsToSelector(each, construct))
            class_getMethodImplementation(each, construct)(object, construct);
    }
    everything().push_back((__bridge const void*)object);
    return object;
}

+ (instancetype)new
{
    return [[self alloc] init];
}

+ (Class)class
{
    return self;
}

- (instancetype)init
{
    return self;
}

- (void)dealloc
{
}

- (id)retain
{
    return self;
}

- (void)release
{
}

- (id)autorelease
{
    return self;
}

- (id)copyWithZone:(void*)zone
{
    return self;
}

- (BOOL)isEqual:(id)object
{
    return object == self ? YES : NO;
}

- (NSUInteger)hash
{
    return reinterpret_cast<NSUInteger>(self);
}

- (BOOL)respondsToSelector:(SEL)selector
{
    return class_respondsToSelector(classOf(self), selector);
}

- (BOOL)isKindOfClass:(Class)classOfKind
{
    for (Class each = classOf(self); each != nil; each = class_getSuperclass(each)) {
        if (each == classOfKind)
            return YES;
    }
    return NO;
}

@end

// A string made at run time; its characters live in _fakeState.
@interface FakeString : NSString
@end

@implementation NSString

- (instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding
{
    if (encoding == NSUTF32LittleEndianStringEncoding)
        return makeString(encoded(static_cast<const char32_t*>(bytes), length / sizeof(char32_t)));
    if (encoding != NSUTF8StringEncoding)
        fault("a string of another encoding than the fake has");
    return makeString(std::string(static_cast<const char*>(bytes), length));
}

- (NSUInteger)length
{
    return std::strlen(self.UTF8String);
}

- (const char*)UTF8String
{
    return "";
}

- (BOOL)isEqualToString:(NSString*)string
{
    return textOf(self) == textOf(string) ? YES : NO;
}

- (BOOL)hasPrefix:(NSString*)string
{
    return textOf(self).starts_with(textOf(string)) ? YES : NO;
}

@end

@implementation FakeString

- (const char*)UTF8String
{
    return static_cast<const std::string*>(_fakeState)->c_str();
}

@end

@implementation NSConstantString

- (const char*)UTF8String
{
    return static_cast<const char*>(_fakeState);
}

@end

namespace amperly::fake_mac {

void fault(const std::string& what)
{
    stage().faults.push_back(what);
}

bool responds(id target, SEL selector)
{
    return class_respondsToSelector(classOf(target), selector);
}

void send(id target, SEL selector, id argument)
{
    if (target == nil || selector == nullptr)
        return;
    if (!responds(target, selector)) {
        fault(std::string(class_getName(classOf(target))) + " does not know " + sel_getName(selector));
        return;
    }
    using MethodOfOne = id (*)(id, SEL, id);
    reinterpret_cast<MethodOfOne>(reinterpret_cast<void*>(
        class_getMethodImplementation(classOf(target), selector)))(target, selector, argument);
}

NSString* makeString(const std::string& text)
{
    FakeString* const string = [FakeString new];
    string->_fakeState = new std::string(text);
    return string;
}

std::string textOf(NSString* string)
{
    const char* const characters = string.UTF8String;
    return characters == nullptr ? std::string() : std::string(characters);
}

std::u32string charactersOf(NSString* string)
{
    std::u32string characters;
    for (std::string_view rest = string.UTF8String; !rest.empty();)
        characters.push_back(takeCodePoint(rest));
    return characters;
}

const void* keptBlock(const void* block)
{
    const void* const copy = copyBlock(block);
    everything().push_back(copy);
    return copy;
}

} // namespace amperly::fake_mac
