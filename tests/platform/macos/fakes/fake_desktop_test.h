// A desktop for one test. What the program does wrong to it, or leaves behind, fails the test.
#pragma once

#include "tests/platform/macos/fakes/fake_desktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace amperly {

class FakeDesktopTest : public testing::Test {
protected:
    FakeDesktopTest() { fake_mac::resetStage(); }

    void TearDown() override
    {
        EXPECT_EQ(stage.item.count, 0);
        EXPECT_EQ(stage.timers, 0);
        EXPECT_EQ(stage.displayLinks, 0);
        EXPECT_EQ(stage.observers, 0);
        EXPECT_EQ(stage.autoreleasePools, 0);
        EXPECT_THAT(stage.faults, testing::IsEmpty());
    }

    fake_mac::Stage& stage = fake_mac::stage();
};

} // namespace amperly
