#include "tests/flow/glass/layered_glass.h"

#include "flow/glass/curve.h"
#include "flow/glass/glint.h"
#include "flow/glass/tube_profile.h"

#include <QColor>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cmath>
#include <functional>

namespace amperly::glass {

namespace {

QColor colorOf(const Color& color, double opacity)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
        static_cast<float>(color.blue), static_cast<float>(opacity));
}

QColor white(double opacity)
{
    return colorOf({1.0, 1.0, 1.0}, opacity);
}

QPointF pointOf(const FlowPoint& point)
{
    return {point.x, point.y};
}

class LayeredPainter {
public:
    LayeredPainter(QImage& canvas, double scale, const LayeredFlow& flow, const TubeProfile& profile,
        const LayerBlur& blur)
        : m_canvas(canvas), m_scale(scale), m_flow(flow), m_profile(profile), m_blur(blur), m_painter(&canvas)
    {
        prepare(m_painter);
    }

    void paint()
    {
        const Color& color = m_flow.color;
        const Color light = color.mix(0.45);
        const Color plainWhite{1.0, 1.0, 1.0};

        blurred(0.9 * m_flow.width,
            [&](QPainter& layer) { layer.fillPath(ribbon(-1.0, 1.0), colorOf(color, 0.22)); });
        blurred(0.7 * m_flow.width, [&](QPainter& layer) { swellBand(layer, -1.4, 1.4, color, 0.35); });
        body();
        m_painter.fillPath(ribbon(-1.0, -0.45), colorOf(color, 0.22));
        m_painter.fillPath(ribbon(-0.78, -0.5), colorOf(color, 0.18));
        swellBand(m_painter, -0.82, -0.42, light, 0.75);
        m_painter.fillPath(ribbon(0.15, 0.85), white(0.06));
        m_painter.strokePath(ribbon(-1.0, 1.0), pen(colorOf(color, 0.55), 0.7, Qt::FlatCap));
        specularLine();
        m_painter.fillPath(ribbon(0.42, 0.62), white(0.12));
        swellBand(m_painter, 0.36, 0.68, plainWhite, 0.7);
        glints();
    }

private:
    void prepare(QPainter& painter) const
    {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(m_scale, m_scale);
    }

    static QPen pen(const QColor& color, double width, Qt::PenCapStyle cap)
    {
        QPen pen(color, width, Qt::SolidLine, cap, Qt::MiterJoin);
        pen.setMiterLimit(10.0);
        return pen;
    }

    [[nodiscard]] QPainterPath ribbon(double a, double b) const
    {
        return ribbon(a, b, {0, m_profile.size() - 1});
    }
    [[nodiscard]] QPainterPath ribbon(double a, double b, const SwellRun& range) const
    {
        QPolygonF polygon;
        for (std::size_t i = range.first; i <= range.last; ++i)
            polygon << pointOf(m_profile[i].at(a));
        for (std::size_t i = range.last + 1; i-- > range.first;)
            polygon << pointOf(m_profile[i].at(b));
        QPainterPath path;
        path.setFillRule(Qt::WindingFill);
        path.addPolygon(polygon);
        path.closeSubpath();
        return path;
    }

    void swellBand(QPainter& painter, double a, double b, const Color& color, double factor) const
    {
        for (const SwellRun& run : swellRuns(m_profile)) {
            QLinearGradient gradient(pointOf(m_profile[run.first].p), pointOf(m_profile[run.last].p));
            QGradientStops stops;
            for (std::size_t i = run.first; i <= run.last; ++i) {
                const double location
                    = static_cast<double>(i - run.first) / static_cast<double>(run.last - run.first);
                stops.append({location, colorOf(color, factor * m_profile[i].k)});
            }
            gradient.setStops(stops);
            painter.fillPath(ribbon(a, b, run), gradient);
        }
    }

    /// A layer of its own that is blurred before it is put over what is there; all of it has the
    /// flow's colour.
    void blurred(double radius, const std::function<void(QPainter&)>& draw)
    {
        const double sigma = radius * m_scale;
        const int margin = static_cast<int>(std::ceil(m_blur.margin * sigma));
        QImage layer(m_canvas.width() + 2 * margin, m_canvas.height() + 2 * margin, m_canvas.format());
        layer.fill(Qt::transparent);
        {
            QPainter painter(&layer);
            painter.translate(margin, margin);
            prepare(painter);
            draw(painter);
        }
        m_painter.save();
        m_painter.resetTransform();
        m_painter.drawImage(-margin, -margin, m_blur.blurred(layer, sigma, m_flow.color));
        m_painter.restore();
    }

    void body()
    {
        QLinearGradient gradient(pointOf(m_flow.curve.p0), pointOf(m_flow.curve.p3));
        gradient.setColorAt(0.0, colorOf(m_flow.color, 0.22));
        gradient.setColorAt(1.0, colorOf(m_flow.color, 0.34));
        m_painter.fillPath(ribbon(-1.0, 1.0), gradient);
    }

    void specularLine()
    {
        QPolygonF line;
        for (const TubeSection& section : m_profile)
            line << pointOf(section.at(0.93));
        QPainterPath path;
        path.addPolygon(line);
        m_painter.strokePath(path, pen(white(0.22), 0.6, Qt::FlatCap));
    }

    void glints()
    {
        for (const TubeGlint& glint : tubeGlints(m_profile, m_flow.width)) {
            const QPointF c = pointOf(glint.centre);
            const double s = glint.size;
            QRadialGradient disc(c, 2.4 * s);
            disc.setColorAt(0.0, white(0.35 * glint.k));
            disc.setColorAt(1.0, white(0.0));
            m_painter.setPen(Qt::NoPen);
            m_painter.setBrush(disc);
            m_painter.drawEllipse(c, 2.4 * s, 2.4 * s);
            QPainterPath cross;
            cross.moveTo(c - QPointF(1.6 * s, 0.0));
            cross.lineTo(c + QPointF(1.6 * s, 0.0));
            cross.moveTo(c - QPointF(0.0, s));
            cross.lineTo(c + QPointF(0.0, s));
            m_painter.strokePath(cross, pen(white(0.8 * glint.k), 0.8, Qt::RoundCap));
            m_painter.setPen(Qt::NoPen);
            m_painter.setBrush(white(0.95 * glint.k));
            m_painter.drawEllipse(c, 1.0, 1.0);
        }
    }

    QImage& m_canvas;
    double m_scale;
    const LayeredFlow& m_flow;
    const TubeProfile& m_profile;
    const LayerBlur& m_blur;
    QPainter m_painter;
};

} // namespace

void paintLayers(QImage& canvas, const std::vector<LayeredFlow>& flows, double scale, const LayerBlur& blur)
{
    for (const LayeredFlow& flow : flows) {
        const CurveSamples samples = sampleCurve(flow.curve);
        if (samples.length() <= 1.0)
            continue;
        const TubeProfile profile
            = tubeProfile(samples, orientedNormals(samples), flow.width, flow.travelled);
        LayeredPainter(canvas, scale, flow, profile, blur).paint();
    }
}

} // namespace amperly::glass
