#pragma once

#include "store/sets/DAOEFSet.h"

/// The centre record, one row: who the centre is, and the minimum workout.
class CDAOCenter : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// True when the text is the centre's administration password. The stored hash is asked for
    /// afresh each time and never kept; one that is missing or unreadable refuses every text. Takes
    /// about a tenth of a second, on purpose.
    bool ChkPassword(char const* text) const;
    /// True when a workout meets both minimums; one of 0 is always met.
    bool VerifyWk(
        int const& circuits, CEFOleDateTime const& checkIn, CEFOleDateTime const& checkOut) const;
    /// Stores a new administration password in the centre record; false, with LastStatus(), when it
    /// could not be stored.
    bool SetPassword(std::string_view text);

    // The current row. Keeps its values after opClose.
    std::string m_strCenterName;
    std::string m_strAddress1;
    std::string m_strAddress2;
    std::string m_strCity;
    std::string m_strState;
    std::string m_strZip;
    std::string m_strPhone;
    std::string m_strEmail;
    std::string m_strWeb;
    std::int16_t m_nMinMinutes = 0; ///< least total minutes of a workout that counts
    std::uint8_t m_nMinCircuits = 0; ///< least circuits of a workout that counts

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
