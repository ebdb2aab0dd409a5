// A frame is drawn sixty times a second while the panel is open, so it may not lean on the heap.
#include "tests/flow/glass/curves.h"
#include "tests/support/allocation_count.h"

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

class GlassCanvasCostTest : public testing::TestWithParam<double> {
protected:
    /// Allocations of one frame.
    long allocations(const std::vector<Flow>& flows)
    {
        const AllocationCount count;
        canvas.begin(picture.target(), GetParam());
        for (const Flow& flow : flows)
            drawGlassFlow(canvas, flow.curve, flow.color, flow.width, flow.travelled);
        canvas.finish();
        return count.value();
    }

    GlassCanvas canvas;
    GlassPicture picture{static_cast<int>(308 * GetParam()), static_cast<int>(200 * GetParam())};
};

TEST_P(GlassCanvasCostTest, ACurveInAnotherPlaceIsNoticedByTheCount)
{
    EXPECT_GT(allocations(diagramFlows(16.0, 0.0)), 0);
    EXPECT_GT(allocations({{line({10.0, 10.0}, {200.0, 60.0})}}), 0);
}

TEST_P(GlassCanvasCostTest, AFrameAllocatesNothingWhilePulsesTravelAndWidthsChange)
{
    // Until every tube has been as wide and has had as many glints as it can.
    for (double travelled = 0.0; travelled < 84.0; travelled += 2.0)
        allocations(diagramFlows(23.0, travelled));
    for (int frame = 0; frame < 100; ++frame) {
        std::vector<Flow> flows = diagramFlows(9.0 + 0.14 * frame, 1.7 * frame);
        flows[1].width = 23.0 - 0.14 * frame;
        EXPECT_EQ(allocations(flows), 0) << frame;
    }
}

TEST_P(GlassCanvasCostTest, AFrameAllocatesNothingWhileFlowsComeAndGo)
{
    for (double travelled = 0.0; travelled < 84.0; travelled += 2.0)
        allocations(diagramFlows(16.0, travelled));
    for (std::size_t present = 0; present < 8; ++present) {
        std::vector<Flow> flows;
        for (std::size_t i = 0; i < 3; ++i) {
            if ((present >> i & 1U) != 0)
                flows.push_back(diagramFlows(16.0, 5.0)[i]);
        }
        allocations(flows); // another tube takes the place of the one before
        EXPECT_EQ(allocations(flows), 0) << present;
    }
}

INSTANTIATE_TEST_SUITE_P(AtEveryScale, GlassCanvasCostTest, testing::Values(1.0, 1.25, 1.5, 2.0, 3.0));

} // namespace
} // namespace amperly::glass
