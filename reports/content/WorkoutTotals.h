#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

class CEFOleDateTime;
struct CReportChart;

/// Sums over workouts, as a list's last line and a chart show them.
struct CWorkoutTotals
{
    std::int64_t m_nWorkouts = 0;
    std::int64_t m_nOkay = 0; ///< those that count
    std::int64_t m_nMinutes = 0; ///< each workout's are truncated
    std::int64_t m_nCircuits = 0;

    void Add(int minutes, int circuits, bool isOkay)
    {
        ++m_nWorkouts;
        m_nOkay += isOkay ? 1 : 0;
        m_nMinutes += minutes;
        m_nCircuits += circuits;
    }
    void Add(CWorkoutTotals const& other);
    /// Minutes of a workout in the mean, rounded.
    std::int64_t MeanMinutes() const;
};

/// Counts workouts by week or, over more than half a year, by month, for a chart.
class CWorkoutWeeks
{
public:
    /// That many workouts on the day of this time. A date that is none is left out.
    void Add(CEFOleDateTime const& day, std::int64_t workouts = 1);
    bool IsWorthIt() const; ///< more than one bar
    CReportChart Chart() const;

private:
    std::map<std::int64_t, std::int64_t> m_days; ///< workouts by day number
};
