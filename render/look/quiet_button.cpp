#include "render/look/quiet_button.h"

#include "render/look/coffee_cup.h"
#include "render/look/pixel_painting.h"
#include "render/look/text_style.h"
#include "render/look/window_colors.h"

#include <QAccessibleWidget>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>

#include <cmath>

namespace amperly {

namespace {

/// Points.
struct QuietLook {
    int topPadding = 3;
    double corner = 5.0;
    double focusLine = 1.5;
    double cupGap = 4.0; ///< between a cup and the words
};
constexpr QuietLook kQuiet;

constexpr double kCupPerCapital = 1.3; ///< heights; found by eye

// Opacities of the text's colour.
constexpr double kHovered = 0.07;
constexpr double kPressed = 0.13;

/// The toolkit takes every button for one that does something here.
class SpokenLink : public QAccessibleWidget {
public:
    explicit SpokenLink(QuietButton& button) : QAccessibleWidget(&button, QAccessible::Link), m_button(button)
    {
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        return QAccessibleWidget::actionNames() << pressAction();
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction())
            m_button.click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    QuietButton& m_button;
};

QAccessibleInterface* describeLink(const QString&, QObject* object)
{
    auto* const button = dynamic_cast<QuietButton*>(object);
    return button != nullptr && button->tone() == QuietButton::Tone::Link ? new SpokenLink(*button) : nullptr;
}

void describeLinksToScreenReaders()
{
    static const bool installed = (QAccessible::installFactory(describeLink), true);
    static_cast<void>(installed);
}

bool startsWithCup(const QString& text)
{
    return text.startsWith(kHotBeverage);
}

/// The text without a cup at its beginning, which is drawn.
QString wordsOf(const QString& text)
{
    return startsWithCup(text) ? text.mid(1).trimmed() : text;
}

double cupSize(const QFontMetricsF& metrics)
{
    return std::round(metrics.capHeight() * kCupPerCapital);
}

} // namespace

QuietButton::QuietButton(const QString& text, Tone tone, QWidget* parent)
    : QAbstractButton(parent), m_tone(tone)
{
    if (tone == Tone::Link)
        describeLinksToScreenReaders();
    setText(text);
    setAccessibleName(text);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(tone == Tone::Link ? Qt::PointingHandCursor : Qt::ArrowCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize QuietButton::sizeHint() const
{
    QSize words = fontMetrics().size(Qt::TextShowMnemonic, wordsOf(text()));
    if (startsWithCup(text())) {
        const QImage cup = coffeeCup(cupSize(QFontMetricsF(font())), {}, 1.0);
        words.rwidth() += static_cast<int>(std::ceil(cup.width() + kQuiet.cupGap));
    }
    return words + QSize(2 * kSidePadding, 2 * kQuiet.topPadding);
}

void QuietButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor words = m_tone == Tone::Link ? linkColor(palette()) : palette().color(QPalette::WindowText);
    const QRectF area = QRectF(rect()).adjusted(1, 1, -1, -1);
    if (isDown() || underMouse()) {
        QColor ground = palette().color(QPalette::WindowText);
        ground.setAlphaF(static_cast<float>(isDown() ? kPressed : kHovered));
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        painter.drawRoundedRect(area, kQuiet.corner, kQuiet.corner);
    }
    if (hasFocus() && window()->isActiveWindow()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), kQuiet.focusLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(area, kQuiet.corner, kQuiet.corner);
    }
    painter.setPen(words);
    QRectF room = rect();
    if (startsWithCup(text())) {
        const QFontMetricsF metrics(font());
        const QImage cup = coffeeCup(cupSize(metrics), words, pixelScale(painter));
        const QSizeF size = cup.deviceIndependentSize();
        const double baseline = (height() - metrics.height()) / 2.0 + metrics.ascent();
        const bool fromRight = layoutDirection() == Qt::RightToLeft;
        drawOnPixels(painter,
            {fromRight ? width() - kSidePadding - size.width() : kSidePadding, baseline - size.height()},
            cup);
        const double taken = size.width() + kQuiet.cupGap;
        room.adjust(fromRight ? 0.0 : taken, 0.0, fromRight ? -taken : 0.0, 0.0);
    }
    painter.drawText(room, Qt::AlignCenter | Qt::TextShowMnemonic | textDirection(text()), wordsOf(text()));
}

void QuietButton::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void QuietButton::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

void QuietButton::keyPressEvent(QKeyEvent* event)
{
    // Return as well as the space bar: there is no default button beside it.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

} // namespace amperly
