#include "store/sets/DatabaseSession.h"

#include "store/text/EFFile.h"

#include <cstdlib>
#include <string_view>

namespace
{

std::string Environment(char const* name)
{
    char const* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

} // namespace

std::string_view DataFileName(DataFile file)
{
    constexpr std::array<std::string_view, kDataFiles.size()> kNames
        = {"checkin.mdb", "report.mdb", "center.mdb", "member.mdb"};
    return kNames[static_cast<std::size_t>(file)];
}

CDatabaseSession::CDatabaseSession()
    : m_strFolder(DefaultDataFolder())
{
}

CDatabaseSession& CDatabaseSession::Get()
{
    static CDatabaseSession session;
    return session;
}

void CDatabaseSession::SetDataFolder(std::string const& folder)
{
    ShutDown();
    m_strFolder = folder;
}

std::string CDatabaseSession::PathOf(DataFile file) const
{
    auto folder = m_strFolder;
    CEFFile::ParsePath(folder);
    return folder.append(DataFileName(file));
}

CDatabase* CDatabaseSession::Open(DataFile file, CDbStatus& status, std::chrono::milliseconds wait)
{
    auto& database = m_databases[static_cast<std::size_t>(file)];
    status = {};
    if (database == nullptr) {
        status = OpenDatabase(PathOf(file), DataFileSchema(file), database, wait);
    }
    return database.get();
}

void CDatabaseSession::ShutDown()
{
    for (auto& database : m_databases) {
        database.reset();
    }
    ++m_nGeneration;
}

std::string DefaultDataFolder()
{
    auto chosen = Environment("CORVANA_DATA");
    if (!chosen.empty()) {
        return chosen;
    }
    auto const data = Environment("XDG_DATA_HOME");
    if (data.starts_with('/')) {
        return data + "/corvana";
    }
    return Environment("HOME") + "/.local/share/corvana";
}
