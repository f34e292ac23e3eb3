#pragma once

#include "store/sets/DAOEFSet.h"

/// Who is checked in at this moment; check-in stations write it.
class CDAOChkIn : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects everybody checked in now, oldest check-in first. One statement reads the rows with
    /// their keys as long as they are a few hundred.
    int FindChkIns();

    // The current row.
    std::int32_t m_lMemberID = 0;
    std::int32_t m_lWorkoutNo = 0;
    std::string m_strFirstName;
    std::string m_strLastName;
    CEFOleDateTime m_dtCheckIn;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
