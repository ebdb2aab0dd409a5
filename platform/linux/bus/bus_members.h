// Members of objects as sd-bus calls them: its handlers are functions with a pointer, and these are the
// functions around a member. What a member takes and returns says what is read and written.
#pragma once

#include "platform/linux/bus/bus_message.h"

#include <functional>

namespace amperly {

template <typename Member>
struct OwnerOf;
template <typename Member, typename Owner>
struct OwnerOf<Member Owner::*> {
    using Type = Owner;
};

template <auto kMember>
auto& ownerAt(void* pointer)
{
    return *static_cast<typename OwnerOf<decltype(kMember)>::Type*>(pointer);
}

/// For SD_BUS_METHOD: a member that takes a BusReply& and then what the call has.
template <auto kMember>
int busMethod(sd_bus_message* call, void* self, sd_bus_error* error)
{
    const auto answer
        = [&]<typename Self, typename... Arguments>(void (Self::*member)(BusReply&, Arguments...)) {
              std::tuple<std::remove_cvref_t<Arguments>...> values;
              if (!BusReader(call).readAll(values))
                  return -EBADMSG;
              BusReply reply = BusReply::to(call);
              std::apply([&](auto&... value) { (ownerAt<kMember>(self).*member)(reply, value...); }, values);
              return reply.send(error);
          };
    return answer(kMember);
}

/// For SD_BUS_PROPERTY: a member that is the value, returns it or writes it to a BusWriter&.
template <auto kMember>
int busProperty(
    sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self, sd_bus_error*)
{
    BusWriter writer(reply);
    const auto& owner = std::as_const(ownerAt<kMember>(self));
    if constexpr (std::invocable<decltype(kMember), decltype(owner), BusWriter&>)
        std::invoke(kMember, owner, writer);
    else
        writer.write(std::invoke(kMember, owner));
    return writer.result();
}

/// For SD_BUS_PROPERTY: a value that every object has, a function that returns it or one that writes it
/// to a BusWriter&.
template <auto kValue>
int busConstant(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*)
{
    BusWriter writer(reply);
    if constexpr (std::invocable<decltype(kValue)>)
        writer.write(kValue());
    else
        writer.write(kValue);
    return writer.result();
}

/// For the answer to a call: a member that takes what the answer has, or nothing for an error or an
/// answer with anything else. One without arguments is only told that there is an answer.
template <auto kMember>
int busAnswer(sd_bus_message* answer, void* self, sd_bus_error*)
{
    using Owner = typename OwnerOf<decltype(kMember)>::Type;
    Owner& owner = ownerAt<kMember>(self);
    if constexpr (std::invocable<decltype(kMember), Owner&>) {
        (owner.*kMember)();
    } else {
        const auto give = [&]<typename Value>(void (Owner::*member)(std::optional<Value>)) {
            std::optional<Value> value(std::in_place);
            if (sd_bus_message_is_method_error(answer, nullptr) != 0 || !BusReader(answer).read(*value))
                value.reset();
            (owner.*member)(value);
        };
        give(kMember);
    }
    return 0;
}

/// For a signal: a member that takes what the signal begins with. Others' signals of the same name are
/// passed over.
template <auto kMember>
int busSignal(sd_bus_message* signal, void* self, sd_bus_error*)
{
    const auto give = [&]<typename Self, typename... Arguments>(void (Self::*member)(Arguments...)) {
        std::tuple<std::remove_cvref_t<Arguments>...> values;
        if (BusReader(signal).readAll(values))
            std::apply([&](auto&... value) { (ownerAt<kMember>(self).*member)(value...); }, values);
    };
    give(kMember);
    return 0;
}

} // namespace amperly
