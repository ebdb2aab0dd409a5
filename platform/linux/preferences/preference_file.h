// Writing the preferences file, and the rules for touching what somebody else may be editing too:
// only what changed is changed, the file is replaced behind its symbolic link, its permissions
// stay, and what cannot be understood is put aside first and never lost.
#pragma once

#include "platform/linux/files/ini_document.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <system_error>

namespace amperly {

/// New texts by key; nothing means that the key's value is removed.
using PreferenceChanges = std::map<std::string, std::optional<std::string>, std::less<>>;

/// What became of a write.
struct WrittenPreferences {
    std::error_code error{}; ///< where there is one the file is as it was
    IniDocument document{}; ///< what the file holds now
    std::string keptAs{}; ///< the name that a damaged original has now; empty where it was sound
};

/// Applies `changes` to the file at `path` as it is now. Neither the file nor its folder has to
/// exist. Who writes it holds a lock on path.lock for milliseconds, on a disk that is very busy for
/// seconds; one that holds it for longer than `longestWait` has been stopped, and is not waited for.
[[nodiscard]] WrittenPreferences writePreferences(const std::string& path, const PreferenceChanges& changes,
    std::chrono::milliseconds longestWait = std::chrono::seconds(5));

} // namespace amperly
