// A figure whose digits roll to their new value: those that stay the same keep still or glide to
// where they are then, those that change move up and out while the new ones follow from below, as in a
// counter that counts up.
//
// All digits are equally wide, so that a figure keeps still while it changes. The distribution's
// fonts need not offer such digits themselves.
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>

#include <optional>
#include <vector>

class QPainter;

namespace amperly {

/// One character on its way from one text to the next. Both texts are matched from their ends, so
/// that a digit is matched with the one of the same power of ten.
struct RollingCell {
    QString from; ///< empty where the text before was shorter
    QString to; ///< empty where the new text is shorter
    double fromX = 0.0; ///< points from the left edge of the new text
    double toX = 0.0;
    friend bool operator==(const RollingCell&, const RollingCell&) = default;
};

class RollingText {
public:
    /// `anchor` is what of the text keeps still when it becomes longer or shorter: 0 is its left
    /// edge, 1 its right one.
    explicit RollingText(const QFont& font, double anchor = 0.0);

    void setAnchor(double anchor);

    void setFont(const QFont& font);

    /// The text to roll to, starting with the next frame. While another roll can be seen, it waits
    /// for that to end; of several that wait, the last one counts.
    void setText(const QString& text);
    [[nodiscard]] const QString& text() const { return m_next ? *m_next : m_text; }

    /// One frame, at `now` in seconds. Returns whether it looks different from the one before.
    bool advance(double now);

    /// Shows the text as it is, without rolling.
    void settle();

    [[nodiscard]] bool isRolling() const { return m_rolling; }

    /// From 0, where the text before still shows, to 1.
    [[nodiscard]] double progress() const { return m_progress; }

    /// Points that the text which shows, or rolls in, takes at rest.
    [[nodiscard]] double width() const { return m_width; }

    /// Points of its line.
    [[nodiscard]] double height() const;
    [[nodiscard]] double ascent() const;

    [[nodiscard]] const std::vector<RollingCell>& cells() const { return m_cells; }

    /// Paints with the line's upper left corner at `corner`. Characters are drawn once for each
    /// colour and scale and then kept.
    void paint(QPainter& painter, const QPointF& corner, const QColor& color);

private:
    struct Glyph {
        QString character;
        QImage picture;
    };
    struct Positioned {
        QString character;
        double x = 0.0;
    };

    [[nodiscard]] double advanceOf(const QString& character) const;
    [[nodiscard]] std::vector<Positioned> laidOut(const QString& text, double& width) const;
    void match();
    void finish();
    const QImage& glyph(const QString& character, const QColor& color, double scale);
    void paintGlyph(QPainter& painter, const QPointF& corner, const QImage& picture, double opacity);

    QFont m_font;
    double m_anchor;
    QString m_before;
    QString m_text;
    std::optional<QString> m_next; ///< to roll to after m_text
    std::vector<RollingCell> m_cells;
    double m_width = 0.0;
    bool m_rolling = false;
    double m_progress = 1.0;
    std::optional<double> m_start; ///< nothing until the roll's first frame
    std::vector<Glyph> m_glyphs;
    QColor m_glyphColor;
    double m_glyphScale = 0.0;
};

} // namespace amperly
