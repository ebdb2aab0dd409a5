// The small round button on a sheet's corner that closes it, for windows that the user may not
// know how to be rid of otherwise.
#pragma once

#include <QAbstractButton>

namespace amperly {

class CloseButton : public QAbstractButton {
public:
    static constexpr int kSide = 22; ///< logical pixels

    explicit CloseButton(QWidget* parent);

    /// Where it lies on a sheet: over the upper trailing corner, so that nothing of the sheet's
    /// content has to make room.
    [[nodiscard]] static QRect positionOn(const QRect& sheet, Qt::LayoutDirection direction);

    [[nodiscard]] QSize sizeHint() const override { return {kSide, kSide}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    [[nodiscard]] QColor ground() const;
};

} // namespace amperly
