// The user's preferences in a text file that can be read and edited by hand, one key=value to a
// line. Reads come from memory and never touch the disk. What is stored reaches the file at the
// next turn of the event loop, all of one turn in one write, and only the keys that changed do:
// two programs writing at once, or a program and an editor, keep each other's.
//
// A file that is damaged or cannot be read is no error. What can be read counts, the rest shows
// the registered defaults, and the file is kept under another name before it is written over.
#pragma once

#include "platform/linux/preferences/file_watch.h"
#include "platform/linux/preferences/preference_file.h"
#include "platform/memory_preference_store.h"

#include <QTimer>

#include <functional>
#include <string>
#include <system_error>

namespace amperly {

class IniPreferenceStore final : public MemoryPreferenceStore {
public:
    /// Given one line of text, for whoever started the program.
    using WarningHandler = std::function<void(std::string)>;

    /// Reads the file at the absolute path `path`, which need not exist, and follows what others
    /// do to it. To be made after the application object and destroyed before it. `warn` is
    /// called when a damaged file was put aside, and when values cannot be written, once until they
    /// can; they stay in memory, and every later write tries them again.
    IniPreferenceStore(std::string path, WarningHandler warn);

    /// Writes what is not yet written.
    ~IniPreferenceStore() override;

    /// Both announce at once, and only what differs. The file has text only: a value is read as
    /// the text that was written for it, "true" and "false" for a boolean.
    void set(std::string_view key, const PreferenceValue& value) override;
    void remove(std::string_view key) override;

private:
    void change(std::string_view key, std::optional<std::string> text);

    /// Returns whether others had changed the file meanwhile.
    bool writeUnwritten();
    void warn(const std::string& line) const;

    void readAgain();
    bool takeOver(const IniDocument& document);

    std::string m_path;
    WarningHandler m_warn;
    bool m_hasToldOfFailure = false;
    PreferenceChanges m_unwritten;
    QTimer m_writing;
    QTimer m_missing; ///< runs while the file is gone and may be on its way back
    FileWatch m_watch;
};

} // namespace amperly
