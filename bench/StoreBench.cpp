// Measures the record sets against plain SQLite doing the same work on the same file, in one run
// with the two taking turns, and prints the table of docs/performance.md.

#include "bench/BenchData.h"
#include "bench/RatioReporter.h"
#include "bench/RawMember.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/DAOWk.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

std::int64_t WalkRaw(CRawDatabase const& raw, char const* order)
{
    CRawStatement const select(raw, "SELECT " + WorkoutColumns() + " FROM workouts " + order);
    std::int64_t sum = 0;
    while (select.Step()) {
        for (int column = 0; column < 6 + kStations; ++column) {
            sum += select.Integer(column);
        }
    }
    return sum;
}

std::int64_t WalkSet(CDAOWk& set, int count)
{
    std::int64_t sum = 0;
    for (int i = 0; i < count; ++i) {
        sum += set.m_lMemberID + set.m_dtCheckIn.Seconds() + set.GetStnVal(12);
        set.Op(CDAOEFSet::opMoveNext);
    }
    set.Op(CDAOEFSet::opClose);
    return sum;
}

void RawWalk(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    for (auto _ : state) {
        benchmark::DoNotOptimize(WalkRaw(raw, "ORDER BY id"));
    }
}

void StoreWalk(benchmark::State& state)
{
    CDAOWk set;
    for (auto _ : state) {
        benchmark::DoNotOptimize(WalkSet(set, set.OpenSet(true)));
    }
}

void RawWalkByTime(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    for (auto _ : state) {
        benchmark::DoNotOptimize(WalkRaw(raw, "ORDER BY check_in, id"));
    }
}

void StoreWalkByTime(benchmark::State& state)
{
    CDAOWk set;
    for (auto _ : state) {
        benchmark::DoNotOptimize(WalkSet(set, set.FindWks(0)));
    }
}

void RawKeys(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    CRawStatement const select(raw, "SELECT id FROM workouts ORDER BY check_in, id");
    for (auto _ : state) {
        std::vector<std::int64_t> keys;
        while (select.Step()) {
            keys.push_back(select.Integer(0));
        }
        select.Reset();
        benchmark::DoNotOptimize(keys.data());
    }
}

void StoreKeys(benchmark::State& state)
{
    CDAOWk set;
    for (auto _ : state) {
        benchmark::DoNotOptimize(set.FindWks(0));
        set.Op(CDAOEFSet::opClose);
    }
}

void RawOneRow(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    CRawStatement const select(raw,
        "SELECT id, member_id, workout_number, first_name, middle_initial, last_name, status "
        "FROM members WHERE member_id = ?");
    std::int32_t member = 0;
    for (auto _ : state) {
        member = member % g_members + 1;
        select.Bind(1, member);
        while (select.Step()) {
            benchmark::DoNotOptimize(
                select.Integer(0) + select.Integer(1) + select.Integer(2) + select.Integer(6));
            benchmark::DoNotOptimize(select.Text(3));
            benchmark::DoNotOptimize(select.Text(4));
            benchmark::DoNotOptimize(select.Text(5));
        }
        select.Reset();
    }
}

void StoreOneRow(benchmark::State& state)
{
    CDAOSmMem set;
    std::int32_t member = 0;
    for (auto _ : state) {
        member = member % g_members + 1;
        benchmark::DoNotOptimize(set.FindMember(CDAOSmMem::idMember, member));
        set.Op(CDAOEFSet::opClose);
    }
}

constexpr int kAddedRows = 500;

void RawAdd(benchmark::State& state)
{
    CRawDatabase const raw(MemberPath());
    CRawStatement const insert(raw,
        "INSERT INTO workouts (" + WorkoutColumns().substr(4)
            + ") VALUES (?, 1, 1, 4000000000, 4000003600, 3, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, "
              "12)");
    for (auto _ : state) {
        for (int i = 0; i < kAddedRows; ++i) {
            insert.Bind(1, i % g_members + 1);
            insert.Step();
            insert.Reset();
        }
    }
}

void StoreAdd(benchmark::State& state)
{
    CDAOWk set;
    set.OpenSet(false);
    for (auto _ : state) {
        for (int i = 0; i < kAddedRows; ++i) {
            set.Op(CDAOEFSet::opAddNew);
            set.m_lMemberID = i % g_members + 1;
            set.m_bWorkoutOK = true;
            set.m_dtCheckIn = CEFOleDateTime::FromSeconds(4'000'000'000);
            set.m_dtCheckOut = CEFOleDateTime::FromSeconds(4'000'003'600);
            for (int station = 0; station < kStations; ++station) {
                set.SetStnVal(station, static_cast<std::int16_t>(station));
            }
            if (!set.Op(CDAOEFSet::opUpdate)) {
                state.SkipWithError(set.LastStatus().Text().c_str());
                return;
            }
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    if (argc > 1 && std::strcmp(argv[1], "--quick") == 0) {
        g_members = 5'000;
        g_rows = 50'000;
        arguments.erase(arguments.begin() + 1);
    }
    // The two sides take turns, so that a busy moment of the machine hits both.
    std::string interleave = "--benchmark_enable_random_interleaving=true";
    arguments.push_back(interleave.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());

    std::string folder = (std::filesystem::temp_directory_path() / "corvana-bench-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr) {
        std::perror("cannot make a folder");
        return 1;
    }
    CDatabaseSession::Get().SetDataFolder(folder);
    auto const status = CreateDatabase(MemberPath(), DataFileSchema(DataFile::member));
    if (!status) {
        std::fprintf(stderr, "%s\n", status.Text().c_str());
        return 1;
    }
    FillDatabase();
    RegisterMemberPairs();
    RegisterPair("open 1,000,000 keys", RawKeys, StoreKeys, benchmark::kMillisecond);
    RegisterPair("walk, by key", RawWalk, StoreWalk, benchmark::kMillisecond);
    RegisterPair("walk, by time", RawWalkByTime, StoreWalkByTime, benchmark::kMillisecond);
    RegisterPair("one row by its number", RawOneRow, StoreOneRow, benchmark::kMicrosecond);
    RegisterPair("500 rows, a commit each", RawAdd, StoreAdd, benchmark::kMillisecond);
    RegisterDataFilePairs();
    RegisterCompactionPair();
    CRatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    CDatabaseSession::Get().ShutDown();
    std::filesystem::remove_all(folder);
    return reporter.HasFailed() ? 1 : 0;
}
