#pragma once

#include "store/sets/DAOMem.h"

/// The members of a class search, each once, with the first of its classes that meets the
/// criterion. Without a class criterion these are the members who have a class.
class CDAOMemCls : public CDAOMem
{
public:
    using CDAOMem::CDAOMem;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    int FindMembers(CMemberSearchData const& search, bool byName, bool past) override;

    // The current row, after the fields of CDAOMem.
    std::uint8_t m_ClassIndex = 0; ///< of the first class, in stored order, that met the criterion

protected:
    void ExchangeFields(CFieldExchange& fx) override;
    CTableInfo const& JoinedTable() const override;
};
