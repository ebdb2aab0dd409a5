// Text of the form in one of its two ranks. In a mirrored form it stands at the other side, but
// runs as its language does.
#pragma once

#include "render/look/text_style.h"

#include <QLabel>

namespace amperly {

class FormLabel : public QLabel {
public:
    enum class Rank { First, Second };

    FormLabel(
        const QString& text, TextStyle style, Rank rank = Rank::First, QFont::Weight weight = QFont::Normal);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Rank m_rank;
};

} // namespace amperly
