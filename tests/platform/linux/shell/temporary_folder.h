// A folder that ends with the test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace amperly {

class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "amperly-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            std::abort();
        m_path = std::filesystem::canonical(name);
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

    void write(const std::filesystem::path& name, std::string_view contents) const
    {
        std::filesystem::create_directories((m_path / name).parent_path());
        std::ofstream(m_path / name) << contents;
    }

    [[nodiscard]] std::string read(const std::filesystem::path& name) const
    {
        std::ifstream stream(m_path / name);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path m_path;
};

} // namespace amperly
