#include "settings/symbol_icon.h"

#include "render/look/pixel_painting.h"
#include "render/look/symbol_image.h"
#include "settings/form_look.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QLibraryInfo>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QVersionNumber>

namespace amperly {

namespace {

constexpr GlyphStyle kStyle{.pointSize = 13.0, .weight = FontWeight::Regular};

class SymbolIconEngine : public QIconEngine {
public:
    explicit SymbolIconEngine(std::string_view name) : m_name(name) { }

    [[nodiscard]] QIconEngine* clone() const override { return new SymbolIconEngine(*this); }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        drawCentered(
            *painter, QRectF(rect).center(), symbolImage(m_name, kStyle, color(mode), pixelScale(*painter)));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return drawn(size, mode, state, 1.0);
    }

    /// The toolkit hands in pixels up to 6.7 and points from 6.8 on; the one that is loaded counts.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override
    {
        static const bool isInPoints = QLibraryInfo::version() >= QVersionNumber(6, 8);
        return drawn(isInPoints ? size * scale : size, mode, state, scale);
    }

private:
    QPixmap drawn(const QSize& pixels, QIcon::Mode mode, QIcon::State state, qreal scale)
    {
        QPixmap pixmap(pixels);
        pixmap.setDevicePixelRatio(scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), pixmap.deviceIndependentSize().toSize()), mode, state);
        return pixmap;
    }

    static QColor color(QIcon::Mode mode)
    {
        const QPalette palette = QGuiApplication::palette();
        switch (mode) {
        case QIcon::Disabled:
            return palette.color(QPalette::Disabled, QPalette::WindowText);
        case QIcon::Active:
        case QIcon::Selected:
            return palette.color(QPalette::Active, QPalette::HighlightedText);
        case QIcon::Normal:
            break;
        }
        return palette.color(QPalette::Active, QPalette::WindowText);
    }

    std::string_view m_name;
};

} // namespace

QIcon symbolIcon(std::string_view name)
{
    return QIcon(new SymbolIconEngine(name));
}

} // namespace amperly
