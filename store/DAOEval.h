#pragma once

#include "store/DAOEFSet.h"

/// The whole evaluation, joined from its tables; only read.
class CDAOEval : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    // The current row.
    std::int32_t m_lEvalID = 0;
    double m_dPercentFat = 0.0;
    std::int32_t m_lMemberID = 0;
    CEFOleDateTime m_dtEvalDate; ///< never after today
    double m_dHeight = 0.0; ///< inches
    double m_dWeight = 0.0; ///< pounds
    std::uint8_t m_nActLevel = 0; ///< a CDAOBodyComp::actlevel
    std::int32_t m_nRestingHR = 0; ///< beats per minute
    std::int32_t m_nSystolic = 0;
    std::int32_t m_nDiastolic = 0;
    double m_dTrunkFlexion = 0.0;
    std::int32_t m_nSitUps = 0; ///< in a minute
    std::int32_t m_nAbCrunches = 0; ///< in a minute
    std::int32_t m_nStepTest = 0; ///< of three minutes
    std::int32_t m_nRunSeconds = 0; ///< for 1.5 miles
    std::int32_t m_nErgometer = 0; ///< pulse recovery

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
