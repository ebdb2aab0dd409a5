// A desktop that keeps account of what it is asked for.
#pragma once

#include "platform/desktop.h"

#include <utility>
#include <vector>

namespace amperly {

class RecordingDesktop : public Desktop {
public:
    void openAddress(std::string_view address) override { m_openedAddresses.emplace_back(address); }
    void log(std::string_view line) override { m_logLines.emplace_back(line); }
    void onReopen(std::function<void()> handler) override { m_reopened = std::move(handler); }
    void activate() override { ++m_activations; }
    void quit() override { m_quitRequested = true; }
    [[nodiscard]] std::optional<int> visibleScreenHeight() const override { return m_visibleScreenHeight; }
    [[nodiscard]] bool isInstalled() const override { return m_installed; }
    [[nodiscard]] std::optional<std::string> shortVersion() const override { return m_shortVersion; }

    /// The user starts the program again.
    void reopen() const
    {
        if (m_reopened)
            m_reopened();
    }

    // What the desktop is like.
    void setVisibleScreenHeight(std::optional<int> points) { m_visibleScreenHeight = points; }
    void setInstalled(bool installed) { m_installed = installed; }
    void setShortVersion(std::optional<std::string> version) { m_shortVersion = std::move(version); }

    // What it was asked for.
    [[nodiscard]] const std::vector<std::string>& openedAddresses() const { return m_openedAddresses; }
    [[nodiscard]] const std::vector<std::string>& logLines() const { return m_logLines; }
    [[nodiscard]] int activations() const { return m_activations; }
    [[nodiscard]] bool quitRequested() const { return m_quitRequested; }

private:
    std::function<void()> m_reopened;
    std::optional<int> m_visibleScreenHeight = 800;
    bool m_installed = false;
    std::optional<std::string> m_shortVersion;
    std::vector<std::string> m_openedAddresses;
    std::vector<std::string> m_logLines;
    int m_activations = 0;
    bool m_quitRequested = false;
};

} // namespace amperly
