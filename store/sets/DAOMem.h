#pragma once

#include "store/sets/DAOFileSet.h"
#include "store/sets/DAOSmMem.h"

#include <map>

class CMemberSearchData;

/// The whole member, joined from several tables; only read. A member's line of a data file holds
/// the rows of all six tables.
class CDAOMem : public CDAOFileSet
{
public:
    using CDAOFileSet::CDAOFileSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }
    CRecordLine const& GetLine() const override;

    /// Selects the member of that number; not zero when there is one. One index look-up.
    std::int32_t FindMember(CDAOSmMem::id kind, std::int32_t number);
    /// Selects all members in the table's order, or the current ones alone when past is false.
    int FindAllMembers(bool past);
    /// Selects the members that meet all criteria, in name order. Uses the indexes by number, name
    /// and class where such a criterion is given, and reads every member otherwise. The two flags
    /// are kept for their callers: the order and the extent do not depend on them.
    virtual int FindMembers(CMemberSearchData const& search, bool byName, bool past);
    static char const* GetStatusStr(std::uint8_t status) { return CDAOSmMem::GetStatusStr(status); }

    static constexpr CSortKey byName = {
        {"last_name COLLATE NOCASE", "first_name COLLATE NOCASE", "middle_initial COLLATE NOCASE"}};
    static constexpr CSortKey byMemberID = {{"member_id"}};
    static constexpr CSortKey byWorkoutNum = {{"workout_number"}};
    static constexpr CSortKey byStatus = {{"status <> 0"}}; ///< past ones first
    static constexpr CSortKey byExpireDate = {{"expire_date"}};

    // The current row.
    std::int32_t m_MemberID = 0;
    CEFOleDateTime m_ExpireDate;
    std::int32_t m_WorkoutNum = 0;
    std::string m_FirstName;
    std::string m_MiddleInit;
    std::string m_LastName;
    std::uint8_t m_Status = 0; ///< not zero = current
    std::string m_Address;
    std::string m_City;
    std::string m_State;
    std::string m_Zip;
    CEFOleDateTime m_Birthday;
    std::uint8_t m_Sex = 0; ///< not zero = male

protected:
    void ExchangeFields(CFieldExchange& fx) override;
    std::optional<CRowView> LineCells(CRowBlock& block) override;
    Outcome RestoreRecord(CRowBlock& record, bool keepExisting) override;
    bool RestoreRest() override;
    void EndRestore() override;
    /// The line's columns, by the key of this set's rows.
    virtual CTableInfo const& JoinedTable() const;
    CTableInfo JoinedOver(std::string_view members, std::string_view key) const;

private:
    /// A member to be restored whose workout number another one has.
    struct CWaiting
    {
        CRowBlock record;
        bool isThere = false; ///< to be replaced
        bool isMet = false; ///< while those in its way are stored
    };

    std::int64_t WorkoutNumber(CRowView const& row) const;
    Outcome Store(CRowView const& row, bool isThere);
    bool ReplaceSummary(CRowView const& row, DbValue const& member);
    bool Park(std::int64_t member, std::int64_t& number);

    std::map<std::int64_t, CWaiting> m_waiting; ///< during a restore, by member ID
};
