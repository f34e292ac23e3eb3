#pragma once

#include "store/sets/DAOEFSet.h"

/// Fitness evaluations, one a row; skinfolds and lifts hang on it by its number.
class CDAOSmEval : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    enum id
    {
        idMember = 0,
        idEval = 1
    }; ///< what a look-up by number means

    /// Selects by member ID (all members when it is 0) or by evaluation number, oldest first.
    int FindEvals(id kind, std::int32_t number);
    /// Selects the evaluations of a member for one of the member's classes.
    int FindEvals(std::int32_t memberID, std::uint8_t classIndex);
    /// Selects the evaluations of a member made at that second.
    int FindEvals(std::int32_t memberID, CEFOleDateTime const& when);
    /// A number that no evaluation has, larger than all of theirs and the one given as long as
    /// there is one; 0 when the file cannot be read. Inside the transaction that adds the
    /// evaluation it is certain; outside, two programs may get the same one, and the later of them
    /// is refused when it writes.
    std::int32_t GenerateIDNum(std::int64_t above = 0);

    // The current row.
    std::int32_t m_lEvalID = 0;
    std::int32_t m_lMemberID = 0;
    CEFOleDateTime m_dtEvalDate; ///< never after today
    std::uint8_t m_nClassIndex = 0;
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
