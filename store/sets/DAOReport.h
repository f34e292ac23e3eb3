#pragma once

#include "store/sets/DAOEFSet.h"

/// The queue of print jobs, written here and read by the report server: one row is one job. What
/// the server does with them is CReportQueue's matter.
class CDAOReport : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;
    static CRecordClass const* GetThisClass();
    CRecordClass const* GetClass() const override { return GetThisClass(); }

    enum rpttype : std::int32_t
    {
        rtMemberProfile,
        rtMemberCount,
        rtEmergencyContacts,
        rtMembershipStatus,
        rtClassRoster,
        rtDailyWorkouts,
        rtWorkoutSummaries,
        rtMemberWorkouts,
        rtClassWorkouts,
        rtEvalInterpretation,
        rtEvalComparison,
        rtBodyCompInterpretation,
        rtBodyCompComparison,
        rtUnknownWorkouts
    };
    /// Flags of a list; one of the three for the membership status is set.
    enum rptoption : std::int32_t
    {
        roMemberIDs = 1, ///< print the IDs of the members
        roAll = 2,
        roCurrent = 4,
        roPast = 8,
        roAllWorkouts = 16 ///< all that are stored, without dates
    };
    enum rptparam : std::uint8_t
    {
        rpNone,
        rpMember, ///< a member ID
        rpOptions ///< rptoption flags
    };

    /// The name of a report; empty for a number that is none of the enumeration.
    static char const* GetTypeStr(rpttype type);
    /// What the parameter of a job of that type is; none for a number that is no type.
    static rptparam GetParamKind(rpttype type);

    /// Selects all jobs that still wait, oldest first.
    int FindReports();

    // The current row.
    std::int32_t m_nRptType = 0; ///< an rpttype
    std::int32_t m_nRptParam = 0; ///< what GetParamKind says, or 0
    CEFOleDateTime m_dtRptFrom;
    CEFOleDateTime m_dtRptTo;
    std::string m_strRptCategory;
    std::string m_strRptCourse;
    std::string m_strRptSection;

protected:
    void ExchangeFields(CFieldExchange& fx) override;
};
