#include "platform/linux/desktop/linux_desktop.h"

#include "platform/linux/desktop/user_time.h"

#include <QGuiApplication>
#include <QScreen>

#include <cstdio>
#include <syslog.h>
#include <system_error>

namespace amperly {

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
