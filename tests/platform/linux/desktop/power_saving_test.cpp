#include "platform/linux/desktop/power_saving.h"

#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(PowerSavingTest, TheLowPowerProfileSavesPower)
{
    const TemporaryFolder folder;
    folder.write("platform_profile", "low-power\n");
    EXPECT_TRUE(isSavingPower(folder / "platform_profile"));
}

TEST(PowerSavingTest, NoOtherProfileDoes)
{
    const TemporaryFolder folder;
    for (const char* const profile : {"balanced\n", "performance\n", "quiet\n", "", "low-power-er\n"}) {
        folder.write("platform_profile", profile);
        EXPECT_FALSE(isSavingPower(folder / "platform_profile")) << profile;
    }
}

TEST(PowerSavingTest, AMachineWithoutProfilesSavesNone)
{
    const TemporaryFolder folder;
    EXPECT_FALSE(isSavingPower(folder / "platform_profile"));
}

} // namespace
} // namespace amperly
