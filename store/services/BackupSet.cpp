#include "store/services/BackupSet.h"

#include "store/services/BackupFolder.h"
#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOMem.h"
#include "store/sets/DAOWk.h"
#include "store/text/DataFileWriter.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <sys/stat.h>
#include <system_error>

namespace
{

// What the parts of a backup take of its time.
constexpr double kCopied = 0.1;
constexpr double kChecked = 0.55;
constexpr double kWritten = 0.9;
constexpr double kReadBack = 0.1; // of the check of a copy

std::string NameOf(DataFile file)
{
    return std::string(DataFileName(file));
}

CDbStatus Stopped()
{
    return {DbError::stopped, "Stopped."};
}

/// The data folder as a set names it, whichever way leads there.
std::string DataFolderName()
{
    auto const& folder = CDatabaseSession::Get().DataFolder();
    std::error_code failed;
    auto const path = std::filesystem::canonical(folder, failed);
    return failed ? folder : path.string();
}

std::uintmax_t SizeOf(std::string const& path)
{
    std::error_code failed;
    auto const size = std::filesystem::file_size(path, failed);
    return failed ? 0 : size;
}

/// Tells how many of all bytes were read.
class CByteWatch
{
public:
    CByteWatch(CBackupWatch const& watch, double from, std::uintmax_t bytes)
        : m_watch(watch)
        , m_from(from)
        , m_all(static_cast<double>(std::max<std::uintmax_t>(bytes, 1)))
    {
    }
    CBackupManifest::Watch Get()
    {
        return [this](std::size_t bytes) {
            m_done += static_cast<double>(bytes);
            return !m_watch || m_watch(m_from + (1 - m_from) * std::min(m_done / m_all, 1.0));
        };
    }

private:
    CBackupWatch const& m_watch;
    double const m_from;
    double const m_all;
    double m_done = 0;
};

/// Makes one set.
class CBackupMaker
{
public:
    CBackupMaker(CBackupWatch const& watch, CBackupResult& result)
        : m_watch(watch)
        , m_result(result)
    {
    }
    CDbStatus Make(std::string const& folder);

private:
    CDbStatus CopyFile(DataFile file);
    CDbStatus CheckFile(DataFile file);
    CDbStatus WriteRecords(CDatabase& copy);
    CDbStatus WriteRows(CDAOFileSet& set, CDataFileWriter& writer, double from, double part);
    CDbStatus WriteKind(std::size_t kind, CDAOFileSet& set, double from, double part);
    CDbStatus WriteManifest();
    CDbStatus Tell(double done) const
    {
        return !m_watch || m_watch(done) ? CDbStatus() : Stopped();
    }
    CBackupWatch TurnOf(DataFile file, double from, double to) const;
    std::string PathOf(std::string const& name) const { return PathIn(m_place.Path(), name); }

