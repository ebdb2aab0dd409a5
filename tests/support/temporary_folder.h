// A folder of its own for one test, gone with it, and the few things people do to files in one.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

namespace amperly {

/// Empty where there is no such file.
inline std::string contentsOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Truncates and writes, as a shell's redirection does.
inline void writeInPlace(const std::filesystem::path& path, std::string_view contents)
{
    std::ofstream(path, std::ios::binary) << contents;
}

/// Writes beside and renames, as careful editors do.
inline void replaceFile(const std::filesystem::path& path, std::string_view contents)
{
    const std::filesystem::path unfinished = path.string() + "~new";
    writeInPlace(unfinished, contents);
    std::filesystem::rename(unfinished, path);
}

inline std::set<std::string> namesIn(const std::filesystem::path& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename());
    return names;
}

class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "amperly-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        m_path = std::filesystem::canonical(pattern);
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::string operator/(std::string_view name) const { return m_path / name; }
    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

    /// Writes a file with the folders above it.
    void write(std::string_view name, std::string_view contents) const
    {
        std::filesystem::create_directories((m_path / name).parent_path());
        writeInPlace(m_path / name, contents);
    }

private:
    std::filesystem::path m_path;
};

} // namespace amperly
