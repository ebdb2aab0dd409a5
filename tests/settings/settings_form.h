// The whole form on a simulated desktop, with preferences, readings and the login item in the
// test's hands.
#pragma once

#include "platform/memory_preference_store.h"
#include "platform/simulated/desktop/fake_login_item.h"
#include "platform/simulated/desktop/recording_desktop.h"
#include "prefs/pref.h"
#include "settings/picker.h"
#include "settings/segmented_control.h"
#include "settings/settings_view.h"
#include "settings/status_preview.h"
#include "settings/toggle_switch.h"
#include "tests/settings/user.h"
#include "tests/support/number_environment.h"
#include "tests/support/pinned_drawing.h"

#include <QAbstractButton>
#include <QRadioButton>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace amperly {

inline const NumberEnvironment kNumbers{"en_US.UTF-8"};

class SettingsFormTest : public testing::Test {
protected:
    SettingsFormTest()
    {
        preferences.registerDefaults(Pref::defaults());
        desktop.setShortVersion("1.2.3");
    }

    void open()
    {
        view = std::make_unique<SettingsView>(live, loginItem, desktop);
        view->show();
    }

    /// The control with this spoken name.
    template <typename Control>
    Control& control(const char* name)
    {
        for (Control* const each : view->findChildren<Control*>()) {
            if (each->accessibleName() == QString::fromUtf8(name))
                return *each;
        }
        throw std::invalid_argument(name);
    }

    /// findChildren() knows the toolkit's classes only.
    ToggleSwitch& toggle(const char* name) { return dynamic_cast<ToggleSwitch&>(control<QCheckBox>(name)); }
    Picker& picker(const char* name) { return dynamic_cast<Picker&>(control<QComboBox>(name)); }
    QAbstractButton& button(const char* name) { return control<QAbstractButton>(name); }
    SegmentedControl& segments(const char* name)
    {
        return dynamic_cast<SegmentedControl&>(control<QWidget>(name));
    }

    StatusPreview& preview()
    {
        for (QWidget* const each : view->findChildren<QWidget*>()) {
            if (auto* const found = dynamic_cast<StatusPreview*>(each))
                return *found;
        }
        throw std::invalid_argument("preview");
    }

    static void choose(SegmentedControl& control, std::size_t index) { click(*control.segments().at(index)); }

    MemoryPreferenceStore preferences;
    FakeLoginItem loginItem;
    RecordingDesktop desktop;
    LiveModel live;
    std::unique_ptr<SettingsView> view;

private:
    PinnedDrawing m_drawing;
    Injected<PreferenceStore> m_currentPreferences{preferences};
};

} // namespace amperly
