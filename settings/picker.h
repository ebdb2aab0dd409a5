// One of a list of options, which opens on request. The list is the toolkit's own; closed, it is
// drawn like the form's other controls.
#pragma once

#include "settings/choice_control.h"

#include <QComboBox>

namespace amperly {

class Picker : public QComboBox, public ChoiceControl {
public:
    Picker();

    /// Adds an option at the end.
    void addOption(const QString& text, const QIcon& icon = {}) { addItem(icon, text); }

    void setChoice(std::optional<int> index) override;
    [[nodiscard]] std::optional<int> choice() const override;
    void onChosen(std::function<void(int)> handler) override { m_chosen = std::move(handler); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] int iconRoom() const;

    std::function<void(int)> m_chosen;
    bool m_isShowing = false; ///< the change on its way is not the user's
};

} // namespace amperly
