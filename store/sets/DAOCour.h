#pragma once

#include "store/sets/DAOEFSet.h"

/// The courses of the class catalogue, each in one category.
class CDAOCour : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects the courses of a category, only the one of that number when course is not 0, in the
    /// table's order.
    int FindCourses(std::int32_t category, std::int32_t course);

    // The current row.
    std::int32_t m_nCourID = 0;
    std::int32_t m_nCourCatID = 0; ///< number of its category
    std::string m_strCourName;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
