#include "flow/glass_flow.h"

#include "flow/glass/glass_painter.h"

namespace amperly {

class GlassCanvas::Frame : public glass::GlassPainter { };

GlassCanvas::GlassCanvas() : m_frame(std::make_unique<Frame>()) { }

GlassCanvas::~GlassCanvas() = default;
GlassCanvas::GlassCanvas(GlassCanvas&&) noexcept = default;
GlassCanvas& GlassCanvas::operator=(GlassCanvas&&) noexcept = default;

void GlassCanvas::begin(const GlassPixels& target, double scale)
{
    m_frame->begin(target, scale);
}

void GlassCanvas::finish()
{
    m_frame->finish();
}

void drawGlassFlow(
    GlassCanvas& context, const Bezier& curve, const Color& color, double width, double travelled)
{
    context.m_frame->add(curve, color, width, travelled);
}

} // namespace amperly
