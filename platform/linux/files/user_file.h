// Reading and replacing files of the user's, in whose place there may be anything: a folder, a
// pipe, a link to an endless device, a file of another user's. A read is bounded and waits for
// nobody. A file is replaced whole or not at all: the new one is complete and on the disk before
// it takes the old one's name, so that neither a crash nor a full disk leaves half of either.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <system_error>

namespace amperly {

/// Two hundred times what all preferences take. What is larger is something else.
inline constexpr std::size_t kLargestUserFile = 128 * 1024;

/// What was found at a path.
struct UserFile {
    enum class State {
        Missing,
        Readable,
        Unreadable, ///< no permission, a folder, too large: put aside before a write
        Untouchable ///< a device, or no answer at present: neither read nor written
    };
    State state = State::Missing;
    std::string bytes; ///< empty unless it is readable
    mode_t permissions = 0600;
    std::error_code error; ///< why it is untouchable
};

[[nodiscard]] UserFile readUserFile(const std::string& path);

/// Puts a file of `bytes` in the place of what is at `path`, which is no symbolic link and need not
/// exist. Where that fails, `path` is as it was. With `keptAs` the original keeps the first free
/// name of path.damaged, path.damaged.1 and so on, and *keptAs is that name.
[[nodiscard]] std::error_code replaceUserFile(
    const std::string& path, std::string_view bytes, mode_t permissions, std::string* keptAs = nullptr);

} // namespace amperly
