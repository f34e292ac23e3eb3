#pragma once

#include "store/DAOEFSet.h"

/// The whole member, joined from several tables; only read.
class CDAOMem : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

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
};
