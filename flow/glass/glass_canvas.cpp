#include "flow/glass/glass_canvas.h"

#include "flow/glass/curve.h"
#include "flow/glass/fixed_point.h"
#include "flow/glass/glass_look.h"

#include <algorithm>
#include <cmath>

namespace amperly::glass {

namespace {

// Points. Shorter curves have no direction.
constexpr double kLongestIgnored = 1.0;
// The pulses of longer ones could not be counted.
constexpr double kLongestTube = 1e9;

// Layouts serve tubes of any width up to theirs, so that a tube that grows and shrinks keeps its own.
// Points.
constexpr double kWidestUsualTube = 24.0;

// As many layouts are kept as a diagram has tubes, so that one without power for a while keeps its own.
constexpr std::size_t kLayoutsKept = 3;

/// The widest tube whose edges lengths can tell, in points.
double widestTube(double scale)
{
    constexpr double kRimAndMore = 4.0;
    return std::max(kFurthestPixels / scale / (0.5 * (1.0 + kGlassLook.swelling)) - kRimAndMore, 0.0);
}

/// The width of the layout that a tube is drawn by.
double layoutWidth(double width)
{
    double widest = kWidestUsualTube;
    while (widest < width)
        widest *= 2.0;
    return widest;
}

/// Half of a line's width, for the kernels.
std::uint16_t halfLine(double width, double scale)
{
    constexpr double kMost = kFurthestPixels * kPixel;
    return static_cast<std::uint16_t>(std::lround(std::min(0.5 * width * scale * kPixel, kMost)));
}

std::uint16_t partOf(double component)
{
    return static_cast<std::uint16_t>(std::lround(std::clamp(component, 0.0, 1.0) * kWhole));
}

} // namespace

GlassCanvas::GlassCanvas(const Kernels& kernels) : m_kernels(kernels) { }

void GlassCanvas::begin(const GlassPixels& target, double scale)
{
    m_target = target;
    m_scale = scale;
    m_count = 0;
    ++m_frame;
}

void drawGlassFlow(
    GlassCanvas& context, const Bezier& curve, const Color& color, double width, double travelled)
{
    const double length = sampleCurve(curve).length();
    if (!(length > kLongestIgnored && length < kLongestTube))
        return;
    if (context.m_count == context.m_tubes.size())
        context.m_tubes.emplace_back();
    GlassCanvas::Tube& tube = context.m_tubes[context.m_count++];
    tube.curve = curve;
    tube.color = color;
    tube.width = width > 0.0 ? std::min(width, widestTube(context.m_scale)) : 0.0;
    tube.travelled = travelled;
}

void GlassCanvas::finish()
{
    if (m_target.width <= 0 || m_target.height <= 0)
        return;
    prepare();
    const int bands = (m_target.height + m_grid.step - 1) / m_grid.step;
    for (int band = 0; band < bands; ++band)
        paintBand(band);
}

void GlassCanvas::prepare()
{
    double narrowest = kWidestUsualTube;
    for (std::size_t i = 0; i < m_count; ++i)
        narrowest = std::min(narrowest, m_tubes[i].width);
    m_grid = GlowGrid::forCanvas(m_target.width, m_target.height, m_scale, narrowest);
    prepareBand();

    m_glow.begin(m_grid, m_scale, m_count);
    for (std::size_t i = 0; i < m_count; ++i) {
        Tube& tube = m_tubes[i];
        tube.layout = layoutFor({.curve = tube.curve,
            .scale = m_scale,
            .width = m_target.width,
            .height = m_target.height,
            .widestTube = layoutWidth(tube.width),
            .grid = m_grid});
        tube.motion.update(*tube.layout, tube.width, tube.travelled);
        tube.lights.clear();
        for (const TubeGlint& glint : tube.motion.glints())
            tube.lights.emplace_back(glint, m_target.width, m_target.height, m_scale);
        m_glow.add(*tube.layout, tube.motion, tube.color, tube.width);
    }
    m_glow.finish();
}

TubeLayout* GlassCanvas::layoutFor(const TubeLayout::Key& key)
{
    const auto known = std::find_if(
        m_layouts.begin(), m_layouts.end(), [&](const auto& layout) { return layout->key() == key; });
    TubeLayout* layout = known == m_layouts.end() ? nullptr : known->get();
    if (layout == nullptr) {
        const auto oldest = std::min_element(m_layouts.begin(), m_layouts.end(),
            [](const auto& a, const auto& b) { return a->lastFrame < b->lastFrame; });
        const bool mayGo = m_layouts.size() >= kLayoutsKept && (*oldest)->lastFrame != m_frame;
        auto& slot = mayGo ? *oldest : m_layouts.emplace_back();
        slot = std::make_unique<TubeLayout>(key);
        layout = slot.get();
    }
    layout->lastFrame = m_frame;
    return layout;
}

void GlassCanvas::prepareBand()
{
    constexpr int kChannels = 4;
    const int step = m_grid.step;
    m_stride = m_target.width + step + kRowSlack;
    m_band.resize(index(m_stride) * index(step));
    m_over.resize(m_band.size());
    m_light.resize(index(m_stride));
    m_nodeScratch.resize(2 * (index(m_grid.canvasColumns) * kChannels + index(kRowSlack)));
    m_across.assign(index(step + kRowSlack) * kChannels, 0);
    for (int x = 0; x < step; ++x) {
        const double way = (x + 0.5) / step;
        std::fill_n(m_across.begin() + x * kChannels, kChannels,
            static_cast<std::int16_t>(std::lround(way * 32768.0)));
    }
}

void GlassCanvas::paintBand(int band)
{
    const int top = band * m_grid.step;
    const int bottom = std::min(top + m_grid.step, m_target.height);
    std::uint32_t* const target = m_target.pixels + static_cast<std::ptrdiff_t>(top) * m_target.stride;

    // Kernels write a little past the ends of rows. Where that is the beginning of the next row,
    // which is painted later or blended with nothing, rows can be worked on in the canvas itself.
    const bool inPlace
        = m_target.stride == m_target.width && m_target.height - bottom > kRowSlack / m_target.width + 1;
    const Rows rows
        = inPlace ? Rows{target, m_target.stride, top, bottom} : Rows{m_band.data(), m_stride, top, bottom};
    if (m_count == 0)
        std::fill_n(rows.pixels, index(rows.stride) * index(bottom - top), 0U);
    else
        storeGlow(0, band, 0, m_target.width, rows);
    for (std::size_t i = 0; i < m_count; ++i)
        paintTube(i, band, rows);
    if (inPlace)
        return;
    for (int y = 0; y < bottom - top; ++y)
        std::copy_n(rows.pixels + index(y * rows.stride), m_target.width,
            target + static_cast<std::ptrdiff_t>(y) * m_target.stride);
}

void GlassCanvas::storeGlow(std::size_t first, int band, int left, int right, const Rows& rows)
{
    constexpr int kChannels = 4;
    const int step = m_grid.step;
    const int node = left / step;
    const int nodes = (right - node * step + step - 1) / step;
    for (int y = 0; y < rows.bottom - rows.top; ++y) {
        m_kernels.storeGlow({.above = m_glow.nodes(first, band) + node * kChannels,
            .below = m_glow.nodes(first, band + 1) + node * kChannels,
            .down = m_across[index(y * kChannels)],
            .across = m_across.data(),
            .step = step,
            .nodes = nodes,
            .scratch = m_nodeScratch.data(),
            .pixels = rows.pixels + y * rows.stride + node * step});
    }
}

void GlassCanvas::paintTube(std::size_t number, int band, const Rows& rows)
{
    const Tube& tube = m_tubes[number];
    TubeRows body{.first = tube.layout->blocksFrom(rows.top),
        .last = tube.layout->blocksUntil(rows.bottom),
        .ends = tube.layout->ends(),
        .columns = tube.motion.columns(),
        .reach = tube.motion.reach(),
        .halfRim = halfLine(kGlassLook.rimLineWidth, m_scale),
        .halfSpecular = halfLine(kGlassLook.specularLineWidth, m_scale),
        .red = partOf(tube.color.red),
        .green = partOf(tube.color.green),
        .blue = partOf(tube.color.blue),
        .pixels = rows.pixels,
        .stride = rows.stride,
        .over = nullptr,
        .overStride = m_stride,
        .top = rows.top};

    // The pixels on which a later glow has to be known.
    int left = m_target.width;
    int right = 0;
    for (const TubeBlock* block = body.first; block != body.last; ++block) {
        if (block->nearest > body.reach)
            continue;
        left = std::min<int>(left, block->x);
        right = std::max<int>(right, block->x + kBlockPixels);
    }
    for (const GlintLight& light : tube.lights) {
        if (light.right() > light.left() && light.top() < rows.bottom && light.bottom() > rows.top) {
            left = std::min(left, light.left());
            right = std::max(right, light.right());
        }
    }
    right = std::min(right, m_target.width);
    if (left >= right)
        return;
    if (number + 1 < m_count) {
        storeGlow(number + 1, band, left, right, {m_over.data(), m_stride, rows.top, rows.bottom});
        body.over = m_over.data();
    }
    m_kernels.paintTube(body);
    for (const GlintLight& light : tube.lights)
        paintGlint(light, body.over, rows);
}

void GlassCanvas::paintGlint(const GlintLight& light, const std::uint32_t* over, const Rows& rows)
{
    const int reached = light.right() - light.left();
    const int count = (reached + kBlockPixels - 1) / kBlockPixels * kBlockPixels;
    std::fill_n(m_light.begin() + reached, count - reached, std::uint16_t{0});
    for (int y = std::max(rows.top, light.top()); y < std::min(rows.bottom, light.bottom()) && count > 0;
         ++y) {
        light.row(y, m_light.data());
        m_kernels.paintLight({.pixels = rows.pixels + (y - rows.top) * rows.stride + light.left(),
            .over = over == nullptr ? nullptr : over + (y - rows.top) * m_stride + light.left(),
            .opacities = m_light.data(),
            .count = count});
    }
}

} // namespace amperly::glass
