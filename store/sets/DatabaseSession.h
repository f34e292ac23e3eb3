#pragma once

#include "platform/db/Database.h"

#include <array>
#include <chrono>
#include <memory>
#include <string>

/// The database files of a centre, in the order in which they are maintained.
enum class DataFile
{
    checkIn,
    report,
    center,
    member
};

inline constexpr std::array kDataFiles
    = {DataFile::checkIn, DataFile::report, DataFile::center, DataFile::member};

/// The name without folder: "checkin.mdb", "report.mdb", "center.mdb", "member.mdb".
std::string_view DataFileName(DataFile file);
/// What the file's tables are at the present version.
CSchema const& DataFileSchema(DataFile file);

/// The one connection of this process to each of the centre's database files, shared by all record
/// sets, so that what belongs together can be one transaction. Files are opened when they are first
/// needed; a file that could not be opened is tried again the next time.
class CDatabaseSession
{
public:
    static CDatabaseSession& Get();

    /// Where the files lie; closes those that are open. Nothing is opened or made yet.
    void SetDataFolder(std::string const& folder);
    std::string const& DataFolder() const { return m_strFolder; }
    std::string PathOf(DataFile file) const;

    /// The open database, null when it cannot be opened: status then tells why. Only opening waits,
    /// at most that long, for a program that uses the file alone.
    CDatabase* Open(
        DataFile file, CDbStatus& status, std::chrono::milliseconds wait = kLongestWait);

    /// Closes all files. Record sets that still have a selection lose it; a later find opens the
    /// files again.
    void ShutDown();
    /// Grows by one with each shut-down, so that a record set knows a selection of before it.
    unsigned Generation() const { return m_nGeneration; }

private:
    CDatabaseSession();

    std::string m_strFolder;
    std::array<std::unique_ptr<CDatabase>, kDataFiles.size()> m_databases;
    unsigned m_nGeneration = 0;
};

/// The folder of a plain start: CORVANA_DATA if that is set and not empty, else "corvana" in the
/// user's data folder.
std::string DefaultDataFolder();
