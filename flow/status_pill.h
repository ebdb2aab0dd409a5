// How charger and battery share the work, as a phrase with a symbol in a coloured capsule. Where
// the phrase is too long for one line, it takes two.
#pragma once

#include "flow/panel_content.h"
#include "flow/spoken_text.h"

#include <QFont>
#include <QStringList>

namespace amperly {

class StatusPill : public SpokenText {
public:
    explicit StatusPill(QWidget* parent = nullptr);

    void setPill(const Pill& pill);
    [[nodiscard]] const Pill& shown() const { return m_pill; }

    /// How wide it may be, in points.
    void setAvailableWidth(int width);
    [[nodiscard]] int lineCount() const { return static_cast<int>(m_lines.size()); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void breakLines();
    [[nodiscard]] QStringList inTwoLines(const QString& text) const;
    [[nodiscard]] double widthOf(const QStringList& lines) const;
    [[nodiscard]] double symbolWidth() const;
    [[nodiscard]] double lineHeight() const;

    Pill m_pill;
    int m_availableWidth;
    QStringList m_lines;
};

} // namespace amperly
