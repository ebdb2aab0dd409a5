#include "platform/linux/desktop/linux_desktop.h"

#include <QGuiApplication>
#include <QScreen>
#include <qpa/qplatformnativeinterface.h>

#include <cstdio>
#include <syslog.h>
#include <system_error>

namespace amperly {

namespace {

using SetTime = void (*)(QScreen*, quint32);

/// A function that the toolkit offers by name; null where it does not.
SetTime function(QPlatformNativeInterface& native, const char* name)
{
    // By way of a type without parameters, which says that the one offered is not the real one.
    return reinterpret_cast<SetTime>(
        reinterpret_cast<void (*)()>(native.nativeResourceFunctionForScreen(name)));
}

/// Says that the user deals with this program now. Window managers on X11 compare that moment between
/// programs to decide who may come to the front. Does nothing on other windowing systems.
void takeUserTime()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return;
    QScreen* const screen = QGuiApplication::primaryScreen();
    QPlatformNativeInterface* const native = QGuiApplication::platformNativeInterface();
    const SetTime setUserTime = function(*native, "setappusertime");
    const SetTime setTime = function(*native, "setapptime");
    if (screen == nullptr || setUserTime == nullptr || setTime == nullptr)
        return;
    // The server's own clock, by a round trip.
    const auto now = static_cast<quint32>(
        reinterpret_cast<quintptr>(native->nativeResourceForScreen("gettimestamp", screen)));
    setTime(screen, now);
    setUserTime(screen, now);
}

} // namespace

std::filesystem::path Installation::standardPrograms()
{
    return AMPERLY_INSTALLED_PROGRAMS;
}

std::filesystem::path Installation::runningProgram()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

LinuxDesktop::LinuxDesktop(SingleInstance& instance, Installation installation, Launch launch)
    : m_instance(instance), m_installation(std::move(installation)), m_launch(std::move(launch))
{
}

void LinuxDesktop::openAddress(std::string_view address)
{
    if (m_leavingHandler)
        m_leavingHandler();
    if (!m_launch({"xdg-open", std::string(address)}))
        warn("Amperly: couldn't start xdg-open");
}

void LinuxDesktop::log(std::string_view line)
{
    openlog("amperly", 0, LOG_USER);
    syslog(LOG_USER | LOG_WARNING, "%.*s", static_cast<int>(line.size()), line.data());
    closelog(); // one line in a run is no reason to keep a descriptor
}

void LinuxDesktop::warn(std::string_view line)
{
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

void LinuxDesktop::onReopen(std::function<void()> handler)
{
    m_instance.onActivated(std::move(handler));
}

void LinuxDesktop::activate()
{
    // The click that led here went to the panel, so the window manager has not seen the user
    // with this program for a while and would keep its windows behind.
    takeUserTime();
    if (m_activateHandler)
        m_activateHandler();
}

void LinuxDesktop::quit()
{
    QCoreApplication::quit();
}

std::optional<int> LinuxDesktop::visibleScreenHeight() const
{
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return std::nullopt;
    return screen->availableGeometry().height();
}

bool LinuxDesktop::isInstalled() const
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::canonical(m_installation.program, error);
    if (error)
        return false;
    const std::filesystem::path programs = std::filesystem::canonical(m_installation.programs, error);
    return !error && program.parent_path() == programs;
}

std::optional<std::string> LinuxDesktop::shortVersion() const
{
    return m_installation.version;
}

} // namespace amperly
