// A machine for one test. What the test leaves held, or does wrong, fails it.
#pragma once

#include "tests/platform/macos/fakes/fake_machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace amperly {

class FakeMachineTest : public testing::Test {
protected:
    FakeMachineTest() { fake_mac::resetMachine(); }

    void TearDown() override
    {
        const fake_mac::Audit audit = fake_mac::audit();
        EXPECT_EQ(audit.coreFoundationObjects, 0);
        EXPECT_EQ(audit.kernelObjects, 0);
        EXPECT_EQ(audit.connections, 0);
        EXPECT_THAT(audit.violations, testing::IsEmpty());
        fake_mac::resetMachine();
    }

    /// Gives the machine a service of this class.
    static fake_mac::Dictionary& addService(const std::string& className)
    {
        return fake_mac::machine().services[className];
    }

    /// Objects that are held now, connections aside.
    static int held()
    {
        const fake_mac::Audit audit = fake_mac::audit();
        return audit.coreFoundationObjects + audit.kernelObjects;
    }
};

} // namespace amperly
