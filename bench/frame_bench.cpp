// Measures one frame of the panel: three full tubes on 308 × 200 points. Beside it stand two
// yardsticks, measured in the same process, on the same core, turn by turn: the toolkit blending a
// canvas of that size once, and the toolkit painting the same tubes layer by layer with its own blur.
//
//     frame_bench                      writes all figures as JSON
//     frame_bench LOOP COUNT [NAME [SCALE]]
//                                      runs one loop and nothing else, for a tool that counts
//                                      instructions in measured…() alone; NAME chooses the kernels

#include "bench/heap_count.h"
#include "bench/timing.h"
#include "flow/glass/glass_canvas.h"
#include "flow/glass/kernels.h"
#include "tests/flow/glass/curves.h"
#include "tests/flow/glass/picture_difference.h"
#include "tests/flow/glass/reference_glass.h"

#include <QApplication>
#include <QGraphicsBlurEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sched.h>
#include <string_view>
#include <vector>

namespace {

using namespace amperly;
using namespace amperly::glass;

constexpr int kPointsWide = 308;
constexpr int kPointsHigh = 200;
constexpr double kFullWidth = 16.0;

enum class Widths { Same, Changing };

/// The tubes of a turn, a sixtieth of a second after those of the turn before.
std::vector<Flow> flowsOfTurn(int turn, Widths widths)
{
    constexpr double kPointsPerFrame = 0.6;
    std::vector<Flow> flows = diagramFlows(kFullWidth, turn * kPointsPerFrame);
    if (widths == Widths::Changing) {
        for (std::size_t i = 0; i < flows.size(); ++i)
            flows[i].width += 0.9 * std::sin(turn * 0.1 + static_cast<double>(i));
    }
    return flows;
}

/// A program's frames, all on one canvas.
class Frames {
public:
    Frames(const Kernels& kernels, double scale)
        : m_canvas(kernels)
        , m_scale(scale)
        , m_picture(static_cast<int>(kPointsWide * scale), static_cast<int>(kPointsHigh * scale))
    {
        constexpr int kWarmingTurns = 150; // until every tube has had as many glints as it can
        for (int turn = 0; turn < kWarmingTurns; ++turn)
            measuredFrame(flowsOfTurn(turn, Widths::Changing));
    }

    [[gnu::noinline]] void measuredFrame(const std::vector<Flow>& flows)
    {
        m_canvas.begin(m_picture.target(), m_scale);
        for (const Flow& flow : flows)
            drawGlassFlow(m_canvas, flow.curve, flow.color, flow.width, flow.travelled);
        m_canvas.finish();
    }

    [[nodiscard]] const GlassPicture& picture() const { return m_picture; }

private:
    GlassCanvas m_canvas;
    double m_scale;
    GlassPicture m_picture;
};

/// The toolkit blends a canvas on a window's worth of pixels.
class Blend {
public:
    explicit Blend(double scale)
        : m_canvas(static_cast<int>(kPointsWide * scale), static_cast<int>(kPointsHigh * scale),
            QImage::Format_ARGB32_Premultiplied)
        , m_window(m_canvas.size(), QImage::Format_ARGB32_Premultiplied)
    {
        m_canvas.fill(QColor(64, 200, 115, 90)); // neither empty nor opaque, which would be quicker
        m_window.fill(Qt::darkGray);
    }

