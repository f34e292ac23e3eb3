#pragma once

#include "store/sets/DAOEFSet.h"

/// The message that a member sees once at the next check-in: none or one row each.
class CDAOMsg : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    static constexpr std::size_t kLongestMessage = 200; ///< characters

    /// Selects the messages of a member.
    int FindMessages(std::int32_t memberID);

    // The current row.
    std::int32_t m_MemberID = 0;
    std::string m_Message; ///< at most kLongestMessage characters

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
