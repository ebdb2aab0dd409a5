#include "platform/linux/xembed/tray_protocol.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr TrayAtoms kAtoms{.selection = 100, .manager = 101, .opcode = 102, .xembed = 103};

xcb_client_message_event_t message(xcb_atom_t type, std::uint32_t second, std::uint32_t third)
{
    xcb_client_message_event_t message{};
    message.format = 32;
    message.type = type;
    message.data.data32[1] = second;
    message.data.data32[2] = third;
    return message;
}

TEST(DockRequest, TellsTheTrayWhichWindowToTakeIn)
{
    const xcb_client_message_event_t request = dockRequest(7, 8, kAtoms);
    EXPECT_EQ(request.response_type, XCB_CLIENT_MESSAGE);
    EXPECT_EQ(request.format, 32);
    EXPECT_EQ(request.window, 7U);
    EXPECT_EQ(request.type, 102U);
    EXPECT_EQ(request.data.data32[1], 0U);
    EXPECT_EQ(request.data.data32[2], 8U);
}

TEST(AnnouncedTray, IsTheNewOwnerOfThisScreensSelection)
{
    EXPECT_EQ(announcedTray(message(101, 100, 55), kAtoms), 55U);
}

TEST(AnnouncedTray, IgnoresManagersOfOtherThings)
{
    EXPECT_EQ(announcedTray(message(101, 99, 55), kAtoms), std::nullopt);
    EXPECT_EQ(announcedTray(message(102, 100, 55), kAtoms), std::nullopt);
}

TEST(EmbeddedNotice, IsTheFirstOfTheEmbeddersMessages)
{
    EXPECT_TRUE(isEmbeddedNotice(message(103, 0, 0), kAtoms));
    EXPECT_FALSE(isEmbeddedNotice(message(103, 1, 0), kAtoms)); // the panel's window became active
    EXPECT_FALSE(isEmbeddedNotice(message(102, 0, 0), kAtoms));
}

TEST(LeastSizeHints, StateTheLeastSizeAlone)
{
    const auto hints = leastSizeHints({110, 22});
    EXPECT_EQ(hints[0], 16U);
    EXPECT_EQ(hints[5], 110U);
    EXPECT_EQ(hints[6], 22U);
}

} // namespace
} // namespace amperly
