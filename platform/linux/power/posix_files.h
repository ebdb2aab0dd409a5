// SystemFiles of the running system.
#pragma once

#include "platform/linux/power/kernel_events.h"
#include "platform/linux/power/system_files.h"

#include <vector>

namespace amperly {

class PosixFiles final : public SystemFiles {
public:
    [[nodiscard]] int open(const char* path, Kind kind) override;
    [[nodiscard]] std::ptrdiff_t read(int handle, std::span<char> into) override;
    [[nodiscard]] bool list(int directory, std::string& names) override;
    void close(int handle) override;
    [[nodiscard]] bool devicesChanged() override { return m_events.devicesChanged(); }

private:
    KernelEvents m_events;
    /// By descriptor: an ordinary file, which someone may replace, rather than a kernel attribute.
    std::vector<bool> m_isReplaceable;
};

} // namespace amperly
