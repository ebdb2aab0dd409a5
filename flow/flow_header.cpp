#include "flow/flow_header.h"

#include <QEvent>
#include <QStyle>

#include <algorithm>

namespace amperly {

namespace {

constexpr int kGap = 8; // points, at least, between headline and pill

} // namespace

FlowHeader::FlowHeader(const DisplaySettings& display, QWidget* parent)
    : QWidget(parent), m_headline(new Headline(display, this)), m_pill(new StatusPill(this))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FlowHeader::setSample(const PowerSample& sample)
{
    m_headline->setSample(sample);
    m_pill->setPill(pill(sample));
    place();
}

QSize FlowHeader::sizeHint() const
{
    const QSize headline = m_headline->sizeHint();
    const QSize pill = m_pill->sizeHint();
    return {headline.width() + kGap + pill.width(), std::max(headline.height(), pill.height())};
}

void FlowHeader::place()
{
    const QSize headline = m_headline->sizeHint();
    m_pill->setRoom(width() - headline.width() - kGap);
    const QSize pill = m_pill->sizeHint();
    const auto centred = [this](QPoint left, QSize size) {
        return QStyle::visualRect(
            layoutDirection(), rect(), QRect(left + QPoint(0, (height() - size.height()) / 2), size));
    };
    // All the room that is left: figures that glide away to one that is shorter need it.
    m_headline->setGeometry(centred({0, 0}, {width() - pill.width() - kGap, headline.height()}));
    m_pill->setGeometry(centred({width() - pill.width(), 0}, pill));
}

void FlowHeader::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    place();
}

bool FlowHeader::event(QEvent* event)
{
    // The headline grows by a digit, or the fonts have changed.
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::LayoutDirectionChange)
        place();
    return QWidget::event(event);
}

} // namespace amperly
