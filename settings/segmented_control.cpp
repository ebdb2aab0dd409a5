#include "settings/segmented_control.h"

#include "render/look/text_style.h"
#include "settings/form_look.h"

#include <QKeyEvent>
#include <QPainter>
#include <QRadioButton>

#include <algorithm>

namespace amperly {

namespace {

constexpr double kRim = 2.0; // points between the trough's edge and the plate of the chosen segment

} // namespace

class SegmentedControl::Segment : public QRadioButton {
public:
    Segment(const QString& text, int index, SegmentedControl* control)
        : QRadioButton(text, control), m_control(*control), m_index(index)
    {
        setFont(textFont(TextStyle::Body));
        connect(this, &QRadioButton::clicked, this, [this] { m_control.choose(m_index); });
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const FormColors colors = FormColors::of(palette());
        if (!isEnabled())
            painter.setOpacity(kForm.disabledOpacity);
        painter.setPen(isChecked() ? colors.segmentText : colors.text);
        painter.drawText(rect(), Qt::AlignCenter | textDirection(text()), text());
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        const int forward = isRightToLeft() ? -1 : 1;
        switch (event->key()) {
        case Qt::Key_Right:
            return m_control.moveChoice(forward);
        case Qt::Key_Left:
            return m_control.moveChoice(-forward);
        case Qt::Key_Down:
            return m_control.moveChoice(1);
        case Qt::Key_Up:
            return m_control.moveChoice(-1);
        default:
            return QRadioButton::keyPressEvent(event);
        }
    }

    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }

    void focusInEvent(QFocusEvent* event) override
    {
        QRadioButton::focusInEvent(event);
        m_control.update();
    }

    void focusOutEvent(QFocusEvent* event) override
    {
        QRadioButton::focusOutEvent(event);
        m_control.update();
    }

private:
    SegmentedControl& m_control;
    int m_index;
};

SegmentedControl::SegmentedControl(const QStringList& options)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    for (const QString& option : options)
        m_segments.push_back(new Segment(option, static_cast<int>(m_segments.size()), this));
    // So that a title's letter leads here; the focus goes on to a segment.
    setFocusPolicy(Qt::ClickFocus);
    SegmentedControl::setChoice(std::nullopt);
}

void SegmentedControl::setChoice(std::optional<int> index)
{
    m_choice = index;
    for (int each = 0; each < static_cast<int>(m_segments.size()); ++each) {
        QAbstractButton& segment = *m_segments[static_cast<std::size_t>(each)];
        // Exclusive buttons refuse to have none of them checked.
        segment.setAutoExclusive(false);
        segment.setChecked(each == index);
        segment.setAutoExclusive(true);
        segment.setFocusPolicy(each == index.value_or(0) ? Qt::StrongFocus : Qt::ClickFocus);
    }
    setFocusProxy(m_segments[static_cast<std::size_t>(index.value_or(0))]);
    if (index)
        m_left.to(m_segments[static_cast<std::size_t>(*index)]->x());
    update();
}

void SegmentedControl::choose(int index)
{
    if (m_choice == index)
        return;
    setChoice(index);
    if (m_chosen)
        m_chosen(index);
}

void SegmentedControl::moveChoice(int by)
{
    const int last = static_cast<int>(m_segments.size()) - 1;
    // Where nothing is chosen yet, a key chooses the option that has the focus.
    const int index = m_choice ? std::clamp(*m_choice + by, 0, last) : 0;
    choose(index);
    m_segments[static_cast<std::size_t>(index)]->setFocus(Qt::TabFocusReason);
}

QSize SegmentedControl::sizeHint() const
{
    int widest = 0;
    for (const QAbstractButton* const segment : m_segments)
        widest = std::max(widest, segment->fontMetrics().horizontalAdvance(segment->text()));
    const int room = 2 * kForm.focusRoom;
    const int count = static_cast<int>(m_segments.size());
    return {count * (widest + 2 * kForm.controlPadding) + room, kForm.controlHeight + room};
}

void SegmentedControl::resizeEvent(QResizeEvent*)
{
    layOut();
}

void SegmentedControl::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        layOut();
}

void SegmentedControl::layOut()
{
    const int count = static_cast<int>(m_segments.size());
    const QRect area = rect().adjusted(kForm.focusRoom, kForm.focusRoom, -kForm.focusRoom, -kForm.focusRoom);
    for (int each = 0; each < count; ++each) {
        const int place = isRightToLeft() ? count - 1 - each : each;
        const int left = area.left() + area.width() * place / count;
        const int right = area.left() + area.width() * (place + 1) / count;
        m_segments[static_cast<std::size_t>(each)]->setGeometry(
            left, area.top(), right - left, area.height());
    }
    if (m_choice)
        m_left.jumpTo(m_segments[static_cast<std::size_t>(*m_choice)]->x());
}

void SegmentedControl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kForm.disabledOpacity);
    const FormColors colors = FormColors::of(palette());
    const int room = kForm.focusRoom;
    const QRectF trough = QRectF(rect()).adjusted(room, room, -room, -room);
    drawPlate(painter, trough, kForm.controlCorner, colors.trough, colors.troughEdge);
    if (m_choice) {
        const QRectF segment = m_segments[static_cast<std::size_t>(*m_choice)]->geometry();
        QRectF plate = segment.adjusted(kRim, kRim, -kRim, -kRim);
        plate.moveLeft(m_left.value() + kRim);
        drawPlate(painter, plate, kForm.controlCorner - kRim * 0.5, colors.segment, colors.segmentEdge);
    }
    for (const QAbstractButton* const segment : m_segments) {
        if (segment->hasFocus())
            drawFocus(painter, *segment, trough, kForm.controlCorner);
    }
}

} // namespace amperly
