// The desktop as far as every Linux desktop agrees on it, and where this program stands in it.
#pragma once

#include "platform/desktop.h"
#include "platform/linux/desktop/launcher.h"
#include "platform/linux/desktop/single_instance.h"

#include <filesystem>

namespace amperly {

/// Where programs are installed and where this one runs from.
struct Installation {
    /// The folder that the build installs the program into.
    [[nodiscard]] static std::filesystem::path standardPrograms();

    /// The file that this process runs; empty if the kernel does not tell.
    [[nodiscard]] static std::filesystem::path runningProgram();

    std::filesystem::path programs = standardPrograms();
    std::filesystem::path program = runningProgram();
    std::optional<std::string> version{}; ///< as the installation states it
};

class LinuxDesktop : public Desktop {
public:
    using Launch = std::function<bool(const CommandLine&)>;

    /// `instance` tells of later starts and must outlive the desktop.
    LinuxDesktop(SingleInstance& instance, Installation installation, Launch launch = startDetached);

    void openAddress(std::string_view address) override;
    void log(std::string_view line) override;
    /// Tells whoever started the program, on standard error. The system log is for what nobody
    /// would learn of otherwise.
    static void warn(std::string_view line);

    void onReopen(std::function<void()> handler) override;
    void activate() override;

    /// Called before a window comes to the front.
    void onActivate(std::function<void()> handler) { m_activateHandler = std::move(handler); }

    /// Called before another program is asked to come to the front: what keeps the pointer and the
    /// keyboard to itself would lie over it.
    void onLeaving(std::function<void()> handler) { m_leavingHandler = std::move(handler); }

    void quit() override;
    [[nodiscard]] std::optional<int> visibleScreenHeight() const override;
    [[nodiscard]] bool isInstalled() const override;
    [[nodiscard]] std::optional<std::string> shortVersion() const override;

private:
    SingleInstance& m_instance;
    Installation m_installation;
    Launch m_launch;
    std::function<void()> m_activateHandler;
    std::function<void()> m_leavingHandler;
};

} // namespace amperly
