#include "bench/BenchData.h"

#include "bench/RawMember.h"

int g_members = 100'000;
std::int64_t g_rows = 1'000'000;

std::string WorkoutColumns()
{
    std::string columns = "id, member_id, workout_ok, class_index, check_in, check_out, circuits";
    for (int i = 1; i < kStations; ++i) {
        columns += ", station" + std::to_string(i);
    }
    return columns;
}

/// In the order of time, members mixed.
void FillDatabase()
{
    CRawDatabase const raw(MemberPath());
    AddMembers(raw, g_members);
    raw.Run("BEGIN");
    CRawStatement const workout(raw,
        "INSERT INTO workouts (" + WorkoutColumns().substr(4)
            + ") VALUES (?1, 1, 1, ?2, ?2 + 3600, 3, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, "
              "110, 120)");
    for (std::int64_t i = 0; i < g_rows; ++i) {
        workout.Bind(1, i * 7919 % g_members + 1);
        workout.Bind(2, 3'900'000'000 + i * 90);
        workout.Step();
        workout.Reset();
    }
    raw.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
}

void RegisterPair(char const* what, void (*raw)(benchmark::State&),
    void (*store)(benchmark::State&), benchmark::TimeUnit unit)
{
    for (auto const& [side, function] : {std::pair{"raw", raw}, std::pair{"store", store}}) {
        benchmark::RegisterBenchmark((std::string(what) + "|" + side).c_str(), function)
            ->Unit(unit)
            ->Repetitions(7);
    }
}
