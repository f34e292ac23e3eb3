#pragma once

#include "store/sets/DAOEFSet.h"

/// The check-in stations, in the table's order.
class CDAOStn : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    // The current row.
    std::string m_strStnName;
    std::string m_strStnAbbr; ///< heads the station's column in lists

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
