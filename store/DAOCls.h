#pragma once

#include "store/DAOEFSet.h"

/// The classes of members: up to three rows each, in the order of the class slots.
class CDAOCls : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects the classes of a member in slot order.
    int FindClasses(std::int32_t memberID);

    // The current row.
    std::int32_t m_MemberID = 0;
    std::uint8_t m_ClassIndex = 0; ///< what the member's records say which class they are for
    std::string m_Category;
    std::string m_Course;
    std::string m_Section;
    std::uint8_t m_GradeStat = 0; ///< a CDAODef::gradestat
    std::int16_t m_Orient = 0; ///< orientation bonus, not zero = yes
    std::int16_t m_ReEval = 0; ///< re-evaluation bonuses
    std::int16_t m_Other = 0; ///< other bonuses

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
