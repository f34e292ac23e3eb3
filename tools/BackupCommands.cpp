#include "tools/BackupCommands.h"

#include "store/services/BackupSet.h"
#include "store/text/DataFileWriter.h"
#include "tools/Outcome.h"
#include "tools/Printable.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <system_error>

namespace
{

volatile std::sig_atomic_t g_bAskedToEnd = 0;

/// Notes that the program was asked to end instead of ending it.
void HeedSignals()
{
    struct sigaction action = {};
    action.sa_handler = [](int) { g_bAskedToEnd = 1; };
    action.sa_flags = SA_RESTART;
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
        ::sigaction(signal, &action, nullptr);
    }
}

bool GoOn(double /*done*/)
{
    return g_bAskedToEnd == 0;
}

/// "500 members, 7 workouts": all kinds, whatever their number.
std::string CountsText(CBackupCounts const& counts)
{
    std::string text;
    for (std::size_t kind = 0; kind < kBackupKinds.size(); ++kind) {
        text.append(kind == 0 ? "" : ", ").append(std::to_string(counts[kind])).append(" ");
        text.append(kBackupKinds[kind]);
    }
    return text;
}

std::string LeftOutText(int count)
{
    return std::to_string(count) + " record(s) stand in the set's copy of member.mdb alone";
}

int Thin(std::string const& folder, int keep, std::string const& made)
{
    CThinned thinned;
    auto const status = ThinBackups(folder, keep, made, GoOn, thinned);
    for (auto const& name : thinned.removed) {
        std::cout << "Removed the old set " << name << ".\n";
    }
    for (auto const& fault : thinned.faults) {
        Fail("An old set stays and does not count: " + fault);
    }
    return status && thinned.faults.empty() ? kSuccess : kFailure;
}

int VerifySet(std::string const& path)
{
    CBackupManifest manifest;
    if (auto const status = CheckBackup(path, false, GoOn, manifest); !status) {
        return status.Error() == DbError::missing && manifest.Files().empty()
            ? (Fail(status.Text()), kUsage)
            : Fail(status.Text());
    }
    std::cout << "The backup set is as it was written, " << manifest.Files().size() << " files of "
              << Printable(manifest.m_strDataFolder) << ".\n";
    if (manifest.m_nLeftOut > 0) {
        std::cout << LeftOutText(manifest.m_nLeftOut) << ".\n";
    }
    return kSuccess;
}

/// The record set for the kind that the first line of a file names; null when there is none.
std::unique_ptr<CDAOFileSet> SetFor(std::ifstream& file)
{
    std::array<char, 8> head = {};
    file.read(head.data(), head.size());
    std::string_view const text(head.data(), static_cast<std::size_t>(file.gcount()));
    file.clear();
    file.seekg(0);
    for (std::size_t kind = 0; kind < kBackupKinds.size(); ++kind) {
        auto set = RecordSetOf(kind, nullptr);
        if (text.starts_with(std::string(set->GetLine().Kind()) + CLineSum::kSeparator)) {
            return set;
        }
    }
    return nullptr;
}

} // namespace

int BackUp(std::string const& folder, int keep)
{
    HeedSignals();
    CBackupResult made;
    auto const status = MakeBackup(folder, GoOn, made);
    CDatabaseSession::Get().ShutDown();
    if (!status) {
        return Fail(status.Error() == DbError::stopped ? "Stopped: there is no new backup set."
                                                       : "No backup was made. " + status.Text());
    }
    std::cout << "Made the backup set " << folder << "/" << made.name << ": "
              << CountsText(made.records) << ".\n";
    if (IsOnDataDisk(folder)) {
        std::cout << "It lies on the same disk as the data.\n";
    }
    if (made.leftOut > 0) {
        Fail("warning: " + LeftOutText(made.leftOut) + ". " + made.reason);
    }
    return keep > 0 ? Thin(folder, keep, made.name) : kSuccess;
}

int RestoreSet(std::string const& path, bool replace)
{
    CRestoredCounts counts;
    auto const status = RestoreBackup(path, !replace, counts);
    CDatabaseSession::Get().ShutDown();
    if (!status) {
        return Fail("Nothing was restored. " + status.Text());
    }
    std::cout << "Restored " << CountsText(counts.stored) << ".\n";
    if (std::ranges::any_of(counts.skipped, [](int count) { return count > 0; })) {
        std::cout << "Skipped " << CountsText(counts.skipped)
                  << ": workout numbers of other members, or members who are not there.\n";
    }
    if (counts.leftOut > 0) {
        Fail("warning: " + LeftOutText(counts.leftOut) + ", and were not restored.");
    }
    return kSuccess;
}

int VerifyFile(std::string const& path)
{
    std::error_code failed;
    if (std::filesystem::is_directory(path, failed)) {
        return VerifySet(path);
    }
    std::ifstream file;
    // A pipe would wait for somebody to write.
    if (std::filesystem::is_regular_file(path, failed)) {
        file.open(path, std::ios::binary);
    }
    if (!file.is_open()) {
        Fail("Cannot read \"" + path + "\".");
        return kUsage;
    }
    auto set = SetFor(file);
    if (set == nullptr) {
        set = RecordSetOf(0, nullptr); // finds the first fault
    }
    if (!set->Test(file, CLineSum::kSeparator)) {
        return Fail("\"" + path + "\": " + set->LastStatus().Text());
    }
    std::cout << "All lines are right.\n";
    return kSuccess;
}
