#pragma once

#include "store/sets/DAOFileSet.h"

#include <array>

/// Recorded workouts, one a row. Check-in stations write this table too.
class CDAOWk : public CDAOFileSet
{
public:
    using CDAOFileSet::CDAOFileSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }
    CRecordLine const& GetLine() const override;

    enum ok
    {
        okAll = -1,
        okNo = 0,
        okYes = 1
    }; ///< which workouts a search by dates selects
    static constexpr int kStationValues = 13;

    /// Selects the workouts of a member, or of all members when memberID is 0, oldest first.
    int FindWks(std::int32_t const& memberID);
    /// Selects the workouts of a member for one of the member's classes.
    int FindWks(std::int32_t const& memberID, std::uint8_t const& classIndex);
    /// Selects the workouts of a member that were checked in at that second.
    int FindWks(std::int32_t const& memberID, CEFOleDateTime const& when);
    /// Selects the workouts checked in from one time to another, both included, that pass the
    /// filter; of all members when memberID is 0.
    int FindWks(std::int32_t const& memberID, CEFOleDateTime const& from, CEFOleDateTime const& to,
        ok filter);
    /// The number of workouts checked in today.
    int CountToday();
    /// Whole minutes from check-in to check-out of the current row, truncated, never negative.
    int TotalMinutes() const { return MinutesBetween(m_dtCheckIn, m_dtCheckOut); }
    /// Index 0 is the number of circuits, 1 to 12 the values of the stations; any other reads as 0
    /// and is not written.
    std::int16_t GetStnVal(int const& index) const;
    void SetStnVal(int const& index, std::int16_t const& value);

    static constexpr CSortKey byCheckIn = {{"check_in"}};
    static constexpr CSortKey byTimeIn = {{"check_in % 86400"}}; ///< by the clock
    static constexpr CSortKey byTimeOut = {{"check_out % 86400"}};
    static constexpr CSortKey byMinutes = {{"max(check_out - check_in, 0) / 60"}};
    /// By a station value; empty for an index that has none.
    static CSortKey ByStnVal(int index);

    // The current row.
    std::int32_t m_lMemberID = 0;
    bool m_bWorkoutOK = false;
    std::uint8_t m_nClassIndex = 0;
    CEFOleDateTime m_dtCheckIn;
    CEFOleDateTime m_dtCheckOut;

protected:
    void ExchangeFields(CFieldExchange& fx) override;

private:
    std::array<std::int16_t, kStationValues> m_values = {};
};
