// A folder of its own for one test, and the few things people do to files in one.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <unistd.h>

namespace amperly {

class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern = testing::TempDir() + "amperly-preferences-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        m_path = std::filesystem::canonical(pattern);
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::string operator/(std::string_view name) const { return m_path / name; }
    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

inline std::string contentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Truncates and writes, as a shell's redirection does.
inline void writeInPlace(const std::string& path, std::string_view contents)
{
    std::ofstream(path, std::ios::binary) << contents;
}

/// Writes beside and renames, as careful editors do.
inline void replaceFile(const std::string& path, std::string_view contents)
{
    writeInPlace(path + "~new", contents);
    std::filesystem::rename(path + "~new", path);
}

inline std::set<std::string> namesIn(const std::filesystem::path& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename());
    return names;
}

/// Permissions bind everybody but the superuser: a test about them hands its folder to an
/// ordinary user and goes on as that one. Without effect where it is one already.
class AsOrdinaryUser {
public:
    explicit AsOrdinaryUser(const TemporaryFolder& folder)
    {
        if (geteuid() != 0)
            return;
        m_isSuperuser = true;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
            handOver(entry.path());
        handOver(folder.path());
        EXPECT_EQ(seteuid(kNobody), 0);
    }
    ~AsOrdinaryUser()
    {
        if (m_isSuperuser) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

private:
    static constexpr uid_t kNobody = 65534;

    static void handOver(const std::filesystem::path& path)
    {
        EXPECT_EQ(lchown(path.c_str(), kNobody, static_cast<gid_t>(-1)), 0);
    }

    bool m_isSuperuser = false;
};

} // namespace amperly
