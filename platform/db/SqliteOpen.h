#pragma once

#include "platform/db/SqliteDatabase.h"

#include <chrono>
#include <string>

// What opening a file shares with its maintenance.

/// How long maintenance and those who open a file wait for each other at most.
inline constexpr std::chrono::milliseconds kMaintenanceWait{2'000};

/// The file as a sentence begins with it.
std::string Quoted(std::string const& path);

/// As SQLite takes it: a relative name such as "file:a.mdb" or ":memory:" would mean something else
/// to it.
std::string FileName(std::string const& path);

/// Where a file is made before it gets its name. Written by nobody but the one who uses the
/// database of that name alone.
inline std::string PartName(std::string const& path)
{
    return path + ".part";
}

/// Deletes a database that nobody uses.
void RemoveWithLog(std::string const& path);

/// Connects to an existing file by our rules, without a look at what it is.
CDbStatus Connect(
    std::string const& path, CConnectionPtr& connection, std::chrono::milliseconds wait);

/// Runs a statement that answers with one number or word.
CDbStatus ReadAnswer(
    sqlite3* connection, std::string const& path, char const* sql, std::string& answer);
CDbStatus ReadAnswer(sqlite3* connection, std::string const& path, char const* sql, long& answer);

/// Reads the header and the list of tables, which opening alone does not; version is the file's.
CDbStatus Recognise(
    sqlite3* connection, std::string const& path, CSchema const& schema, int& version);
