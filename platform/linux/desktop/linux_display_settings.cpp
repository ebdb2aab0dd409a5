#include "platform/linux/desktop/linux_display_settings.h"

#include "platform/linux/files/ini_document.h"
#include "platform/linux/files/user_file.h"
#include "platform/linux/x11/x11_settings.h"

#include <charconv>

namespace amperly {

namespace {

constexpr std::uint32_t kHigherContrast = 1; // as the portal has it

} // namespace

std::optional<double> kdeAnimationFactor(std::string_view globals)
{
    const IniDocument document(globals);
    const std::string_view number = document.written("KDE", "AnimationDurationFactor").value_or("");
    double factor = 0.0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), factor);
    if (error != std::errc() || end != number.data() + number.size())
        return std::nullopt;
    return factor;
}

LinuxDisplaySettings::LinuxDisplaySettings(
    BusConnection* connection, std::string configFolder, const CurrentDesktop& desktop)
{
    if (desktop.is("KDE"))
        m_kdeGlobals = std::move(configFolder) + "/kdeglobals";
    if (connection != nullptr) {
        m_animations.emplace(*connection, "org.gnome.desktop.interface", "enable-animations");
        m_animations->onChanged([this] { become(m_portalStopsAnimations, m_animations->value() == false); });
        m_contrast.emplace(*connection, "org.freedesktop.appearance", "contrast");
        m_contrast->onChanged(
            [this] { become(m_portalWantsContrast, m_contrast->value() == kHigherContrast); });
    }
    refresh();
}

void LinuxDisplaySettings::refresh()
{
    const std::string theme = x11TextSetting("Net/ThemeName").value_or("");
    become(m_themeHasContrast, theme.find("HighContrast") != std::string::npos);
}

bool LinuxDisplaySettings::reducesMotion() const
{
    if (m_portalStopsAnimations)
        return true;
    if (x11IntegerSetting("Gtk/EnableAnimations") == 0)
        return true;
    return !m_kdeGlobals.empty() && kdeAnimationFactor(readUserFile(m_kdeGlobals).bytes) == 0.0;
}

bool LinuxDisplaySettings::increasesContrast() const
{
    return m_portalWantsContrast || m_themeHasContrast;
}

} // namespace amperly
