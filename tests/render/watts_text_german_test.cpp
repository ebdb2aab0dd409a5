// The same texts on a German desktop, in a program of its own: the locale is chosen once.
#include "render/status_renderer.h"
#include "tests/support/number_environment.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

const NumberEnvironment kGerman{"de_DE.UTF-8@euro"};

TEST(GermanWattsTest, NumbersFollowTheUser)
{
    EXPECT_EQ(StatusRenderer::watts(1234.5, 1), "1.234,5 W");
    EXPECT_EQ(StatusRenderer::watts(1234.5, 0), "1.234 W");
    EXPECT_EQ(StatusRenderer::watts(-4.0, 1, true, true), "\u22124,0 W");
}

TEST(GermanWattsTest, WordsStayEnglish)
{
    const PowerSample sample{.systemLoad = 14.2, .battery = -14.2, .batteryPercent = 55};
    EXPECT_EQ(StatusRenderer::accessibilityText(sample), "Mac using 14,2 W, Battery draining: 14,2 W (55%)");
}

} // namespace
} // namespace amperly
