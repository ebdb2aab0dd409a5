#include "platform/linux/desktop/linux_display_settings.h"

#include "platform/linux/x11/x11_connection.h"
#include "tests/platform/linux/x11/serialised_settings.h"
#include "tests/support/private_display.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

/// On an X server of its own, where nobody else publishes settings.
class X11DisplaySettingsTest : public PrivateDisplayTest {
protected:
    /// As a desktop's daemon does, which here shares the toolkit's connection.
    static void publish(const SerialisedSettings& settings)
    {
        xcb_connection_t* const connection = x11Connection();
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        const xcb_window_t owner = xcb_generate_id(connection);
        xcb_create_window(connection, 0, owner, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
            XCB_COPY_FROM_PARENT, 0, nullptr);
        const xcb_atom_t property = internAtom(connection, "_XSETTINGS_SETTINGS");
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, owner, property, property, 8,
            static_cast<std::uint32_t>(settings.bytes().size()), settings.bytes().data());
        xcb_set_selection_owner(connection, owner, internAtom(connection, "_XSETTINGS_S0"), XCB_CURRENT_TIME);
    }

    LinuxDisplaySettings display{nullptr, "/nonexistent", CurrentDesktop("XFCE")};
};

TEST_F(X11DisplaySettingsTest, ADesktopThatPublishesNoAnimationsReducesMotion)
{
    EXPECT_FALSE(display.reducesMotion());
    publish(SerialisedSettings(true, 1).text("Net/ThemeName", "Adwaita"));
    EXPECT_FALSE(display.reducesMotion());
    publish(SerialisedSettings(true, 1).integer("Gtk/EnableAnimations", 0));
    EXPECT_TRUE(display.reducesMotion());
    publish(SerialisedSettings(true, 1).integer("Gtk/EnableAnimations", 1));
    EXPECT_FALSE(display.reducesMotion());
}

TEST_F(X11DisplaySettingsTest, AThemeForHighContrastIsSeenAtTheNextLook)
{
    int changes = 0;
    display.onChanged([&] { ++changes; });
    for (const char* const theme : {"HighContrast", "HighContrastInverse"}) {
        publish(SerialisedSettings(true, 1).text("Net/ThemeName", theme));
        display.refresh();
        EXPECT_TRUE(display.increasesContrast()) << theme;
    }
    EXPECT_EQ(changes, 1);
    publish(SerialisedSettings(true, 1).text("Net/ThemeName", "Adwaita"));
    display.refresh();
    EXPECT_FALSE(display.increasesContrast());
    EXPECT_EQ(changes, 2);
}

} // namespace
} // namespace amperly