    [[gnu::noinline]] void measuredYardstick()
    {
        QPainter painter(&m_window);
        painter.drawImage(0, 0, m_canvas);
    }

private:
    QImage m_canvas;
    QImage m_window;
};

/// What QGraphicsBlurEffect makes of a layer; its radius is about twice the standard deviation.
QImage blurredByToolkit(const QImage& layer, double sigma, const Color&)
{
    auto* const effect = new QGraphicsBlurEffect; // the item's
    effect->setBlurRadius(2.0 * sigma);
    auto* const item = new QGraphicsPixmapItem(QPixmap::fromImage(layer)); // the scene's
    item->setGraphicsEffect(effect);
    QGraphicsScene scene;
    scene.addItem(item);
    QImage result(layer.size(), layer.format());
    result.fill(Qt::transparent);
    QPainter painter(&result);
    scene.render(&painter, layer.rect(), layer.rect());
    return result;
}

std::vector<LayeredFlow> layered(const std::vector<Flow>& flows)
{
    std::vector<LayeredFlow> result;
    result.reserve(flows.size());
    for (const Flow& flow : flows)
        result.push_back({flow.curve, flow.color, flow.width, flow.travelled});
    return result;
}

struct Figures {
    double frameNanoseconds = 0; ///< median
    double blendNanoseconds = 0; ///< median
    double ratio = 0; ///< median of the ratios of the blocks
    double allocationsPerFrame = 0;
};

Figures measure(const Kernels& kernels, double scale, Widths widths)
{
    constexpr int kBlocks = 15;
    constexpr int kTurnsOfBlock = 60;

    Frames frames(kernels, scale);
    Blend blend(scale);
    std::vector<double> frameTimes;
    std::vector<double> blendTimes;
    std::vector<double> ratios;
    long allocations = 0;
    int turn = 0;
    for (int block = 0; block < kBlocks; ++block) {
        std::vector<double> blockFrames;
        std::vector<double> blockBlends;
        for (int i = 0; i < kTurnsOfBlock; ++i, ++turn) {
            const std::vector<Flow> flows = flowsOfTurn(turn, widths);
            blockBlends.push_back(nanosecondsOf([&] { blend.measuredYardstick(); }));
            const long heapBefore = heapRequests();
            const double frame = nanosecondsOf([&] { frames.measuredFrame(flows); });
            allocations += heapRequests() - heapBefore;
            blockFrames.push_back(frame);
        }
        frameTimes.push_back(median(blockFrames));
        blendTimes.push_back(median(blockBlends));
        ratios.push_back(frameTimes.back() / blendTimes.back());
    }
    return {
        .frameNanoseconds = median(frameTimes),
        .blendNanoseconds = median(blendTimes),
        .ratio = median(ratios),
        .allocationsPerFrame = static_cast<double>(allocations) / turn,
    };
}

struct ToolkitFigures {
    double frameNanoseconds = 0; ///< median
    double toolkitNanoseconds = 0; ///< median
    double ratio = 0; ///< of the frame's time to the toolkit's, median of the pairs
};

ToolkitFigures measureToolkit(double scale)
{
    constexpr int kPairs = 7;

    Frames frames(*kernelsHere().front(), scale);
    QImage canvas(static_cast<int>(kPointsWide * scale), static_cast<int>(kPointsHigh * scale),
        QImage::Format_ARGB32_Premultiplied);
    std::vector<double> frameTimes;
    std::vector<double> toolkitTimes;
    std::vector<double> ratios;
    for (int pair = 0; pair < kPairs; ++pair) {
        const std::vector<Flow> flows = flowsOfTurn(pair * 20, Widths::Same);
        const std::vector<LayeredFlow> same = layered(flows);
        toolkitTimes.push_back(nanosecondsOf([&] {
            canvas.fill(Qt::transparent);
            paintLayers(canvas, same, scale, {blurredByToolkit});
        }));
        constexpr int kFramesOfPair = 11; // as the first ones after the toolkit's find nothing near
        std::vector<double> some(kFramesOfPair);
        for (double& one : some)
            one = nanosecondsOf([&] { frames.measuredFrame(flows); });
        frameTimes.push_back(median(some));
        ratios.push_back(frameTimes.back() / toolkitTimes.back());
    }
    return {median(frameTimes), median(toolkitTimes), median(ratios)};
}

/// The greatest differences from true Gaussians, in any channel, at every scale that desktops use.
PictureDifference worstDifference()
{
    PictureDifference worst;
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        for (const double width : {9.0, kFullWidth, 23.0}) {
            const std::vector<Flow> flows = diagramFlows(width, 20.0 + width);
            const GlassPicture picture = drawn(flows, scale);
            worst = worst.worst(differenceOf(
                paintReference(layered(flows), kPointsWide, kPointsHigh, scale), picture.pixels));
        }
    }
    return worst;
}

void print(const char* name, const Figures& figures)
{
    std::printf("  \"%s\": {\"frame_ns\": %.1f, \"blend_ns\": %.1f, \"ratio\": %.4f, "
                "\"allocations_per_frame\": %.4f},\n",
        name, figures.frameNanoseconds, figures.blendNanoseconds, figures.ratio, figures.allocationsPerFrame);
}

/// The fastest kernels that a processor without AVX2 would run.
const Kernels& plainKernels()
{
    for (const Kernels* const kernels : kernelsHere()) {
        if (std::string_view(kernels->name) != "AVX2")
            return *kernels;
    }
    return portableKernels();
}

void measureAll()
{
    const Kernels& fastest = *kernelsHere().front();
    const Kernels& plain = plainKernels();
    std::printf("{\n  \"fastest\": \"%s\",\n  \"plain\": \"%s\",\n", fastest.name, plain.name);
    print("1x", measure(fastest, 1.0, Widths::Same));
    print("1x_plain", measure(plain, 1.0, Widths::Same));
    print("2x", measure(fastest, 2.0, Widths::Same));
    print("2x_plain", measure(plain, 2.0, Widths::Same));
    print("2x_widths_change", measure(fastest, 2.0, Widths::Changing));
    print("2x_widths_change_plain", measure(plain, 2.0, Widths::Changing));
    for (const int scale : {1, 2}) {
        const ToolkitFigures figures = measureToolkit(scale);
        std::printf("  \"%dx_toolkit\": {\"frame_ns\": %.1f, \"toolkit_ns\": %.1f, \"ratio\": %.6f},\n",
            scale, figures.frameNanoseconds, figures.toolkitNanoseconds, figures.ratio);
    }
    const PictureDifference worst = worstDifference();
    std::printf("  \"difference\": {\"mean\": %.4f, \"permille\": %d}\n}\n", worst.mean, worst.permille);
}

void loop(std::string_view what, int count, std::string_view name, double scale)
{
    const Kernels* chosen = kernelsHere().front();
    for (const Kernels* const kernels : kernelsHere()) {
        if (kernels->name == name)
            chosen = kernels;
    }
    Frames frames(*chosen, scale);
    Blend blend(scale);
    for (int turn = 0; turn < count; ++turn) {
        if (what == "yardstick")
            blend.measuredYardstick();
        else
            frames.measuredFrame(flowsOfTurn(turn, what == "changing" ? Widths::Changing : Widths::Same));
    }
}

void stayOnOneCore()
{
    const int core = ::sched_getcpu();
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(static_cast<std::size_t>(std::max(core, 0)), &cores);
    ::sched_setaffinity(0, sizeof cores, &cores);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 || argc > 5) {
        std::fprintf(stderr, "usage: frame_bench [same|changing|yardstick COUNT [KERNELS [SCALE]]]\n");
        return EXIT_FAILURE;
    }
    stayOnOneCore();
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const QApplication toolkit(argc, argv);
    if (argc > 2)
        loop(argv[1], std::atoi(argv[2]), argc > 3 ? argv[3] : "", argc > 4 ? std::atof(argv[4]) : 2.0);
    else
        measureAll();
    return EXIT_SUCCESS;
}
