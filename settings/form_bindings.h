// The controls of a form and the values behind them. What the user does to a control is written
// at once; what happens to a value elsewhere shows when showStoredValues() is called.
#pragma once

#include "settings/choice_control.h"
#include "settings/preference_binding.h"
#include "settings/toggle_switch.h"

#include <QObject>

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace amperly {

class FormBindings {
public:
    /// The controls must outlive this object.
    void bind(ToggleSwitch& control, const PreferenceBinding<bool>& binding)
    {
        bind(
            control, [binding] { return binding.value().value_or(false); },
            [binding](bool on) { binding.set(on); });
    }

    /// For a switch whose value is more than one preference.
    void bind(ToggleSwitch& control, std::function<bool()> read, std::function<void(bool)> write)
    {
        QObject::connect(&control, &ToggleSwitch::clicked, &control, std::move(write));
        add([&control, read = std::move(read)] { control.setChecked(read()); });
    }

    /// `values` are those of the control's options, in the control's order. A stored value that
    /// is none of them shows no option, and stays stored until the user chooses one.
    template <typename Value>
    void bind(
        ChoiceControl& control, const PreferenceBinding<Value>& binding, const std::vector<Value>& values)
    {
        control.onChosen(
            [binding, values](int index) { binding.set(values.at(static_cast<std::size_t>(index))); });
        add([&control, binding, values] {
            const std::optional<Value> value = binding.value();
            const auto found = value ? std::find(values.begin(), values.end(), *value) : values.end();
            control.setChoice(found == values.end()
                    ? std::nullopt
                    : std::optional(static_cast<int>(found - values.begin())));
        });
    }

    void showStoredValues() const
    {
        for (const auto& show : m_controls)
            show();
    }

private:
    void add(std::function<void()> show)
    {
        show();
        m_controls.push_back(std::move(show));
    }

    std::vector<std::function<void()>> m_controls;
};

} // namespace amperly