    CBackupWatch const& m_watch;
    CBackupResult& m_result;
    CBackupPlace m_place;
    std::map<std::string, std::uint32_t> m_sums; ///< of the data files as they were written
};

CDbStatus CBackupMaker::Make(std::string const& folder)
{
    RemoveBackupLeftovers(folder);
    auto status = m_place.Make(folder);
    for (auto const file : kDataFiles) {
        status = status ? CopyFile(file) : status;
    }
    for (auto const file : kDataFiles) {
        status = status ? CheckFile(file) : status;
    }
    status = status ? WriteManifest() : status;
    status = status ? m_place.Publish() : status;
    m_result.name = m_place.Name();
    return status;
}

/// What one of the files takes of such a part, by its size.
CBackupWatch CBackupMaker::TurnOf(DataFile file, double from, double to) const
{
    double before = 0;
    double all = 1;
    double own = 0;
    for (auto const each : kDataFiles) {
        auto const bytes = static_cast<double>(SizeOf(CDatabaseSession::Get().PathOf(each)));
        all += bytes;
        before += each < file ? bytes : 0;
        own = each == file ? bytes : own;
    }
    auto const begin = from + (to - from) * before / all;
    auto const part = (to - from) * own / all;
    return [this, begin, part](double done) { return Tell(begin + part * done).IsOK(); };
}

CDbStatus CBackupMaker::CopyFile(DataFile file)
{
    auto const turn = TurnOf(file, 0, kCopied);
    auto status = turn(0) ? CDbStatus() : Stopped();
    auto* const database = status ? CDatabaseSession::Get().Open(file, status) : nullptr;
    return database != nullptr ? database->CopyTo(PathOf(NameOf(file)), turn) : status;
}

/// Reads a copy whole. What the centre's own file has in rows without parents, or tables of others,
/// is no fault of the copy.
CDbStatus CBackupMaker::CheckFile(DataFile file)
{
    std::unique_ptr<CDatabase> copy;
    std::vector<std::string> findings;
    auto const path = PathOf(NameOf(file));
    auto const turn = TurnOf(file, kCopied, kChecked);
    CBackupWatch const reading = [&](double done) { return turn(kReadBack * done); };
    auto const checking = [&](double done) { return turn(kReadBack + (1 - kReadBack) * done); };
    auto status = CBackupManifest::ReadFromDisk(path, CByteWatch(reading, 0, SizeOf(path)).Get());
    if (status) {
        status = OpenDatabase(path, DataFileSchema(file), copy);
    }
    if (status) {
        status = copy->Check(findings, checking);
    }
    auto const isDamage = [](std::string const& finding) { return finding.starts_with("damage"); };
    if (status && std::ranges::any_of(findings, isDamage)) {
        status = {DbError::damaged,
            "The file \"" + NameOf(file) + R"(" is damaged. "corvana-db check" tells more.)"};
    }
    return status && file == DataFile::member ? WriteRecords(*copy) : status;
}

CDbStatus CBackupMaker::WriteRecords(CDatabase& copy)
{
    std::array<std::unique_ptr<CDAOFileSet>, kBackupKinds.size()> sets;
    double rows = 1;
    for (std::size_t kind = 0; kind < sets.size(); ++kind) {
        sets[kind] = RecordSetOf(kind, &copy);
        rows += sets[kind]->OpenSet(true);
        if (!sets[kind]->LastStatus()) {
            return sets[kind]->LastStatus();
        }
    }
    auto status = CDbStatus();
    double from = kChecked;
    for (std::size_t kind = 0; kind < sets.size() && status; ++kind) {
        auto const part = (kWritten - kChecked) * sets[kind]->CountSet() / rows;
        status = WriteKind(kind, *sets[kind], from, part);
        sets[kind]->Op(CDAOEFSet::opClose);
        from += part;
    }
    return status;
}

CDbStatus CBackupMaker::WriteKind(std::size_t kind, CDAOFileSet& set, double from, double part)
{
    auto const name = BackupDataFile(kind);
    CDataFileWriter writer(PathOf(name));
    auto status = writer.Open();
    status = status ? WriteRows(set, writer, from, part) : status;
    m_result.records[kind] = writer.Records();
    if (!status || writer.Records() == 0) {
        return status;
    }
    status = writer.Check(set);
    status = status ? writer.Publish() : status;
    m_sums[name] = writer.CheckSum();
    return status;
}

CDbStatus CBackupMaker::WriteRows(
    CDAOFileSet& set, CDataFileWriter& writer, double from, double part)
{
    CDbStatus status;
    int const count = set.CountSet();
    for (int row = 0; row < count && status; ++row) {
        status = writer.Write(set);
        if (status.Error() == DbError::failed) {
            // A full disk looks the same, and shows when the file is put on the disk.
            m_result.reason = m_result.leftOut++ == 0 ? status.Text() : m_result.reason;
            status = {};
        }
        if (status && row % int(CDatabase::kBlockRows) == 0) {
            status = Tell(from + part * row / count);
        }
        set.Op(CDAOEFSet::opMoveNext);
    }
    return status;
}

CDbStatus CBackupMaker::WriteManifest()
{
    CBackupManifest manifest;
    manifest.m_strDataFolder = DataFolderName();
    manifest.m_nLeftOut = m_result.leftOut;
    std::vector<std::string> names;
    names.reserve(kDataFiles.size() + m_sums.size());
    for (auto const file : kDataFiles) {
        names.push_back(NameOf(file));
    }
    for (auto const& written : m_sums) {
        names.push_back(written.first);
    }
    std::uintmax_t bytes = 0;
    for (auto const& name : names) {
        bytes += SizeOf(PathOf(name));
    }
    CByteWatch watch(m_watch, kWritten, bytes);
    CDbStatus status;
    for (auto const& name : names) {
        std::uint32_t sum = 0;
        status = status ? manifest.Add(m_place.Path(), name, watch.Get(), sum) : status;
        auto const written = m_sums.find(name);
        if (status && written != m_sums.end() && sum != written->second) {
            status = {DbError::damaged,
                "The file \"" + PathOf(name) + "\" does not hold what was written into it."};
        }
    }
    return status ? manifest.Write(m_place.Path()) : status;
}

/// The names in a folder must be those of the list and its own.
CDbStatus CheckAlone(std::string const& path, CBackupManifest const& manifest)
{
    std::error_code failed;
    std::filesystem::directory_iterator entry(path, failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
        auto const name = entry->path().filename().string();
        if (name != CBackupManifest::kName && !manifest.Files().contains(name)) {
            return {DbError::foreign, "\"" + path + "\" holds more than a backup set."};
        }
    }
    return failed ? FileFailure("Cannot read", path, failed.value()) : CDbStatus();
}

CDbStatus RestoreKind(
    std::size_t kind, std::string const& path, bool keepExisting, CRestoredCounts& counts)
{
    auto const set = RecordSetOf(kind, nullptr);
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return FileFailure("Cannot read", path, errno);
    }
    counts.stored[kind] = set->Restore(file, CLineSum::kSeparator, 0, keepExisting);
    counts.skipped[kind] = set->LastSkipped();
    auto const& status = set->LastStatus();
    return status ? status : CDbStatus(status.Error(), "\"" + path + "\": " + status.Text());
}

} // namespace

