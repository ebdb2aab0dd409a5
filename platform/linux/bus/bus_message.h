// D-Bus messages, written and read by the types of C++ values: int is i of the protocol, std::uint32_t
// u, bool b and text s; a vector is an array, a tuple a struct.
#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace amperly {

struct BusUnref {
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

/// A match, a pending call or an exported interface; its end takes it back.
using BusSlot = std::unique_ptr<sd_bus_slot, BusUnref>;

using BusMessage = std::unique_ptr<sd_bus_message, BusUnref>;

/// A value in a variant.
template <typename Value>
struct BusVariant {
    Value value{};
};

/// A value of whatever type that nobody needs.
struct BusIgnored { };

/// Those entries of an a{sv} whose values are of that type, which is no container.
template <typename Value>
struct BusEntries {
    std::vector<std::pair<std::string_view, Value>> entries;
};

/// Adds values to a message. Once one is refused, as text that is not UTF-8 is, nothing more is added.
class BusWriter {
public:
    explicit BusWriter(sd_bus_message* message) : m_message(message) { }

    /// Negative, and sd-bus's number for the reason, once something was refused.
    [[nodiscard]] int result() const { return m_result; }

    void write(int value) { writeBasic('i', &value); }
    void write(std::uint32_t value) { writeBasic('u', &value); }
    void write(bool value);
    void write(const char* value) { writeBasic('s', value); }
    void write(const std::string& value) { write(value.c_str()); }

    /// What writes itself.
    template <std::invocable<BusWriter&> Fill>
    void write(const Fill& fill)
    {
        fill(*this);
    }

    void write(const std::vector<int>& values);
    void writePath(const char* value) { writeBasic('o', value); }

    /// Containers: `fill` writes what is inside, which is of the types `contents`.
    void array(const char* contents, const auto& fill) { container('a', contents, fill); }
    void structure(const char* contents, const auto& fill) { container('r', contents, fill); }
    void variant(const char* contents, const auto& fill) { container('v', contents, fill); }

    /// An entry of an a{sv}; `fill` writes the variant.
    void entry(const char* key, const auto& fill)
    {
        container('e', "sv", [&] {
            write(key);
            fill();
        });
    }

    void variant(bool value);
    void variant(const char* value);
    void variant(const std::string& value) { variant(value.c_str()); }

    /// Room for so many bytes as an array, to be filled before anything else is written; empty once
    /// something was refused.
    [[nodiscard]] std::span<std::uint8_t> bytes(std::size_t size);

private:
    void writeBasic(char type, const void* value);
    void open(char type, const char* contents);
    void close();

    void container(char type, const char* contents, const auto& fill)
    {
        open(type, contents);
        fill();
        close();
    }

    sd_bus_message* m_message;
    int m_result = 0;
};

/// The answer to a call, as it is being written.
class BusReply : public BusWriter {
public:
    /// To `call`.
    [[nodiscard]] static BusReply to(sd_bus_message* call);

    /// Answers with an error, whatever was written. The text is not copied.
    void refuse(const char* why) { m_refusal = why; }

    /// What a handler of sd-bus returns: negative where `error` is the answer.
    int send(sd_bus_error* error);

private:
    explicit BusReply(BusMessage message) : BusWriter(message.get()), m_message(std::move(message)) { }

    BusMessage m_message;
    const char* m_refusal = nullptr;
};

/// Takes values from a message, one after the other. False where the next one is of another type. Text
/// lives as long as the message.
class BusReader {
public:
    explicit BusReader(sd_bus_message* message) : m_message(message) { }

    [[nodiscard]] bool read(int& value) { return readBasic('i', &value); }
    [[nodiscard]] bool read(std::uint32_t& value) { return readBasic('u', &value); }
    [[nodiscard]] bool read(bool& value);
    [[nodiscard]] bool read(std::string_view& value);
    [[nodiscard]] bool read(BusIgnored& value);

    template <typename Value>
    [[nodiscard]] bool read(BusVariant<Value>& variant)
    {
        return enter('v') && read(variant.value) && leave();
    }

    template <typename... Values>
    [[nodiscard]] bool read(std::tuple<Values...>& values)
    {
        return enter('r') && readAll(values) && leave();
    }

    template <typename Value>
    [[nodiscard]] bool read(std::vector<Value>& values)
    {
        if (!enter('a'))
            return false;
        while (hasMore()) {
            if (!read(values.emplace_back()))
                return false;
        }
        return leave();
    }

    template <typename Value>
    [[nodiscard]] bool read(BusEntries<Value>& dictionary)
    {
        if (!enter('a'))
            return false;
        while (hasMore()) {
            std::string_view key;
            Value value{};
            BusIgnored other;
            if (!enter('e') || !read(key) || !enter('v'))
                return false;
            if (read(value))
                dictionary.entries.emplace_back(key, value);
            else if (!read(other))
                return false;
            if (!leave() || !leave())
                return false;
        }
        return leave();
    }

    /// As many values as there are in `values`.
    template <typename... Values>
    [[nodiscard]] bool readAll(std::tuple<Values...>& values)
    {
        return std::apply([this](auto&... value) { return (read(value) && ...); }, values);
    }

private:
    [[nodiscard]] bool readBasic(char type, void* value);
    [[nodiscard]] bool enter(char type);
    [[nodiscard]] bool leave();
    [[nodiscard]] bool hasMore();

    sd_bus_message* m_message;
};

} // namespace amperly
