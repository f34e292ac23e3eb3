#pragma once

#include "store/sets/DAOEFSet.h"

/// The bonuses table. The console only makes sure that it can be read.
class CDAOBon : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    // The current row.
    std::string m_strBonusName;
    std::int16_t m_nPoints = 0;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
