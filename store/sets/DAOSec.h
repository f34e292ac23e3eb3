#pragma once

#include "store/sets/DAOEFSet.h"

/// The sections of the class catalogue, each in one course.
class CDAOSec : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects the sections of a course, only those of that name when one is given, in the table's
    /// order.
    int FindSections(std::int32_t course);
    int FindSections(std::int32_t course, char const* name);

    // The current row.
    std::int32_t m_nSecID = 0;
    std::int32_t m_nSecCourID = 0; ///< number of its course
    std::string m_strSecName;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
