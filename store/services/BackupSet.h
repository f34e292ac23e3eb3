#pragma once

#include "platform/db/Status.h"
#include "store/services/BackupManifest.h"
#include "store/sets/DAOFileSet.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A backup set is a folder with a copy of each database file of the centre, a data file of each
// kind of record, and the list of them with their check sums. It is taken from a centre in use:
// each copy is its file at one moment, and the data files are written from the copy of the member
// file. For its folder, see BackupFolder.h.

/// The kinds of record, members before what belongs to them.
inline constexpr std::array<std::string_view, 4> kBackupKinds
    = {"members", "workouts", "evaluations", "body compositions"};
/// The number of records of each kind.
using CBackupCounts = std::array<int, kBackupKinds.size()>;
/// A record set of that kind, over the centre's own file when database is null.
std::unique_ptr<CDAOFileSet> RecordSetOf(std::size_t kind, CDatabase* database);
/// The data file of that kind in a set. A kind without records has none.
std::string BackupDataFile(std::size_t kind);

/// Is told how much is done, from 0 to 1; false stops the work. Called many times a second.
using CBackupWatch = std::function<bool(double done)>;

/// What came of a backup.
struct CBackupResult
{
    std::string name; ///< of the set
    CBackupCounts records = {};
    /// Records that no data file can carry, and the first one's fault: they stand in the copy of
    /// the member file alone. Only other programs can store such.
    int leftOut = 0;
    std::string reason;
};

/// Makes a set in a folder that must be there. It appears under its name when all of it is on the
/// disk and was read back from there; when it fails, or is stopped, nothing of it is left. Takes
/// away first what killed programs have left of others.
CDbStatus MakeBackup(std::string const& folder, CBackupWatch const& watch, CBackupResult& result);

/// Reads a whole set: all that belongs to it must be there as it was written. With alone, nothing
/// else may be in its folder.
CDbStatus CheckBackup(
    std::string const& path, bool alone, CBackupWatch const& watch, CBackupManifest& manifest);

/// What came of thinning.
struct CThinned
{
    std::vector<std::string> removed; ///< the names of the sets that went
    std::vector<std::string> faults; ///< why sets were neither counted nor removed
};

/// Removes old sets of this data folder. The newest so many good ones stay, at least one, and so
/// does the set of that name, which was just made; older good ones go. A good set has all its files
/// as they were written, and no others; to find out, each is read whole. Whatever is not good stays
/// and does not count. "stopped" when watch says so.
CDbStatus ThinBackups(std::string const& folder, int keep, std::string const& made,
    CBackupWatch const& watch, CThinned& thinned);

/// What came of a restore.
struct CRestoredCounts
{
    CBackupCounts stored = {};
    CBackupCounts skipped = {}; ///< could not be added, as CDAOFileSet::LastSkipped() says
    int leftOut = 0; ///< by the backup
};

/// Restores the records of a set, all in one transaction, after reading all of it. Members who are
/// there stay as they are, or are replaced when keepExisting is false. Other programs cannot write
/// meanwhile.
CDbStatus RestoreBackup(std::string const& path, bool keepExisting, CRestoredCounts& counts);

/// The name of the newest set of this data folder, by its list alone; empty when there is none.
std::string NewestBackup(std::string const& folder);

/// Whether a folder is on the same file system as the data: what destroys one destroys the other.
bool IsOnDataDisk(std::string const& folder);
