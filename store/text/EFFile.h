#pragma once

#include <string>

/// File routines that keep no state.
class CEFFile
{
public:
    /// Makes a folder's path one that a file name can be appended to: no "." or doubled "/" in it,
    /// "/" at its end. The empty path stays empty and means the current folder.
    static void ParsePath(std::string& path);
    /// The same for the full path of a file.
    static void ParsePathFileName(std::string& path);
    /// False when it failed; another file of the new name is never replaced.
    static bool Rename(std::string const& from, std::string const& to);
    /// A missing file is no error; a folder is left alone.
    static void Delete(std::string const& path);
};
