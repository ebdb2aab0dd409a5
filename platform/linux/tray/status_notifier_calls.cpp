// What hosts may ask of the item, and the answers.

#include "platform/linux/tray/status_notifier_item.h"

#include "platform/linux/tray/markup.h"
#include "platform/linux/tray/pixmap.h"

#include <array>
#include <string_view>

namespace amperly {

namespace {

StatusNotifierItem& itemAt(void* self)
{
    return *static_cast<StatusNotifierItem*>(self);
}

struct ConstantText {
    std::string_view property;
    const char* value;
};

/// Every other text is empty, IconName above all: a name there would win over the pixmaps.
constexpr std::array kConstantTexts{
    ConstantText{"Category", "Hardware"},
    ConstantText{"Id", "amperly"},
};

} // namespace

const sd_bus_vtable StatusNotifierItem::kInterface[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Category", "s", constantText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Id", "s", constantText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Title", "s", title, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Status", "s", status, 0, 0),
    SD_BUS_PROPERTY("WindowId", "i", windowId, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("ItemIsMenu", "b", itemIsMenu, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Menu", "o", menuPath, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "s", constantText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconName", "s", constantText, 0, 0),
    SD_BUS_PROPERTY("IconPixmap", "a(iiay)", iconPixmap, 0, 0),
    SD_BUS_PROPERTY("IconAccessibleDesc", "s", spokenLabel, 0, SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
    // Explicit: left out where a host asks for everything, as most do after each change.
    SD_BUS_PROPERTY("OverlayIconName", "s", constantText, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_PROPERTY("OverlayIconPixmap", "a(iiay)", noPixmap, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_PROPERTY("AttentionIconName", "s", constantText, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_PROPERTY("AttentionIconPixmap", "a(iiay)", noPixmap, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_PROPERTY("AttentionMovieName", "s", constantText, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", toolTip, 0, 0),
    SD_BUS_METHOD("Activate", "ii", "", activate, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("SecondaryActivate", "ii", "", activate, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ContextMenu", "ii", "", contextMenu, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Scroll", "is", "", scroll, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ProvideXdgActivationToken", "s", "", provideToken, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("XAyatanaSecondaryActivate", "u", "", secondaryActivate, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("NewIcon", "", 0),
    SD_BUS_SIGNAL("NewToolTip", "", 0),
    SD_BUS_SIGNAL("NewTitle", "", 0),
    SD_BUS_SIGNAL("NewStatus", "s", 0),
    SD_BUS_VTABLE_END,
};

const sd_bus_vtable StatusNotifierItem::kLabelInterface[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("XAyatanaLabel", "s", label, 0, 0),
    SD_BUS_PROPERTY("XAyatanaLabelGuide", "s", constantText, 0, SD_BUS_VTABLE_PROPERTY_EXPLICIT),
    SD_BUS_SIGNAL("XAyatanaNewLabel", "ss", 0),
    SD_BUS_VTABLE_END,
};

int StatusNotifierItem::constantText(
    sd_bus*, Text, Text, Text property, sd_bus_message* reply, void*, sd_bus_error*)
{
    const char* value = "";
    for (const ConstantText& constant : kConstantTexts) {
        if (constant.property == property)
            value = constant.value;
    }
    return sd_bus_message_append(reply, "s", value);
}

int StatusNotifierItem::status(sd_bus*, Text, Text, Text, sd_bus_message* reply, void* self, sd_bus_error*)
{
    return sd_bus_message_append(reply, "s", itemAt(self).statusText());
}

int StatusNotifierItem::title(sd_bus*, Text, Text, Text, sd_bus_message* reply, void* self, sd_bus_error*)
{
    return sd_bus_message_append(reply, "s", itemAt(self).m_title.c_str());
}

int StatusNotifierItem::menuPath(sd_bus*, Text, Text, Text, sd_bus_message* reply, void* self, sd_bus_error*)
{
    const std::string& path = itemAt(self).m_menuPath;
    return sd_bus_message_append(reply, "o", path.empty() ? "/NO_DBUSMENU" : path.c_str());
}

int StatusNotifierItem::itemIsMenu(sd_bus*, Text, Text, Text, sd_bus_message* reply, void*, sd_bus_error*)
{
    return sd_bus_message_append(reply, "b", 0); // said, because some hosts take silence for yes
}

int StatusNotifierItem::windowId(sd_bus*, Text, Text, Text, sd_bus_message* reply, void*, sd_bus_error*)
{
    return sd_bus_message_append(reply, "i", 0);
}

int StatusNotifierItem::iconPixmap(
    sd_bus*, Text, Text, Text, sd_bus_message* reply, void* self, sd_bus_error*)
{
    const StatusNotifierItem& item = itemAt(self);
    int result = sd_bus_message_open_container(reply, 'a', "(iiay)");
    for (const CoverageMask& mask : item.m_pixmaps) {
        if (result >= 0)
            result = sd_bus_message_open_container(reply, 'r', "iiay");
        if (result >= 0)
            result = sd_bus_message_append(reply, "ii", mask.width, mask.height);
        void* bytes = nullptr;
        if (result >= 0)
            result = sd_bus_message_append_array_space(reply, 'y', pixmapSize(mask), &bytes);
        if (result >= 0) {
            // Written straight into the message: pixels exist nowhere else.
            writePixmap(mask, item.m_ink, item.m_profile.pixmapAlpha,
                {static_cast<std::uint8_t*>(bytes), pixmapSize(mask)});
            result = sd_bus_message_close_container(reply);
        }
    }
    return result < 0 ? result : sd_bus_message_close_container(reply);
}

int StatusNotifierItem::noPixmap(sd_bus*, Text, Text, Text, sd_bus_message* reply, void*, sd_bus_error*)
{
    return sd_bus_message_append(reply, "a(iiay)", 0);
}

int StatusNotifierItem::toolTip(sd_bus*, Text, Text, Text, sd_bus_message* reply, void* self, sd_bus_error*)
{
    const StatusNotifierItem& item = itemAt(self);
    if (!item.m_toolTip)
        return sd_bus_message_append(reply, "(sa(iiay)ss)", "", 0, "", "");
    const ToolTipText reading = item.m_profile.toolTip;
    const std::string title = reading == ToolTipText::Markup ? asMarkup(*item.m_toolTip) : *item.m_toolTip;
    const std::string text
        = reading == ToolTipText::Plain ? item.m_spokenLabel : asMarkup(item.m_spokenLabel);
    return sd_bus_message_append(reply, "(sa(iiay)ss)", "", 0, title.c_str(), text.c_str());
}

int StatusNotifierItem::spokenLabel(
    sd_bus*, Text, Text, Text, sd_bus_message* reply, void* self, sd_bus_error*)
{
    return sd_bus_message_append(reply, "s", itemAt(self).m_spokenLabel.c_str());
}

int StatusNotifierItem::label(sd_bus*, Text, Text, Text, sd_bus_message* reply, void* self, sd_bus_error*)
{
    return sd_bus_message_append(reply, "s", itemAt(self).m_label.c_str());
}

int StatusNotifierItem::click(sd_bus_message* call, ClickButton button, bool hasPlace)
{
    StatusClick click{.button = button, .anchor = {}};
    if (hasPlace) {
        ScreenPoint place;
        const int result = sd_bus_message_read(call, "ii", &place.x, &place.y);
        if (result < 0)
            return result;
        if (m_profile.globalCoordinates)
            click.anchor = place;
    }
    if (m_clickHandler)
        m_clickHandler(click);
    return sd_bus_reply_method_return(call, nullptr);
}

int StatusNotifierItem::activate(sd_bus_message* call, void* self, sd_bus_error*)
{
    return itemAt(self).click(call, ClickButton::Left, true);
}

int StatusNotifierItem::contextMenu(sd_bus_message* call, void* self, sd_bus_error*)
{
    return itemAt(self).click(call, ClickButton::Right, true);
}

int StatusNotifierItem::secondaryActivate(sd_bus_message* call, void* self, sd_bus_error*)
{
    return itemAt(self).click(call, ClickButton::Left, false);
}

int StatusNotifierItem::scroll(sd_bus_message* call, void*, sd_bus_error*)
{
    return sd_bus_reply_method_return(call, nullptr);
}

int StatusNotifierItem::provideToken(sd_bus_message* call, void* self, sd_bus_error*)
{
    const char* token = nullptr;
    const int result = sd_bus_message_read(call, "s", &token);
    if (result < 0)
        return result;
    if (*token && itemAt(self).m_tokenHandler)
        itemAt(self).m_tokenHandler(token);
    return sd_bus_reply_method_return(call, nullptr);
}

} // namespace amperly
