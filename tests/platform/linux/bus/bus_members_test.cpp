#include "platform/linux/bus/bus_connection.h"

#include "tests/support/private_bus.h"
#include "tests/support/run_until.h"

#include <gmock/gmock.h>

namespace amperly {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr const char* kName = "org.example.Bell";
constexpr const char* kPath = "/org/example/Bell";

/// An object with a member of each kind.
class Bell {
public:
    static const sd_bus_vtable kTable[];

    explicit Bell(BusConnection& connection) : m_object(connection.exportObject(kPath, kName, kTable, *this))
    {
    }

    std::string spoken = "ding";

private:
    using Numbered = std::tuple<int, BusIgnored>;

    [[nodiscard]] std::uint32_t size() const { return static_cast<std::uint32_t>(spoken.size()); }
    void letters(BusWriter& writer) const
    {
        writer.array("s", [&] {
            for (const char letter : spoken)
                writer.write(std::string(1, letter));
        });
    }

    void ring(BusReply& reply, std::string_view sound, bool loudly)
    {
        if (sound.empty())
            return reply.refuse("A bell has a sound");
        reply.write(std::string(sound) + (loudly ? "!" : "."));
    }
    void sum(BusReply& reply, const std::vector<Numbered>& pairs)
    {
        int total = 0;
        for (const auto& [number, rest] : pairs)
            total += number;
        reply.variant("i", [&] { reply.write(total); });
    }
    void spoil(BusReply& reply) { reply.write("\xff"); }

