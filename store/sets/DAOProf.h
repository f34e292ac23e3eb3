#pragma once

#include "store/sets/DAOEFSet.h"

/// The profile of a member, one row each.
class CDAOProf : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects the profile of a member; not zero when there is one. One index look-up.
    std::int32_t FindProfile(std::int32_t memberID);

    /// What a bit of m_Goals (0 to 7) or m_MedHist (0 to 20) stands for; empty for any other. Forms
    /// show the highest bit first.
    static char const* GetGoalStr(int bit);
    static char const* GetMedHistStr(int bit);

    // The current row. Lengths are the most characters that are entered.
    std::int32_t m_MemberID = 0;
    std::string m_Address; ///< 28
    std::string m_City; ///< 16
    std::string m_State; ///< an abbreviation of CStateAbbrev, or empty
    std::string m_Zip; ///< 10
    std::string m_Phone; ///< 14
    std::string m_Email; ///< 32
    std::string m_EmergName; ///< 32
    std::string m_EmergPhone; ///< 14
    std::string m_Physician; ///< 32
    std::uint8_t m_Release = 0; ///< signed release form on file
    std::uint8_t m_Employee = 0;
    CEFOleDateTime m_Birthday; ///< the date alone
    std::uint8_t m_Sex = 0; ///< not zero = male, 0 = female
    std::uint32_t m_Goals = 0; ///< bits 0 to 7; the others are kept
    std::uint32_t m_MedHist = 0; ///< bits 0 to 20; the others are kept

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
