#pragma once

#include "store/sets/DAOEFSet.h"

/// The categories of the class catalogue.
class CDAOCat : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects one category by its number, or all when it is 0, in the table's order.
    int FindCategories(std::int32_t number);

    // The current row.
    std::int32_t m_nCatID = 0;
    std::string m_strCatName;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
