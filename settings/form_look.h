// How the form looks: its lengths, its colours worked out from the desktop's, and the few strokes
// that its parts are drawn with.
#pragma once

#include <QColor>
#include <QPalette>
#include <QRectF>

class QImage;
class QPainter;
class QWidget;

namespace amperly {

/// Points.
struct FormLook {
    int width = 420;
    int minimumHeight = 300;
    int margin = 20; ///< left and right of the cards; a scroll bar has room in it
    int endMargin = 16; ///< above the first and below the last section
    int betweenSections = 16;
    int inset = 14; ///< of what stands in a card, and of headers and footers
    int rowHeight = 34;
    int headerGap = 6; ///< between a header and its card
    int footerGap = 6; ///< between a card and its footer
    int focusRoom = 3; ///< around every control, for the ring that shows the focus
    double focusLine = 2.0;
    double cardCorner = 8.0;
    double controlCorner = 6.0;
    int controlHeight = 24;
    int controlPadding = 10; ///< left and right of a control's text
    double disabledOpacity = 0.4;
};
inline constexpr FormLook kForm;

/// All opaque.
struct FormColors {
    QColor text;
    QColor secondary; ///< text of the second rank
    QColor card;
    QColor cardEdge;
    QColor separator; ///< between a card's rows
    QColor field; ///< the ground of pickers and buttons
    QColor fieldHovered;
    QColor fieldPressed;
    QColor fieldEdge;
    QColor trough; ///< what a segment or an off switch lies in
    QColor troughEdge;
    QColor off; ///< the ground of a switch that is off
    QColor offEdge;
    QColor segment; ///< the chosen one
    QColor segmentEdge;
    QColor segmentText; ///< on the chosen one
    QColor accent;
    QColor accentEdge;
    QColor knob; ///< of a switch that is on
    QColor offKnob;
    QColor offKnobEdge;

    /// Where the desktop asks for high contrast, edges are drawn in the text's colour.
    [[nodiscard]] static FormColors of(const QPalette& palette);
};

/// Whether text stands on windows with nearly all the contrast that a screen can give.
[[nodiscard]] bool isHighContrast(const QPalette& palette);

/// Draws `image` around `center`, moved by less than a pixel to lie on whole ones: between two, at a
/// scale such as 1.25, all of it would blur.
void drawCentered(QPainter& painter, const QPointF& center, const QImage& image);

/// A rounded area with an edge one pixel of the screen wide.
void drawPlate(QPainter& painter, const QRectF& area, double corner, const QColor& fill, const QColor& edge);

/// The ring around a control at `area` while `control` has the keyboard's focus, and only there
/// where the user works by keyboard.
void drawFocus(QPainter& painter, const QWidget& control, const QRectF& area, double corner);

} // namespace amperly
