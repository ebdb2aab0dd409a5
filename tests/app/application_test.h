// The whole program on a recording desktop, with readings and time in the test's hands.
#pragma once

#include "app/app_delegate.h"
#include "platform/memory_preference_store.h"
#include "platform/simulated/desktop/simulated_platform.h"
#include "prefs/pref.h"
#include "tests/support/number_environment.h"
#include "tests/support/pinned_drawing.h"
#include "tests/support/print_sample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace amperly {

inline const NumberEnvironment kNumbers{"en_US.UTF-8"};

class ApplicationTest : public testing::Test {
protected:
    /// Starts the program; the first reading is taken at once.
    void launch()
    {
        app = std::make_unique<AppDelegate>(platform.platform());
        app->applicationDidFinishLaunching();
    }

    /// Launches, then shows `sample` as it is, whatever smoothing does.
    void launchWith(const PowerSample& sample)
    {
        readings.give(sample);
        launch();
    }

    /// The next tick, with this reading.
    void tickWith(const std::optional<PowerSample>& sample)
    {
        readings.give(sample);
        platform.advance(app->timer()->intervalSeconds());
    }

    void click(ClickButton button) { platform.statusItem.click(button); }

    [[nodiscard]] std::vector<std::string> menuTitles() const { return platform.statusItem.visibleTitles(); }

    PinnedDrawing drawing;
    MemoryPreferenceStore preferences;
    Injected<PreferenceStore> standardPreferences{preferences};
    SimulatedPlatform platform{preferences};
    ScriptedPowerSource& readings = platform.power;
    std::unique_ptr<AppDelegate> app;
};

} // namespace amperly
