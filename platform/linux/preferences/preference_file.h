// The preferences file on the disk, and the rules for touching what somebody else may be
// editing too: it is replaced whole or not at all, it is replaced behind its symbolic link, its
// permissions stay, and what cannot be understood is put aside first and never lost.
#pragma once

#include "platform/linux/preferences/ini_document.h"

#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <system_error>

namespace amperly {

/// New texts by key; nothing means that the key's value is removed.
using PreferenceChanges = std::map<std::string, std::optional<std::string>, std::less<>>;

class PreferenceFile {
public:
    /// What was found.
    struct Contents {
        enum class State {
            Missing,
            Readable,
            Unreadable, ///< no permission, a folder, too large: put aside before a write
            Untouchable ///< a device, or no answer at present: neither read nor written
        };
        State state = State::Missing;
        std::string bytes;
        mode_t permissions = 0600;
        std::error_code error; ///< why it is untouchable
    };

    /// Nothing is touched yet; neither the file nor its folder has to exist.
    explicit PreferenceFile(std::string path);

    [[nodiscard]] const std::string& path() const { return m_path; }

    [[nodiscard]] Contents read() const;

    /// Applies `changes` to the file as it is now, which `written` then holds. Where that fails
    /// the file is as it was.
    [[nodiscard]] std::error_code change(const PreferenceChanges& changes, IniDocument& written) const;

private:
    std::string m_path;
};

/// Where a symbolic link at `path` leads in the end, whether or not something is there; `path`
/// itself where it is no link.
[[nodiscard]] std::string behindLinks(const std::string& path);

} // namespace amperly
