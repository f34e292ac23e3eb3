#pragma once

#include "store/sets/DAOEFSet.h"

/// The defaults record, one row: what a new class enrolment starts with.
class CDAODef : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    enum gradestat : std::uint8_t
    {
        gsNone,
        gsInProgress,
        gsSatisfactory,
        gsIncomplete,
        gsWithdrawn
    };
    enum enrollper : std::uint8_t
    {
        epMonth,
        epQuarter,
        epHalfYear,
        epYear
    };
    static constexpr std::uint8_t kOrientBonus = 0x20; ///< in m_nDefFlags

    /// Display texts; empty for a number that is none of the enumeration.
    static char const* GetGrdStatStr(gradestat status);
    static char const* GetEnrPerStr(enrollper period);

    // The current row. Keeps its values after opClose.
    std::uint8_t m_nDefGradeStat = 0; ///< a gradestat
    std::uint8_t m_nDefReEvalBonuses = 0;
    std::uint8_t m_nDefOtherBonuses = 0;
    std::uint8_t m_nDefFlags = 0;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
