#include "platform/linux/bus/bus_connection.h"

#include "tests/support/private_bus.h"
#include "tests/support/run_until.h"

#include <vector>

namespace amperly {
namespace {

class BusConnectionTest : public testing::Test {
protected:
    std::unique_ptr<BusConnection> join() { return BusConnection::open(daemon.address()); }

    /// Gives `connection` a name; whatever it sent before is with the bus by then.
    static void own(BusConnection& connection, const char* name)
    {
        ASSERT_GE(sd_bus_request_name(connection.bus(), name, 0), 0);
        connection.settle();
    }

    PrivateBus daemon;
};

TEST(BusConnectionWithoutBusTest, ThereIsNoConnection)
{
    EXPECT_EQ(BusConnection::open("unix:path=/nonexistent/bus"), nullptr);
}

TEST_F(BusConnectionTest, AnswerReachesTheCaller)
{
    const auto connection = join();
    bool answered = false;
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(
        connection->bus(), &slot, "org.freedesktop.DBus", "/", "org.freedesktop.DBus.Peer", "Ping",
        [](sd_bus_message* reply, void* flag, sd_bus_error*) {
            *static_cast<bool*>(flag) = sd_bus_message_is_method_error(reply, nullptr) == 0;
            return 0;
        },
        &answered, nullptr);
    const BusSlot pending(slot);
    connection->settle();
    EXPECT_TRUE(runUntil([&] { return answered; }));
}

TEST_F(BusConnectionTest, SignalReachesAnotherConnection)
{
    const auto sender = join();
    const auto receiver = join();
    int received = 0;
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(
        receiver->bus(), &slot, "type='signal',interface='org.example.Bell'",
        [](sd_bus_message*, void* count, sd_bus_error*) { return ++*static_cast<int*>(count), 0; }, nullptr,
        &received);
    const BusSlot match(slot);
    receiver->settle();
    own(*receiver, "org.example.Listening"); // the match is in force by now
    sender->emitSignal("/org/example", "org.example.Bell", "Rang");
    EXPECT_TRUE(runUntil([&] { return received == 1; }));
}

TEST_F(BusConnectionTest, SignalLargerThanTheSocketTakesIsSentInPieces)
{
    const auto sender = join();
    const auto receiver = join();
    std::size_t received = 0;
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(
        receiver->bus(), &slot, "type='signal',interface='org.example.Bell'",
        [](sd_bus_message* signal, void* size, sd_bus_error*) {
            const void* bytes = nullptr;
            return sd_bus_message_read_array(signal, 'y', &bytes, static_cast<std::size_t*>(size));
        },
        nullptr, &received);
    const BusSlot match(slot);
    receiver->settle();
    own(*receiver, "org.example.Listening");

    const std::vector<unsigned char> large(8 << 20, 7);
    sd_bus_message* message = nullptr;
    ASSERT_GE(
        sd_bus_message_new_signal(sender->bus(), &message, "/org/example", "org.example.Bell", "Rang"), 0);
    const BusMessage signal(message);
    sd_bus_message_append_array(message, 'y', large.data(), large.size());
    sd_bus_send(sender->bus(), message, nullptr);
    sender->settle();
    EXPECT_TRUE(runUntil([&] { return received == large.size(); }));
}

TEST_F(BusConnectionTest, CallThatNobodyAnswersComesBackAfterItsTimeLimit)
{
    const auto caller = join();
    const auto silent = join();
    own(*silent, "org.example.Silent");
    sd_bus_slot* swallowing = nullptr;
    sd_bus_add_filter(
        silent->bus(), &swallowing, [](sd_bus_message*, void*, sd_bus_error*) { return 1; }, nullptr);
    const BusSlot filter(swallowing);

    bool failed = false;
    sd_bus_message* message = nullptr;
    sd_bus_message_new_method_call(
        caller->bus(), &message, "org.example.Silent", "/", "org.example.Silent", "Answer");
    const BusMessage call(message);
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(
        caller->bus(), &slot, message,
        [](sd_bus_message* reply, void* flag, sd_bus_error*) {
            *static_cast<bool*>(flag) = sd_bus_message_is_method_error(reply, nullptr) > 0;
            return 0;
        },
        &failed, 20'000);
    const BusSlot pending(slot);
    caller->settle();
    EXPECT_TRUE(runUntil([&] { return failed; }));
}

TEST_F(BusConnectionTest, EndOfTheBusIsToldOnceAndTheHandlerMayDestroyTheConnection)
{
    auto connection = join();
    own(*connection, "org.example.Owner");
    int told = 0;
    connection->onClosed([&] {
        ++told;
        connection.reset();
    });
    daemon.end();
    EXPECT_TRUE(runUntil([&] { return told == 1; }));
    EXPECT_EQ(connection, nullptr);
}

TEST_F(BusConnectionTest, SendingToABusThatIsGoneDoesNothing)
{
    const auto connection = join();
    own(*connection, "org.example.Owner");
    daemon.end();
    ASSERT_TRUE(runUntil([&] { return !connection->isOpen(); }));
    connection->emitSignal("/org/example", "org.example.Bell", "Rang");
    connection->settle();
}

} // namespace
} // namespace amperly
