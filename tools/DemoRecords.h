#pragma once

#include "platform/db/Status.h"
#include "tools/CenterSettings.h"

#include <cstdint>

inline constexpr int kMostDemoMembers = 500'000;

/// Fills the session's empty centre with members and all their records over the last three years,
/// with 5 to 12 of them checked in since an hour and a half at most, and with a queued report. The
/// same seed makes the same centre on the same day, but for who has come and gone today and who is
/// there now. About 30 workouts a member; 3,000,000 take about a minute.
CDbStatus WriteDemoRecords(CCenterSettings const& center, int members, std::uint64_t seed);
