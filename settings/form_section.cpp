#include "settings/form_section.h"

#include "render/look/pixel_painting.h"
#include "settings/form_label.h"
#include "settings/form_look.h"

#include <QPainter>
#include <QVBoxLayout>

#include <utility>

namespace amperly {

class FormSection::Card : public QWidget {
public:
    Card() : m_rows(new QVBoxLayout(this))
    {
        m_rows->setContentsMargins(0, 1, 0, 1);
        m_rows->setSpacing(1); // the hairline's
    }

    void add(QWidget* row) { m_rows->addWidget(row); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const FormColors colors = FormColors::of(palette());
        drawPlate(painter, rect(), kForm.cardCorner, colors.card, colors.cardEdge);
        painter.setRenderHint(QPainter::Antialiasing, false);
        const double line = 1.0 / pixelScale(painter);
        bool first = true;
        for (int each = 0; each < m_rows->count(); ++each) {
            const QWidget& row = *m_rows->itemAt(each)->widget();
            if (row.isHidden())
                continue;
            if (!std::exchange(first, false)) {
                const QRectF hairline(kForm.inset, row.y() - 0.5, width() - 2 * kForm.inset, line);
                painter.fillRect(hairline, colors.separator);
            }
        }
    }

private:
    QVBoxLayout* m_rows;
};

FormSection::FormSection(const QString& title, Header header)
    : m_card(new Card), m_layout(new QVBoxLayout(this))
{
    setAccessibleName(title);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    if (header == Header::Shown) {
        auto* const label = new FormLabel(title, TextStyle::Body, FormLabel::Rank::First, QFont::DemiBold);
        label->setContentsMargins(kForm.inset, 0, kForm.inset, kForm.headerGap);
        m_layout->addWidget(label);
    }
    m_layout->addWidget(m_card);
}

void FormSection::addRow(QWidget* row)
{
    m_card->add(row);
}

void FormSection::setFooter(const QString& text)
{
    auto* const label = new FormLabel(text, TextStyle::Caption, FormLabel::Rank::Second);
    label->setWordWrap(true);
    label->setContentsMargins(kForm.inset, kForm.footerGap, kForm.inset, 0);
    m_layout->addWidget(label);
}

} // namespace amperly