    BusSlot m_object;
};

int three()
{
    return 3;
}

const sd_bus_vtable Bell::kTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Spoken", "s", busProperty<&Bell::spoken>, 0, 0),
    SD_BUS_PROPERTY("Size", "u", busProperty<&Bell::size>, 0, 0),
    SD_BUS_PROPERTY("Letters", "as", busProperty<&Bell::letters>, 0, 0),
    SD_BUS_PROPERTY("Three", "i", busConstant<three>, 0, 0),
    SD_BUS_PROPERTY("True", "b", busConstant<true>, 0, 0),
    SD_BUS_METHOD("Ring", "sb", "s", busMethod<&Bell::ring>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Sum", "a(iv)", "v", busMethod<&Bell::sum>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Spoil", "", "s", busMethod<&Bell::spoil>, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

/// What is left of a value once its message is gone.
std::string kept(std::string_view text)
{
    return std::string(text);
}
std::vector<std::string> kept(const std::vector<std::string_view>& texts)
{
    return {texts.begin(), texts.end()};
}
template <typename Number>
requires std::is_arithmetic_v<Number> Number kept(Number number)
{
    return number;
}
template <typename Value>
auto kept(const BusVariant<Value>& variant)
{
    return kept(variant.value);
}
template <typename Value>
using Kept = decltype(kept(std::declval<Value>()));

/// Somebody who calls and listens.
template <typename Value>
struct Listener {
    void answered(std::optional<Value> given)
    {
        if (given)
            value = kept(*given);
        ++answers;
    }
    void arrived(Value given) { answered(given); }

    std::optional<Kept<Value>> value;
    int answers = 0;
};

class BusMembersTest : public testing::Test {
protected:
    BusMembersTest()
    {
        EXPECT_GE(sd_bus_request_name(serving->bus(), kName, 0), 0);
        serving->settle();
    }

    /// What comes back from the bell, read as a Value.
    template <typename Value, typename... Arguments>
    std::optional<Kept<Value>> ask(const char* interface, const char* member, const Arguments&... arguments)
    {
        Listener<Value> listener;
        const BusSlot call = calling->call<&Listener<Value>::answered>(
            {kName, kPath, interface, member}, listener, arguments...);
        EXPECT_TRUE(runUntil([&] { return listener.answers == 1; }));
        return listener.value;
    }

    template <typename Value>
    auto property(const char* name)
    {
        return ask<BusVariant<Value>>("org.freedesktop.DBus.Properties", "Get", kName, name);
    }

    /// Waits until whatever was asked of the bus is in force.
    void settle() { static_cast<void>(ask<std::string_view>("org.freedesktop.DBus.Peer", "GetMachineId")); }

    PrivateBus daemon;
    std::unique_ptr<BusConnection> serving = BusConnection::open(daemon.address());
    std::unique_ptr<BusConnection> calling = BusConnection::open(daemon.address());
    Bell bell{*serving};
};

TEST_F(BusMembersTest, MethodTakesWhatTheCallHasAndAnswers)
{
    EXPECT_EQ(ask<std::string_view>(kName, "Ring", "dong", true), "dong!");
    EXPECT_EQ(ask<std::string_view>(kName, "Ring", std::string("dong"), false), "dong.");
}

TEST_F(BusMembersTest, RefusalIsAnAnswerWithNothing)
{
    EXPECT_EQ(ask<std::string_view>(kName, "Ring", "", true), std::nullopt);
}

TEST_F(BusMembersTest, AnswerWithAnotherTypeIsNothing)
{
    EXPECT_EQ(ask<int>(kName, "Ring", "dong", true), std::nullopt);
}

TEST_F(BusMembersTest, CallThatNobodyTakesIsAnsweredWithNothing)
{
    EXPECT_EQ(ask<int>(kName, "Melt"), std::nullopt);
}

TEST_F(BusMembersTest, WhatTheBusRefusesIsAnErrorAndNotHalfAnAnswer)
{
    EXPECT_EQ(ask<std::string_view>(kName, "Spoil"), std::nullopt);
}

TEST_F(BusMembersTest, ContainersAreReadWithWhatNobodyNeedsPassedOver)
{
    const auto pairs = [](BusWriter& writer) {
        writer.array("(iv)", [&] {
            for (const int number : {3, 4}) {
                writer.structure("iv", [&] {
                    writer.write(number);
                    writer.variant("beside it");
                });
            }
        });
    };
    EXPECT_EQ(ask<BusVariant<int>>(kName, "Sum", pairs), 7);
}

TEST_F(BusMembersTest, PropertyIsAMemberWhatItReturnsOrWhatItWrites)
{
    EXPECT_EQ(property<std::string_view>("Spoken"), "ding");
    EXPECT_EQ(property<std::uint32_t>("Size"), 4U);
    EXPECT_EQ(
        property<std::vector<std::string_view>>("Letters"), (std::vector<std::string>{"d", "i", "n", "g"}));
    EXPECT_EQ(property<int>("Three"), 3);
    EXPECT_EQ(property<bool>("True"), true);
}

TEST_F(BusMembersTest, SignalWithOtherTypesIsPassedOver)
{
    Listener<int> listener;
    const BusSlot match = calling->match<&Listener<int>::arrived>(
        {.path = kPath, .interface = kName, .member = "Rang"}, listener);
    settle();
    serving->emitSignal(kPath, kName, "Rang", "seven");
    serving->emitSignal(kPath, kName, "Rang", 8, "and more");
    EXPECT_TRUE(runUntil([&] { return listener.answers > 0; }));
    EXPECT_EQ(listener.value, 8);
}

TEST_F(BusMembersTest, OnlySignalsWithTheWantedTextsArrive)
{
    struct Reader {
        void arrived(std::string_view, std::string_view, int number) { numbers.push_back(number); }
        std::vector<int> numbers;
    } reader;
    const BusSlot match = calling->match<&Reader::arrived>(
        {.member = "Rang", .firstArgument = "big", .secondArgument = "bell"}, reader);
    settle();
    serving->emitSignal(kPath, kName, "Rang", "big", "drum", 1);
    serving->emitSignal(kPath, kName, "Rang", "small", "bell", 2);
    serving->emitSignal(kPath, kName, "Rang", "big", "bell", 3);
    EXPECT_TRUE(runUntil([&] { return !reader.numbers.empty(); }));
    EXPECT_THAT(reader.numbers, ElementsAre(3));
}

TEST_F(BusMembersTest, EntriesOfOtherTypesArePassedOver)
{
    struct Reader {
        void arrived(const BusEntries<bool>& heard)
        {
            for (const auto& [key, value] : heard.entries)
                entries.emplace_back(key, value);
        }
        std::vector<std::pair<std::string, bool>> entries;
    } reader;
    const BusSlot match = calling->match<&Reader::arrived>({.member = "Rang"}, reader);
    settle();
    serving->emitSignal(kPath, kName, "Rang", [](BusWriter& writer) {
        writer.array("{sv}", [&] {
            writer.entry("loud", [&] { writer.variant(true); });
            writer.entry("sound", [&] { writer.variant("dong"); });
            writer.entry("broken", [&] { writer.variant(false); });
        });
    });
    EXPECT_TRUE(runUntil([&] { return !reader.entries.empty(); }));
    EXPECT_THAT(reader.entries, ElementsAre(Pair("loud", true), Pair("broken", false)));
}

} // namespace
} // namespace amperly
