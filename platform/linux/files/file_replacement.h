// One replacement of a file: the new one is complete and on the disk before it takes the old
// one's name, so that neither a crash nor a full disk leaves half of either. The steps follow
// each other without questions; after the first that fails the others do nothing.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>
#include <system_error>

namespace amperly {

class FileReplacement {
public:
    /// Starts a new file beside `target`, which is no symbolic link and need not exist.
    FileReplacement(std::string target, mode_t permissions);

    /// Takes the new file away again unless it was committed.
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    void write(std::string_view bytes);

    /// Gives what is at the target the first free name of target.damaged, target.damaged.1, and
    /// so on.
    void keepOriginalAside();

    /// Gives the new file the target's name.
    void commit();

    [[nodiscard]] std::error_code error() const { return m_error; }

private:
    void fail(int reason);
    [[nodiscard]] int tryKeepingAs(const std::string& name) const;

    std::string m_target;
    std::string m_path; ///< of the new file; empty once it has the target's name
    int m_descriptor = -1;
    std::error_code m_error;
};

} // namespace amperly
