#pragma once

#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>

// What all measurements share: a member file with members, and workouts as three years leave them.

extern int g_members;
constexpr int kStations = 13;
extern std::int64_t g_rows; ///< of workouts

std::string WorkoutColumns(); ///< of a SELECT, the key first
void FillDatabase();
/// In MemberBench.cpp; gives the members the rows of their other tables first.
void RegisterMemberPairs();

/// Registers two measurements of the same work, to be compared; see CRatioReporter.
void RegisterPair(char const* what, void (*raw)(benchmark::State&),
    void (*store)(benchmark::State&), benchmark::TimeUnit unit);

void RegisterCompactionPair(); ///< in CompactionBench.cpp
void RegisterDataFilePairs(); ///< in DataFileBench.cpp
