#pragma once

#include "store/sets/DAOEFSet.h"

/// The queue of print jobs, written here and read by the report server: one row is one job.
class CDAOReport : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    /// Selects all jobs that are still queued, oldest first.
    int FindReports();

    // The current row.
    std::int32_t m_nRptType = 0; ///< 0 to 13
    std::int32_t m_nRptParam = 0; ///< a member ID, option flags, or 0
    CEFOleDateTime m_dtRptFrom;
    CEFOleDateTime m_dtRptTo;
    std::string m_strRptCategory;
    std::string m_strRptCourse;
    std::string m_strRptSection;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
