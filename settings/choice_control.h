// What a picker and a segmented control have in common: one of a few options, or none.
#pragma once

#include <functional>
#include <optional>

namespace amperly {

class ChoiceControl {
public:
    virtual ~ChoiceControl() = default;

    /// Shows the option at this index; nothing shows none. Calls no handler.
    virtual void setChoice(std::optional<int> index) = 0;

    /// The option that is shown; nothing while none is.
    [[nodiscard]] virtual std::optional<int> choice() const = 0;

    /// Called with an option's index when the user chooses it.
    virtual void onChosen(std::function<void(int)> handler) = 0;
};

} // namespace amperly
