// Files and folders of sysfs that stay open, so that looking again costs a single system call.
#pragma once

#include "platform/linux/power/system_files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace amperly {

/// Exponential backoff: each failure in a row doubles the number of turns to skip. Some drivers
/// write a line to the kernel's log for every failed read.
class Backoff {
public:
    /// To be asked once a turn: whether this turn may try.
    [[nodiscard]] bool isDue();
    void failed();
    void succeeded() { *this = Backoff(); }

private:
    std::uint16_t m_turnsToSkip = 0;
    std::uint16_t m_nextTurnsToSkip = 1;
};

/// One small text file.
class KeptFile {
public:
    enum class Outcome {
        Read,
        NotThere, ///< there is no such file, or it may not be opened: nothing was asked
        Skipped, ///< it failed lately: nothing was asked
        Unknown, ///< the driver has no value now
        NoDevice, ///< the driver has no value now, or the device is no more: both say the same
        Replaced, ///< another file has this one's name now
        Failed, ///< anything else, an empty file included; it is skipped for some turns
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

    /// Reads the whole file. To be called at most once a turn, as skipping is counted in turns.
    [[nodiscard]] Reading read(std::span<char> buffer);

    /// Skips the file for some turns, twice as many at each call until it reads well again.
    void backOff() { m_backoff.failed(); }

private:
    SystemFiles* m_files = nullptr;
    int m_handle = -1;
    Backoff m_backoff;
};

/// A folder, listed again now and then: the devices of one class, or the files of a device.
class KeptFolder {
public:
    /// `files` must outlive it.
    KeptFolder(SystemFiles& files, std::string path);
    ~KeptFolder();
    KeptFolder(const KeptFolder&) = delete;
    KeptFolder& operator=(const KeptFolder&) = delete;

    /// Lists the folder; whether the names differ from the last time. A folder that can't be
    /// listed has no names, and is tried again the next time.
    [[nodiscard]] bool changed();

    [[nodiscard]] std::vector<std::string> names() const;
    [[nodiscard]] const std::string& path() const { return m_path; }

private:
    void close();

    SystemFiles& m_files;
    std::string m_path;
    int m_directory = -1;
    std::string m_names; ///< each followed by a NUL
    std::string m_newNames;
};

/// The whole of a file that is needed once, without blanks around it; empty where it can't be read.
[[nodiscard]] std::string readOnce(SystemFiles& files, const std::string& path);

/// The number in a text that has nothing else in it.
[[nodiscard]] std::optional<std::int64_t> parseNumber(std::string_view text);

/// What may stand around a value in a file of sysfs.
inline constexpr std::string_view kSysfsBlanks{"\n \t\r\0", 5};

} // namespace amperly
