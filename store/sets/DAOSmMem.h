#pragma once

#include "store/sets/DAOEFSet.h"

/// The summary row of a member: numbers, name and status. The rows of all other tables hang on it.
class CDAOSmMem : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Member IDs and workout numbers begin with 1.
    static constexpr std::int32_t kLargestNumber = 999'999'999;

    enum id
    {
        idMember = 0,
        idWorkout = 1
    }; ///< which number a look-up uses

    /// Selects the member of that number; not zero when there is one. One index look-up.
    std::int32_t FindMember(id kind, std::int32_t number);
    /// Looks a member up without moving the cursor; false when there is none.
    bool GetMember(id kind, std::int32_t number, std::string& firstName, std::string& middleInit,
        std::string& lastName, std::uint8_t& status);
    /// Selects all members in the table's order, or the current ones alone when past is false.
    int FindAllMembers(bool past);
    /// The same in name order: last, first, middle initial, ignoring case.
    int FindAllMembersByName(bool past);
    /// The number of past members. Reads every summary row.
    int CountPast();
    /// "Current" or "Past".
    static char const* GetStatusStr(std::uint8_t status);

    // The current row.
    std::int32_t m_MemberID = 0;
    std::int32_t m_WorkoutNum = 0;
    std::string m_FirstName; ///< at most 12 characters
    std::string m_MiddleInit; ///< at most 1 character
    std::string m_LastName; ///< at most 20 characters
    std::uint8_t m_Status = 0; ///< not zero = current, 0 = past

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
