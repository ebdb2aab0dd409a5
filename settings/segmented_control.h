// A few options side by side, one of them chosen: to screen readers a group of radio buttons. Tab
// comes to it once; the arrow keys choose.
#pragma once

#include "settings/choice_control.h"
#include "settings/glide.h"

#include <QStringList>
#include <QWidget>

#include <vector>

class QAbstractButton;

namespace amperly {

class SegmentedControl : public QWidget, public ChoiceControl {
public:
    explicit SegmentedControl(const QStringList& options);

    void setChoice(std::optional<int> index) override;
    [[nodiscard]] std::optional<int> choice() const override { return m_choice; }
    void onChosen(std::function<void(int)> handler) override { m_chosen = std::move(handler); }

    /// The buttons of the options, in their order.
    [[nodiscard]] const std::vector<QAbstractButton*>& segments() const { return m_segments; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Segment;

    void choose(int index);
    void moveChoice(int by);
    void layOut();

    std::vector<QAbstractButton*> m_segments;
    std::optional<int> m_choice;
    std::function<void(int)> m_chosen;
    Glide m_left{*this}; ///< where the plate under the chosen segment begins, points
};

} // namespace amperly
