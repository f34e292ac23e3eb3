#include "tools/CreateCenter.h"

#include "platform/db/Files.h"
#include "store/sets/DatabaseSession.h"
#include "tools/CenterRows.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{

/// Ctrl+C waits until the files are all made or all gone.
class CSignalPause
{
public:
    CSignalPause()
    {
        sigset_t signals;
        ::sigemptyset(&signals);
        for (int const signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
            ::sigaddset(&signals, signal);
        }
        ::sigprocmask(SIG_BLOCK, &signals, &m_before);
    }
    ~CSignalPause() { ::sigprocmask(SIG_SETMASK, &m_before, nullptr); }
    CSignalPause(CSignalPause const&) = delete;
    CSignalPause& operator=(CSignalPause const&) = delete;

private:
    sigset_t m_before = {};
};

/// A folder with those above it; the ones that were made go again unless they are kept.
class CFolderMaker
{
public:
    CFolderMaker() = default;
    ~CFolderMaker()
    {
        for (auto made = m_made.rbegin(); made != m_made.rend(); ++made) {
            ::rmdir(made->c_str());
        }
    }
    CFolderMaker(CFolderMaker const&) = delete;
    CFolderMaker& operator=(CFolderMaker const&) = delete;

    CDbStatus Make(std::filesystem::path const& folder)
    {
        std::filesystem::path path;
        for (auto const& part : folder) {
            path /= part;
            struct stat info = {};
            if (::stat(path.c_str(), &info) == 0) {
                continue;
            }
            if (::mkdir(path.c_str(), 0700) != 0) {
                return FileFailure("Cannot create the folder", path, errno);
            }
            m_made.push_back(path.string());
            if (auto status = SyncFolderOf(m_made.back()); !status) {
                return status;
            }
        }
        return {};
    }
    void Keep() { m_made.clear(); }

private:
    std::vector<std::string> m_made;
};

/// A new folder inside another; goes with all that is in it.
class CWorkFolder
{
public:
    CWorkFolder() = default;
    ~CWorkFolder()
    {
        CDatabaseSession::Get().ShutDown();
        std::error_code ignored;
        if (!m_strPath.empty()) {
            std::filesystem::remove_all(m_strPath, ignored);
        }
    }
    CWorkFolder(CWorkFolder const&) = delete;
    CWorkFolder& operator=(CWorkFolder const&) = delete;

    CDbStatus Make(std::string const& folder)
    {
        auto name = folder + "/.new-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) {
            return FileFailure("Cannot write to the folder", folder, errno);
        }
        m_strPath = name;
        return {};
    }
    std::string const& Path() const { return m_strPath; }

private:
    std::string m_strPath;
};

std::string PathIn(std::string const& folder, DataFile file)
{
    return folder + "/" + std::string(DataFileName(file));
}

CDbStatus MakeFiles(std::string const& folder, CCenterSettings const& settings,
    std::string const& password, std::function<CDbStatus()> const& fill)
{
    for (auto const file : kDataFiles) {
        if (auto status = CreateDatabase(PathIn(folder, file), DataFileSchema(file)); !status) {
            return status;
        }
    }
    auto& session = CDatabaseSession::Get();
    session.SetDataFolder(folder);
    auto status = WriteCenterRows(settings, password);
    if (status && fill) {
        status = fill();
    }
    session.ShutDown();
    return status;
}

/// Gives the files their place; takes those back that have it when one finds it taken.
CDbStatus MoveFiles(std::string const& from, std::string const& to)
{
    CDbStatus status;
    std::vector<std::string> moved;
    for (auto const file : kDataFiles) {
        status = RenameNoReplace(PathIn(from, file), PathIn(to, file));
        if (!status) {
            break;
        }
        moved.push_back(PathIn(to, file));
    }
    if (status) {
        status = SyncFolderOf(moved.front());
    }
    for (std::size_t i = 0; !status && i < moved.size(); ++i) {
        ::unlink(moved[i].c_str());
    }
    return status;
}

} // namespace

CDbStatus FindOldFiles(std::string const& folder)
{
    for (auto const file : kDataFiles) {
        // A new database would take an old log for its own.
        for (auto const* const suffix : {"", "-wal", "-shm", "-journal"}) {
            auto const path = PathIn(folder, file) + suffix;
            struct stat info = {};
            if (::lstat(path.c_str(), &info) == 0) {
                return {DbError::exists,
                    "The file \"" + path + "\" is there already. Nothing was made or changed."};
            }
        }
    }
    return {};
}

CDbStatus CreateCenter(std::string const& folder, CCenterSettings const& settings,
    std::string const& password, std::function<CDbStatus()> const& fill)
{
    CSignalPause const pause;
    CFolderMaker folders;
    CWorkFolder work;
    auto status = FindOldFiles(folder);
    if (status) {
        status = folders.Make(folder);
    }
    if (status) {
        status = work.Make(folder);
    }
    if (status) {
        status = MakeFiles(work.Path(), settings, password, fill);
    }
    if (status) {
        status = MoveFiles(work.Path(), folder);
    }
    if (status) {
        folders.Keep();
    }
    return status;
}
