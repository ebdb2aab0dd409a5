// SystemFiles of the running system, and the kernel's own announcements of devices that come and go.
#pragma once

#include "platform/linux/power/system_files.h"

#include <vector>

namespace amperly {

class PosixFiles final : public SystemFiles {
public:
    PosixFiles() = default;
    ~PosixFiles() override;
    PosixFiles(const PosixFiles&) = delete;
    PosixFiles& operator=(const PosixFiles&) = delete;

    [[nodiscard]] int open(const char* path, Kind kind) override;
    [[nodiscard]] std::ptrdiff_t read(int handle, std::span<char> into) override;
    [[nodiscard]] bool list(int directory, std::string& names) override;
    void close(int handle) override;

    /// The first call starts listening to the kernel; where that is not allowed (some sandboxes)
    /// the answer is always false. Costs one system call while nothing happens, and no daemon.
    [[nodiscard]] bool devicesChanged() override;

private:
    enum class Listening { NotTried, Yes, Unavailable };

    void listen();

    Listening m_listening = Listening::NotTried;
    int m_socket = -1;
    /// By descriptor: an ordinary file, which someone may replace, rather than a kernel attribute.
    std::vector<bool> m_isReplaceable;
};

} // namespace amperly
