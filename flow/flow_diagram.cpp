#include "flow/flow_diagram.h"

#include "flow/diagram_accessible.h"
#include "flow/frame_stats.h"
#include "flow/motion.h"
#include "render/look/pixel_painting.h"

#include <QAccessible>
#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace amperly {

namespace {

constexpr Spring kAppearance{.response = 0.45, .damping = 0.75};
constexpr double kFirstSize = 0.92; ///< of its size, when the diagram begins to appear

Color accentOf(const QPalette& palette)
{
    const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
    return {accent.redF(), accent.greenF(), accent.blueF()};
}

FlowPoint moved(const FlowPoint& point, const QPointF& by)
{
    return {point.x + by.x(), point.y + by.y()};
}

Bezier moved(const Bezier& curve, const QPointF& by)
{
    return {moved(curve.p0, by), moved(curve.p1, by), moved(curve.p2, by), moved(curve.p3, by)};
}

} // namespace

FlowDiagram::FlowDiagram(const PowerSample& sample, const DisplaySettings& display, QWidget* parent)
    : QWidget(parent)
    , m_sample(sample)
    , m_nodes{FlowNode(chargerContent(sample), display),
          FlowNode(computerContent(sample, accentOf(palette())), display),
          FlowNode(batteryContent(sample), display)}
{
    makeDiagramsAccessible();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
}

void FlowDiagram::fill()
{
    m_nodes[static_cast<std::size_t>(Node::Charger)].setContent(chargerContent(m_sample));
    m_nodes[static_cast<std::size_t>(Node::Computer)].setContent(
        computerContent(m_sample, accentOf(palette())));
    m_nodes[static_cast<std::size_t>(Node::Battery)].setContent(batteryContent(m_sample));
}

void FlowDiagram::setSample(const PowerSample& sample)
{
    if (sample == m_sample)
        return;
    m_sample = sample;
    m_rests = false;
    fill();
    announceDiagram(*this);
}

void FlowDiagram::advance(double now)
{
    if (FrameStats::enabled())
        FrameStats::standard().frame(now);
    if (!m_firstFrame)
        m_firstFrame = now;
    m_rests = false;
    m_elapsed = now - *m_firstFrame;
    m_appearance = kAppearance.at(m_elapsed);
    m_animator.step(m_sample, now);
    for (FlowNode& node : m_nodes)
        node.advance(now);
    update();
}

void FlowDiagram::settle()
{
    if (std::exchange(m_rests, true))
        return;
    m_appearance = 1.0;
    m_elapsed = 0.0;
    m_animator.settle(m_sample);
    for (FlowNode& node : m_nodes)
        node.settle();
    update();
}

std::string FlowDiagram::sentence(Node node) const
{
    switch (node) {
    case Node::Charger:
        return chargerSentence(m_sample);
    case Node::Computer:
        return computerSentence(m_sample);
    case Node::Battery:
        break;
    }
    return batterySentence(m_sample);
}

QPointF FlowDiagram::cornerOf(Node node) const
{
    const FlowPoint centre = node == Node::Charger ? m_layout.charger
        : node == Node::Computer                   ? m_layout.computer
                                                   : m_layout.battery;
    return {centre.x - kNodeWidth / 2.0, centre.y - kNodeHeight / 2.0};
}

QRect FlowDiagram::nodeRect(Node node) const
{
    return QRectF(cornerOf(node), QSizeF(kNodeWidth, kNodeHeight)).toAlignedRect();
}

QRectF FlowDiagram::diagramRect() const
{
    return contentsRect();
}

void FlowDiagram::place()
{
    const QRectF diagram = diagramRect();
    const QPointF corner = diagram.topLeft();
    const DiagramLayout layout = diagramLayout(diagram.width(), diagram.height());
    m_layout = {
        .charger = moved(layout.charger, corner),
        .computer = moved(layout.computer, corner),
        .battery = moved(layout.battery, corner),
        .chargerToMac = moved(layout.chargerToMac, corner),
        .chargerToBattery = moved(layout.chargerToBattery, corner),
        .batteryToMac = moved(layout.batteryToMac, corner),
    };
}

void FlowDiagram::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    place();
}

void FlowDiagram::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::LocaleChange: // the same figures, written otherwise
        m_rests = false;
        [[fallthrough]];
    case QEvent::PaletteChange:
    case QEvent::FontChange:
    case QEvent::ApplicationFontChange:
        fill();
        for (FlowNode& node : m_nodes)
            node.restyle();
        update();
        break;
    case QEvent::ContentsRectChange:
        place();
        break;
    default:
        break;
    }
}

void FlowDiagram::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Active, QPalette::Window));
    if (m_appearance == 1.0) {
        m_stage = {};
        paintDiagram(painter);
    } else if (m_appearance > 0.0) {
        paintAppearing(painter);
    }
}

void FlowDiagram::paintAppearing(QPainter& painter)
{
    const double scale = pixelScale(painter);
    if (m_stage.isNull() || m_stage.devicePixelRatio() != scale)
        m_stage = clearPicture(size(), scale);
    m_stage.fill(Qt::transparent);
    {
        QPainter onStage(&m_stage);
        paintDiagram(onStage);
    }
    const double size = kFirstSize + (1.0 - kFirstSize) * m_appearance;
    const QPointF centre = diagramRect().center();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(std::min(m_appearance, 1.0));
    painter.translate(centre);
    painter.scale(size, size);
    painter.translate(-centre);
    painter.drawImage(QPointF(), m_stage);
}

void FlowDiagram::paintDiagram(QPainter& painter)
{
    paintTubes(painter);
    for (const Node node : {Node::Charger, Node::Computer, Node::Battery}) {
        FlowNode& one = m_nodes[static_cast<std::size_t>(node)];
        one.paint(painter, cornerOf(node), palette(), one.glowOpacity(m_elapsed));
    }
}

void FlowDiagram::paintTubes(QPainter& painter)
{
    struct Tube {
        const Bezier& curve;
        const Color& color;
        double watts;
    };
    const std::array tubes{
        Tube{m_layout.chargerToMac, FlowColor::charger, m_animator.chargerToMac()},
        Tube{m_layout.chargerToBattery, FlowColor::charging, m_animator.chargerToBattery()},
        Tube{m_layout.batteryToMac, FlowColor::draining, m_animator.batteryToMac()},
    };
    if (std::none_of(
            tubes.begin(), tubes.end(), [](const Tube& tube) { return tube.watts > kLeastDrawnWatts; }))
        return;

    const double scale = pixelScale(painter);
    const QSize pixels(
        static_cast<int>(std::ceil(width() * scale)), static_cast<int>(std::ceil(height() * scale)));
    if (m_tubes.size() != pixels)
        m_tubes = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    constexpr int kBytesPerPixel = 4;
    m_canvas.begin({reinterpret_cast<std::uint32_t*>(m_tubes.bits()), m_tubes.width(), m_tubes.height(),
                       static_cast<int>(m_tubes.bytesPerLine() / kBytesPerPixel)},
        scale);
    const double fullScale = fullScaleWatts(m_sample);
    for (std::size_t flow = 0; flow < tubes.size(); ++flow) {
        if (tubes[flow].watts > kLeastDrawnWatts)
            drawGlassFlow(m_canvas, tubes[flow].curve, tubes[flow].color,
                tubeWidth(tubes[flow].watts, fullScale), m_animator.travelled()[flow]);
    }
    m_canvas.finish();
    drawOnPixels(painter, QPointF(), m_tubes);
}

} // namespace amperly
