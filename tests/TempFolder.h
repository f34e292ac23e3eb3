#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <unistd.h>

/// A folder of its own that goes with the object; in memory where the system has such a place,
/// because tests commit thousands of times and none of them cuts the power.
class CTempFolder
{
public:
    CTempFolder()
    {
        std::string const base = ::access("/dev/shm", W_OK) == 0
            ? "/dev/shm"
            : std::filesystem::temp_directory_path().string();
        std::string name = base + "/corvana-test-XXXXXX";
        m_path = ::mkdtemp(name.data()) == nullptr ? "" : name;
    }
    ~CTempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    CTempFolder(CTempFolder const&) = delete;
    CTempFolder& operator=(CTempFolder const&) = delete;

    std::filesystem::path const& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

inline std::string ReadFile(std::filesystem::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
inline void WriteFile(std::filesystem::path const& path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}
