#include "store/EFFile.h"

#include "platform/db/Files.h"

#include <filesystem>
#include <unistd.h>

void CEFFile::ParsePath(std::string& path)
{
    if (path.empty()) {
        return;
    }
    path = std::filesystem::path(path + "/").lexically_normal().string();
}

void CEFFile::ParsePathFileName(std::string& path)
{
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
