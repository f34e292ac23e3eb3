#include "store/services/BackupManifest.h"

#include "platform/db/Files.h"
#include "store/services/BackupFolder.h"
#include "store/text/Crc32C.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <fstream>
#include <sodium.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{

constexpr std::size_t kChunk = std::size_t(1) << 20U;
constexpr std::size_t kDigits = 2UL * crypto_hash_sha256_BYTES;
constexpr std::size_t kMostBytes = std::size_t(1) << 16U; // of a list
constexpr std::string_view kHead = "# Corvana backup set, version 1";
constexpr std::string_view kOf = "# of the data folder ";
constexpr std::string_view kLeftOut = "# records in member.mdb alone: ";

/// A line must stay one.
std::string OneLine(std::string text)
{
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < ' ' || c == 0x7FU; }, '?');
    return text;
}

CDbStatus ReadWhole(std::string const& path, CBackupManifest::Watch const& watch,
    std::string& digits, std::uint32_t& sum)
{
    CFileHandle const file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct stat info = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &info) != 0) {
        return FileFailure("Cannot read", path, errno);
    }
    if (!S_ISREG(info.st_mode)) {
        return {DbError::foreign, "\"" + path + "\" is no file."};
    }
    ::posix_fadvise(file.Get(), 0, 0, POSIX_FADV_DONTNEED);
    crypto_hash_sha256_state state;
    crypto_hash_sha256_init(&state);
    std::vector<char> buffer(kChunk);
    sum = 0;
    for (;;) {
        auto const count = ::read(file.Get(), buffer.data(), buffer.size());
        if (count < 0) {
            return FileFailure("Cannot read", path, errno);
        }
        auto const size = static_cast<std::size_t>(count);
        if (size == 0) {
            break;
        }
        crypto_hash_sha256_update(
            &state, reinterpret_cast<unsigned char const*>(buffer.data()), size);
        sum = Crc32C(sum, {buffer.data(), size});
        if (watch && !watch(size)) {
            return {DbError::stopped, "Stopped."};
        }
    }
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash = {};
    crypto_hash_sha256_final(&state, hash.data());
    std::array<char, kDigits + 1> text = {};
    sodium_bin2hex(text.data(), text.size(), hash.data(), hash.size());
    digits = text.data();
    return {};
}

/// A file of a set lies in its folder itself and is not hidden.
bool IsPlainName(std::string_view name)
{
    return !name.empty() && name.front() != '.' && name.find('/') == std::string_view::npos;
}

} // namespace

CDbStatus CBackupManifest::ReadFromDisk(std::string const& path, Watch const& watch)
{
    std::string digits;
    std::uint32_t sum = 0;
    return ReadWhole(path, watch, digits, sum);
}

CDbStatus CBackupManifest::Add(
    std::string const& folder, std::string const& name, Watch const& watch, std::uint32_t& sum)
{
    auto const path = PathIn(folder, name);
    auto status = SyncFile(path); // what is not on the disk cannot be read from there
    return status ? ReadWhole(path, watch, m_files[name], sum) : status;
}

CDbStatus CBackupManifest::Write(std::string const& folder) const
{
    auto const path = PathIn(folder, kName);
    auto status = CreateEmptyFile(path);
    if (!status) {
        return status;
    }
    std::ofstream file(path, std::ios::binary);
    file << kHead << '\n' << kOf << OneLine(m_strDataFolder) << '\n';
    file << kLeftOut << m_nLeftOut << '\n';
    for (auto const& [name, digits] : m_files) {
        file << digits << "  " << name << '\n';
    }
    file.close();
    return file ? SyncFile(path) : FileFailure("Cannot write", path, errno);
}

CDbStatus CBackupManifest::Read(std::string const& folder)
{
    auto const path = PathIn(folder, kName);
    struct stat info = {};
    if (::lstat(path.c_str(), &info) != 0) {
        return FileFailure("Cannot read", path, errno);
    }
    CDbStatus foreign(DbError::foreign, "\"" + path + "\" is not the list of a backup set.");
    std::ifstream file(path, std::ios::binary);
    if (!S_ISREG(info.st_mode) || info.st_size > static_cast<off_t>(kMostBytes) || !file) {
        return foreign;
    }
    m_files.clear();
    m_strDataFolder.clear();
    std::string line;
    bool isOurs = std::getline(file, line) && line == kHead;
    while (isOurs && std::getline(file, line)) {
        isOurs = !file.eof(); // the last line has its end too
        if (line.starts_with(kOf)) {
            m_strDataFolder = line.substr(kOf.size());
        } else if (line.starts_with(kLeftOut)) {
            auto const* const end = line.data() + line.size();
            auto const number = std::from_chars(line.data() + kLeftOut.size(), end, m_nLeftOut);
            isOurs = isOurs && number.ec == std::errc() && number.ptr == end;
        } else {
            auto const name = line.size() > kDigits + 2 ? line.substr(kDigits + 2) : "";
            isOurs = isOurs && IsPlainName(name) && line.substr(kDigits, 2) == "  "
                && m_files.emplace(name, line.substr(0, kDigits)).second;
        }
    }
    return isOurs ? CDbStatus() : foreign;
}

CDbStatus CBackupManifest::Check(std::string const& folder, Watch const& watch) const
{
    for (auto const& [name, expected] : m_files) {
        std::string digits;
        std::uint32_t sum = 0;
        auto const path = PathIn(folder, name);
        if (auto status = ReadWhole(path, watch, digits, sum); !status) {
            return status;
        }
        if (digits != expected) {
            return {DbError::damaged, "\"" + path + "\" is not as it was written."};
        }
    }
    return {};
}
