// One small text file that stays open, so that reading it again costs a single system call.
#pragma once

#include "platform/linux/power/backoff.h"
#include "platform/linux/power/system_files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace amperly {

class KeptFile {
public:
    enum class Outcome {
        Read,
        NotThere, ///< there is no such file, or it may not be opened: nothing was asked
        Resting, ///< it failed lately: nothing was asked
        Unknown, ///< the driver has no value now
        NoDevice, ///< the driver has no value now, or the device is no more: both say the same
        Replaced, ///< another file has this one's name now
        Failed, ///< anything else, an empty file included; it rests
    };
    struct Reading {
        Outcome outcome = Outcome::NotThere;
        std::string_view text{}; ///< within the caller's buffer, without blanks around it
    };

    KeptFile() = default;
    KeptFile(SystemFiles& files, const std::string& path);
    ~KeptFile();
    KeptFile(KeptFile&& other) noexcept;
    KeptFile& operator=(KeptFile&& other) noexcept;

    [[nodiscard]] bool isOpen() const { return m_handle >= 0; }

    /// Reads the whole file. To be called at most once a turn, as rests are counted in turns.
    [[nodiscard]] Reading read(std::span<char> buffer);

    /// Leaves the file alone for a while, twice as long at each time until it reads well again.
    void rest() { m_backoff.failed(); }

private:
    SystemFiles* m_files = nullptr;
    int m_handle = -1;
    Backoff m_backoff;
};

/// The whole of a file that is needed once, without blanks around it; empty where it can't be read.
[[nodiscard]] std::string readOnce(SystemFiles& files, const std::string& path);

/// The number in a text that has nothing else in it.
[[nodiscard]] std::optional<std::int64_t> parseNumber(std::string_view text);

/// What may stand around a value in a file of sysfs.
inline constexpr std::string_view kSysfsBlanks{"\n \t\r\0", 5};

} // namespace amperly
