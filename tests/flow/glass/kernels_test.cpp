// Which processor paints makes no difference.
#include "flow/glass/glass_canvas.h"
#include "flow/glass/kernels.h"
#include "tests/flow/glass/curves.h"

#include <string>

#include <gtest/gtest.h>

namespace amperly::glass {
namespace {

GlassPicture paintedWith(const Kernels& kernels, const std::vector<Flow>& flows, double scale)
{
    GlassCanvas canvas(kernels);
    return drawn(canvas, flows, scale);
}

TEST(KernelsTest, TheOnesForAnyProcessorAreAlwaysThere)
{
    EXPECT_EQ(kernelsHere().back(), &portableKernels());
}

TEST(KernelsTest, AllPaintTheSamePicture)
{
    const std::vector<Flow> crossing{{line({20.0, 20.0}, {290.0, 180.0}), FlowColor::charging, 23.0, 11.0},
        {line({290.0, 30.0}, {25.0, 160.0}), FlowColor::draining, 14.0, 60.0},
        {line({150.0, -20.0}, {151.0, 220.0}), FlowColor::charger, 9.0, 35.0}};
    for (const std::vector<Flow>& flows : {diagramFlows(16.0, 20.0), crossing, {}}) {
        for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            const GlassPicture expected = paintedWith(portableKernels(), flows, scale);
            for (const Kernels* const kernels : kernelsHere())
                EXPECT_TRUE(paintedWith(*kernels, flows, scale) == expected)
                    << kernels->name << ", " << scale;
        }
    }
}

} // namespace
} // namespace amperly::glass
