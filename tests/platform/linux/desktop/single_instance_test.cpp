#include "platform/linux/desktop/single_instance.h"
#include "tests/support/private_bus.h"

#include <QCoreApplication>
#include <QThread>

#include <gtest/gtest.h>

namespace amperly {
namespace {

using Claim = SingleInstance::Claim;

const SingleInstance::Name kName{"org.example.Program", "/org/example/Program"};

class SingleInstanceTest : public testing::Test {
protected:
    PrivateBus bus;
    SingleInstance first{kName, bus.address()};
    int activations = 0;

    void SetUp() override
    {
        unsetenv("XDG_ACTIVATION_TOKEN");
        unsetenv("DESKTOP_STARTUP_ID");
        first.onActivated([this] { ++activations; });
    }

    /// Does what another process would while the first goes on with its events.
    static void elsewhere(std::function<void()> work)
    {
        const std::unique_ptr<QThread> thread(QThread::create(std::move(work)));
        QObject::connect(thread.get(), &QThread::finished, qApp, [] {});
        thread->start();
        while (!thread->isFinished())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        thread->wait();
        QCoreApplication::processEvents();
    }

    Claim claimOfAnother()
    {
        Claim claim = Claim::NoBus;
        elsewhere([&] { claim = SingleInstance(kName, bus.address()).claim(); });
        return claim;
    }

    /// Calls a method of the application's object; whether it was answered.
    bool call(const char* member, const char* types, auto... arguments)
    {
        bool answered = false;
        elsewhere([&] {
            const std::unique_ptr<BusConnection> connection = BusConnection::open(bus.address());
            answered = sd_bus_call_method(connection->bus(), kName.busName.c_str(), kName.objectPath.c_str(),
                           "org.freedesktop.Application", member, nullptr, nullptr, types, arguments...)
                >= 0;
        });
        return answered;
    }
};

TEST_F(SingleInstanceTest, TheFirstOneIsTheOne)
{
    EXPECT_EQ(first.claim(), Claim::Primary);
}

TEST_F(SingleInstanceTest, TheSecondHandsOverAndTheFirstComesForward)
{
    ASSERT_EQ(first.claim(), Claim::Primary);
    EXPECT_EQ(claimOfAnother(), Claim::HandedOver);
    EXPECT_EQ(activations, 1);
}

TEST_F(SingleInstanceTest, TheRightToComeForwardGoesAlong)
{
    ASSERT_EQ(first.claim(), Claim::Primary);
    const int answered = call(
        "Activate", "a{sv}", 2, "desktop-startup-id", "s", "launcher_7", "activation-token", "s", "token_9");
    EXPECT_TRUE(answered);
    EXPECT_EQ(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"), "token_9");
    EXPECT_EQ(qEnvironmentVariable("DESKTOP_STARTUP_ID"), "launcher_7");
}

TEST_F(SingleInstanceTest, WhatElseALauncherSaysIsPassedOver)
{
    ASSERT_EQ(first.claim(), Claim::Primary);
    EXPECT_TRUE(call("Activate", "a{sv}", 2, "monitor", "i", 3, "activation-token", "s", "token_9"));
    EXPECT_EQ(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"), "token_9");
    EXPECT_EQ(activations, 1);
}

TEST_F(SingleInstanceTest, OpeningAFileAndAnActionBringItForwardToo)
{
    ASSERT_EQ(first.claim(), Claim::Primary);
    EXPECT_TRUE(call("Open", "asa{sv}", 1, "file:///a", 0));
    EXPECT_TRUE(call("ActivateAction", "sava{sv}", "preferences", 1, "i", 4, 0));
    EXPECT_EQ(activations, 2);
}

TEST_F(SingleInstanceTest, AfterTheFirstHasEndedTheNextIsTheOne)
{
    {
        SingleInstance earlier(kName, bus.address());
        ASSERT_EQ(earlier.claim(), Claim::Primary);
    }
    EXPECT_EQ(first.claim(), Claim::Primary);
}

TEST(SingleInstanceAloneTest, WithoutABusNobodyKnows)
{
    SingleInstance alone(kName, "unix:path=/nonexistent/bus");
    EXPECT_EQ(alone.claim(), Claim::NoBus);
}

} // namespace
} // namespace amperly
