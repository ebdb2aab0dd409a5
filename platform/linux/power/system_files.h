// What the kernel's figures are read through: files that are opened once and read again and
// again, directories that are listed again and again. Tests answer from memory and can fail.
//
// Errors are negative errno values. One is added to the kernel's own: ESTALE where a file was
// replaced by another of the same name, which never happens in sysfs but in every imitation of it.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace amperly {

class SystemFiles {
public:
    enum class Kind { Attribute, Directory };

    virtual ~SystemFiles() = default;

    /// A handle to the file for reading, 0 or more, or a negative errno.
    [[nodiscard]] virtual int open(const char* path, Kind kind) = 0;

    /// Reads from the file's beginning; the number of bytes, or a negative errno. A file longer
    /// than `into` is cut off.
    [[nodiscard]] virtual std::ptrdiff_t read(int handle, std::span<char> into) = 0;

    /// Replaces `names` by the directory's entries, each followed by a NUL, hidden ones left
    /// out. False where it can't be listed. Takes no memory once `names` has room.
    [[nodiscard]] virtual bool list(int directory, std::string& names) = 0;

    virtual void close(int handle) = 0;

    /// Whether devices that may matter came or went since the last call. Best effort: false
    /// proves nothing, so listing again now and then stays necessary.
    [[nodiscard]] virtual bool devicesChanged() = 0;
};

} // namespace amperly
