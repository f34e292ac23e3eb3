#include "platform/qt/RuntimeFolder.h"

#include "platform/qt/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

std::size_t constexpr kMaxName = 64;

std::string SystemText(int error)
{
    return std::generic_category().message(error);
}

/// Whether others may neither own the folder nor put anything into it.
bool IsOwnFolder(char const* path)
{
    struct stat status = {};
    return stat(path, &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid()
        && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

std::string FolderPath()
{
    auto const* const base = std::getenv("XDG_RUNTIME_DIR");
    if (base != nullptr && base[0] == '/' && IsOwnFolder(base)) {
        return std::string(base) + "/corvana";
    }
    return "/tmp/corvana-" + std::to_string(geteuid());
}

/// What keeps the folder from being used; empty when nothing does.
std::string MakeFolder(std::string const& path)
{
    if (mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        return SystemText(errno);
    }
    // The open folder is what is judged, so that nothing can take its place in between.
    CDescriptor const folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder) {
        return SystemText(errno);
    }
    struct stat status = {};
    if (fstat(folder.Get(), &status) != 0) {
        return SystemText(errno);
    }
    if (status.st_uid != geteuid()) {
        return "it belongs to another user";
    }
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        return "other users have access to it";
    }
    return {};
}

bool IsNameCharacter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == ' '
        || c == '-' || c == '_';
}

} // namespace

std::optional<std::string> RuntimeFolder(std::string* reason)
{
    auto path = FolderPath();
    auto const fault = MakeFolder(path);
    if (fault.empty()) {
        return path;
    }
    if (reason != nullptr) {
        *reason = path + ": " + fault;
    }
    return std::nullopt;
}

std::optional<std::string> RuntimeFile(std::string_view name, std::string_view suffix)
{
    if (name.empty() || name.size() > kMaxName || !std::ranges::all_of(name, IsNameCharacter)) {
        return std::nullopt;
    }
    auto const folder = RuntimeFolder();
    if (!folder) {
        return std::nullopt;
    }
    return *folder + '/' + std::string(name) + std::string(suffix);
}
