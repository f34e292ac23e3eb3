#include "store/text/EFFile.h"

#include "platform/db/Files.h"

#include <filesystem>
#include <unistd.h>

void CEFFile::ParsePath(std::string& path)
{
    ParsePathFileName(path);
    if (!path.empty() && !path.ends_with('/')) {
        path += '/';
    }
}

void CEFFile::ParsePathFileName(std::string& path)
{
    // Two slashes at the front would be kept as something special.
    while (path.starts_with("//")) {
        path.erase(0, 1);
    }
    path = std::filesystem::path(path).lexically_normal().string();
}

bool CEFFile::Rename(std::string const& from, std::string const& to)
{
    return RenameNoReplace(from, to).IsOK();
}

void CEFFile::Delete(std::string const& path)
{
    ::unlink(path.c_str());
}
