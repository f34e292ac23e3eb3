// Measures data files: writing workouts against the sqlite3 shell, which writes the same columns as
// text, restoring them against prepared inserts, and how fast a file is tested.

#include "bench/BenchData.h"
#include "bench/RawMember.h"
#include "store/sets/DAOWk.h"
#include "store/text/Text.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

constexpr std::streamsize kBuffer = 262'144; // as CText recommends

std::string FilePath(char const* name)
{
    return CDatabaseSession::Get().DataFolder() + "/" + name;
}

double ChildrensSeconds()
{
    rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    auto const seconds = [](timeval const& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Lets the shell write the rows in the same order to a file.
bool RunShell(std::string const& output)
{
    auto sql = "SELECT " + WorkoutColumns().substr(4) + " FROM workouts ORDER BY check_in, id";
    auto path = MemberPath();
    std::array<std::string, 5> words = {"sqlite3", "-list", "-readonly", path, sql};
    std::array<char*, words.size() + 1> arguments = {};
    for (std::size_t i = 0; i < words.size(); ++i) {
        arguments[i] = words[i].data();
    }
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(
        &actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t child = 0;
    int status = ::posix_spawnp(
        &child, words.front().c_str(), &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    return status == 0 && ::waitpid(child, &status, 0) == child && status == 0;
}

void RawSave(benchmark::State& state)
{
    auto const before = ChildrensSeconds();
    for (auto _ : state) {
        if (!RunShell(FilePath("raw.txt"))) {
            state.SkipWithError("the sqlite3 shell failed");
            return;
        }
    }
    state.counters["children"]
        = benchmark::Counter(ChildrensSeconds() - before, benchmark::Counter::kAvgIterations);
}

bool SaveAll(CDAOWk& set, std::string const& path)
{
    std::ofstream file;
    std::vector<char> buffer(kBuffer);
    file.rdbuf()->pubsetbuf(buffer.data(), kBuffer);
    file.open(path);
    CText text(&file, '|');
    bool saved = true;
    for (int count = set.FindWks(0); saved && count > 0; --count) {
        saved = set.Save(text);
        set.Op(CDAOEFSet::opMoveNext);
    }
    set.Op(CDAOEFSet::opClose);
    file.close();
    return saved && file.good();
}

void StoreSave(benchmark::State& state)
{
    CDAOWk set;
    for (auto _ : state) {
        if (!SaveAll(set, FilePath("store.txt"))) {
            state.SkipWithError(set.LastStatus().Text().c_str());
            return;
        }
    }
}

void TestFile(benchmark::State& state)
{
    auto const path = FilePath("test.txt");
    CDAOWk const set;
    for (auto _ : state) {
        std::ifstream file(path);
        if (!set.Test(file, '|')) {
            state.SkipWithError(set.LastStatus().Text().c_str());
            return;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(std::filesystem::file_size(path))
        * static_cast<std::int64_t>(state.iterations()));
}

/// A member file with the members alone, made anew.
std::string EmptyFile()
{
    auto path = FilePath("restore.mdb");
    for (auto const* const end : {"", "-wal", "-shm"}) {
        std::filesystem::remove(path + end);
    }
    if (CreateDatabase(path, DataFileSchema(DataFile::member))) {
        AddMembers(CRawDatabase(path), g_members);
    }
    return path;
}

void RawRestore(benchmark::State& state)
{
    std::string places = "?";
    for (int i = 1; i < 5 + kStations; ++i) {
        places += ",?";
    }
    for (auto _ : state) {
        state.PauseTiming();
        auto const path = EmptyFile();
        {
            CRawDatabase const raw(path);
            state.ResumeTiming();
            CRawStatement const insert(raw,
                "INSERT INTO workouts (" + WorkoutColumns().substr(4) + ") VALUES (" + places
                    + ")");
            raw.Run("BEGIN IMMEDIATE");
            for (std::int64_t i = 0; i < g_rows; ++i) {
                insert.Bind(1, i * 7919 % g_members + 1);
                insert.Bind(2, 1);
                insert.Bind(3, 1);
                insert.Bind(4, 3'900'000'000 + i * 90);
                insert.Bind(5, 3'900'003'600 + i * 90);
                for (int station = 0; station < kStations; ++station) {
                    insert.Bind(6 + station, std::int64_t(station) * 10);
                }
                insert.Step();
                insert.Reset();
            }
            raw.Run("COMMIT");
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

void StoreRestore(benchmark::State& state)
{
    auto const text = FilePath("test.txt");
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<CDatabase> database;
        if (!OpenDatabase(EmptyFile(), DataFileSchema(DataFile::member), database)) {
            state.SkipWithError("the database could not be opened");
            return;
        }
        CDAOWk set(database.get());
        state.ResumeTiming();
        std::ifstream file(text);
        if (set.Restore(file, '|', 0, true) != g_rows) {
            state.SkipWithError(set.LastStatus().Text().c_str());
            return;
        }
        state.PauseTiming();
        database.reset();
        state.ResumeTiming();
    }
}

} // namespace

void RegisterDataFilePairs()
{
    // The file to test and restore, before a measurement adds workouts.
    CDAOWk set;
    if (!SaveAll(set, FilePath("test.txt"))) {
        std::fprintf(stderr, "%s\n", set.LastStatus().Text().c_str());
        std::exit(1);
    }
    RegisterPair("save 1,000,000 workouts", RawSave, StoreSave, benchmark::kMillisecond);
    benchmark::RegisterBenchmark("test a file of 1,000,000 workouts", TestFile)
        ->Unit(benchmark::kMillisecond)
        ->Repetitions(7);
    RegisterPair("restore 1,000,000 workouts", RawRestore, StoreRestore, benchmark::kMillisecond);
}
