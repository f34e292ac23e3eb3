#include "store/sets/DAOReport.h"

#include "store/sets/EnumText.h"

CRecordClass const* CDAOReport::GetThisClass()
{
    static CRecordClass const record = {"CDAOReport", nullptr, DataFile::report, "reports"};
    return &record;
}

char const* CDAOReport::GetTypeStr(rpttype type)
{
    return TextAt(
        {"Member Profile", "Member Count", "Member Emergency Contacts", "Membership Status",
            "Category/Course/Section Roster", "Daily Workouts", "Workout Summaries",
            "Member Workouts", "Category/Course/Section Workouts", "Test Results Interpretation",
            "Evaluation Comparison", "Body Composition Interpretation",
            "Body Composition Comparison", "Category \"Unknown\" Workouts"},
        type);
}

CDAOReport::rptparam CDAOReport::GetParamKind(rpttype type)
{
    switch (type) {
    case rtMemberProfile:
    case rtMemberWorkouts:
    case rtEvalInterpretation:
    case rtEvalComparison:
    case rtBodyCompInterpretation:
    case rtBodyCompComparison:
        return rpMember;
    case rtEmergencyContacts:
    case rtMembershipStatus:
    case rtClassRoster:
    case rtWorkoutSummaries:
    case rtClassWorkouts:
        return rpOptions;
    default:
        return rpNone;
    }
}

int CDAOReport::FindReports()
{
    return Find("WHERE state = 0 ORDER BY id");
}

void CDAOReport::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("type", m_nRptType);
    fx.Field("parameter", m_nRptParam);
    fx.Field("date_from", m_dtRptFrom);
    fx.Field("date_to", m_dtRptTo);
    fx.Field("category", m_strRptCategory);
    fx.Field("course", m_strRptCourse);
    fx.Field("section", m_strRptSection);
}