std::unique_ptr<CDAOFileSet> RecordSetOf(std::size_t kind, CDatabase* database)
{
    switch (kind) {
    case 0:
        return std::make_unique<CDAOMem>(database);
    case 1:
        return std::make_unique<CDAOWk>(database);
    case 2:
        return std::make_unique<CDAOEval>(database);
    default:
        return std::make_unique<CDAOBodyComp>(database);
    }
}

std::string BackupDataFile(std::size_t kind)
{
    std::string name(kBackupKinds[kind]);
    std::ranges::replace(name, ' ', '-');
    return name + ".dat";
}

CDbStatus MakeBackup(std::string const& folder, CBackupWatch const& watch, CBackupResult& result)
{
    auto status = CBackupMaker(watch, result).Make(folder);
    if (status.Error() == DbError::full) {
        // The engine names the file that it copies.
        status = {DbError::full, "There is no room left for it in \"" + folder + "\"."};
    }
    if (status.Error() == DbError::network) {
        status = {DbError::network,
            "The folder \"" + folder
                + "\" is on a network drive. Make backups on a disk of this computer, and copy "
                  "them to the network from there."};
    }
    return status;
}

CDbStatus CheckBackup(
    std::string const& path, bool alone, CBackupWatch const& watch, CBackupManifest& manifest)
{
    auto status = manifest.Read(path);
    std::uintmax_t bytes = 0;
    for (auto const& file : manifest.Files()) {
        bytes += SizeOf(PathIn(path, file.first));
    }
    for (auto const file : kDataFiles) {
        if (status && !manifest.Files().contains(NameOf(file))) {
            status = {DbError::foreign, "\"" + path + "\" is not a whole backup set."};
        }
    }
    status = status && alone ? CheckAlone(path, manifest) : status;
    return status ? manifest.Check(path, CByteWatch(watch, 0, bytes).Get()) : status;
}

CDbStatus ThinBackups(std::string const& folder, int keep, std::string const& made,
    CBackupWatch const& watch, CThinned& thinned)
{
    auto const names = BackupSetsIn(folder);
    auto const ours = DataFolderName();
    int good = 0;
    double looked = 0;
    for (auto const& name : names) {
        auto const path = PathIn(folder, name);
        auto const part = [&](double done) {
            return !watch || watch((looked + done) / static_cast<double>(names.size()));
        };
        CBackupManifest manifest;
        auto status = manifest.Read(path);
        if (status && manifest.m_strDataFolder != ours) {
            continue; // those of other centres may lie there too
        }
        // The one just made was read when it was made.
        status = status && name != made ? CheckBackup(path, true, part, manifest) : status;
        if (status.Error() == DbError::stopped) {
            return status;
        }
        ++looked;
        if (!status) {
            if (std::filesystem::exists(path)) { // somebody else may have removed it meanwhile
                thinned.faults.push_back(status.Text());
            }
        } else if (++good > keep && name != made && RemoveBackupSet(folder, name)) {
            thinned.removed.push_back(name);
        }
    }
    return {};
}

CDbStatus RestoreBackup(std::string const& path, bool keepExisting, CRestoredCounts& counts)
{
    CBackupManifest manifest;
    auto status = CheckBackup(path, false, {}, manifest);
    auto* const database
        = status ? CDatabaseSession::Get().Open(DataFile::member, status) : nullptr;
    if (database == nullptr) {
        return status;
    }
    counts.leftOut = manifest.m_nLeftOut;
    CTransaction transaction(*database);
    status = transaction.Status();
    for (std::size_t kind = 0; kind < kBackupKinds.size(); ++kind) {
        auto const name = BackupDataFile(kind);
        if (status && manifest.Files().contains(name)) {
            status = RestoreKind(kind, PathIn(path, name), keepExisting, counts);
        }
    }
    return status ? transaction.Commit() : status;
}

std::string NewestBackup(std::string const& folder)
{
    auto const ours = DataFolderName();
    for (auto& name : BackupSetsIn(folder)) {
        CBackupManifest manifest;
        if (manifest.Read(PathIn(folder, name)) && manifest.m_strDataFolder == ours) {
            return name;
        }
    }
    return {};
}

bool IsOnDataDisk(std::string const& folder)
{
    struct stat data = {};
    struct stat backup = {};
    return ::stat(CDatabaseSession::Get().DataFolder().c_str(), &data) == 0
        && ::stat(folder.c_str(), &backup) == 0 && data.st_dev == backup.st_dev;
}
