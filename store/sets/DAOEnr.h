#pragma once

#include "store/sets/DAOEFSet.h"

/// The enrolment of a member, one row each.
class CDAOEnr : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects the enrolment of a member; not zero when there is one. One index look-up.
    std::int32_t FindEnrollment(std::int32_t memberID);

    // The current row.
    std::int32_t m_MemberID = 0;
    CEFOleDateTime m_EnrollDate;
    CEFOleDateTime m_ExpireDate;
    std::uint8_t m_EnrollPer = 0; ///< a CDAODef::enrollper
    std::uint8_t m_Incentive = 0; ///< member of the incentive club

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
