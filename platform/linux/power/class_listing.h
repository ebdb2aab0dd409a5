// The devices of one kind: a folder in /sys/class, listed again now and then.
#pragma once

#include "platform/linux/power/system_files.h"

#include <string>
#include <vector>

namespace amperly {

class ClassListing {
public:
    ClassListing(SystemFiles& files, std::string path);
    ~ClassListing();
    ClassListing(const ClassListing&) = delete;
    ClassListing& operator=(const ClassListing&) = delete;

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

} // namespace amperly
