// What text a widget draws: a paint device that keeps it instead of painting it.
#pragma once

#include <QColor>
#include <QFont>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QWidget>

#include <vector>

namespace amperly {

struct DrawnText {
    QString text;
    QFont font;
    QColor color;
};

class TextRecorder : public QPaintDevice {
public:
    /// All that `widget` draws, without its children and its background.
    static std::vector<DrawnText> textsOf(QWidget& widget)
    {
        TextRecorder recorder(widget.size());
        widget.render(&recorder, {}, {}, {});
        return recorder.m_engine.texts;
    }

    [[nodiscard]] QPaintEngine* paintEngine() const override { return &m_engine; }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override
    {
        constexpr int kDotsPerInch = 96;
        constexpr int kBitsPerPixel = 32;
        switch (metric) {
        case PdmWidth:
        case PdmWidthMM:
            return m_size.width();
        case PdmHeight:
        case PdmHeightMM:
            return m_size.height();
        case PdmDepth:
            return kBitsPerPixel;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return kDotsPerInch;
        }
    }

private:
    class Engine : public QPaintEngine {
    public:
        Engine() : QPaintEngine(AllFeatures) { }
        bool begin(QPaintDevice*) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState& changed) override
        {
            if (changed.state().testFlag(DirtyPen))
                m_color = changed.pen().color();
        }
        void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { }
        void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override { }
        void drawPath(const QPainterPath&) override { }
        void drawTextItem(const QPointF&, const QTextItem& item) override
        {
            texts.push_back({item.text(), item.font(), m_color});
        }
        [[nodiscard]] Type type() const override { return User; }

        std::vector<DrawnText> texts;

    private:
        QColor m_color;
    };

    explicit TextRecorder(const QSize& size) : m_size(size) { }

    QSize m_size;
    mutable Engine m_engine;
};

} // namespace amperly
