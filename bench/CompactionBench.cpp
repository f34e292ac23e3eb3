// Measures compaction against what it needs at least: VACUUM INTO, and the copy and its name on the
// disk.

#include "bench/BenchData.h"
#include "bench/RawSqlite.h"
#include "platform/db/Files.h"
#include "store/sets/DatabaseSession.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace
{

std::string FilePath(char const* name)
{
    return CDatabaseSession::Get().DataFolder() + "/" + name;
}

void RawCompact(benchmark::State& state)
{
    auto const copy = FilePath("raw.mdb");
    for (auto _ : state) {
        state.PauseTiming();
        std::filesystem::remove(copy);
        state.ResumeTiming();
        {
            CRawDatabase const raw(FilePath("compact.mdb"));
            CRawStatement const vacuum(raw, "VACUUM INTO ?");
            vacuum.Bind(1, copy);
            vacuum.Step();
        }
        if (!SyncFile(copy) || !SyncFolderOf(copy)) {
            state.SkipWithError("the copy could not be synced");
        }
    }
}

void StoreCompact(benchmark::State& state)
{
    for (auto _ : state) {
        auto const status
            = CompactDatabaseFile(FilePath("compact.mdb"), DataFileSchema(DataFile::member));
        if (!status) {
            state.SkipWithError(status.Text().c_str());
        }
    }
}

} // namespace

void RegisterCompactionPair()
{
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::member, status);
    if (database != nullptr) {
        status = database->CopyTo(FilePath("compact.mdb"));
    }
    if (!status) {
        std::fprintf(stderr, "%s\n", status.Text().c_str());
        std::exit(1);
    }
    RegisterPair(
        "compact a file of 1,000,000 workouts", RawCompact, StoreCompact, benchmark::kMillisecond);
}
