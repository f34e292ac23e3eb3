#include "reports/content/BuildReport.h"

#include "reports/content/FitnessReports.h"
#include "reports/content/MemberReports.h"
#include "reports/content/WorkoutReports.h"
#include "store/sets/DAOCenter.h"
#include "store/sets/SetCloser.h"

namespace
{

/// Who the centre is, which heads every page.
CDbStatus ReadCenter(CReport& report)
{
    CDAOCenter center;
    CSetCloser const close(center);
    if (center.OpenSet(true) == 0) {
        return center.LastStatus()
            ? CDbStatus(DbError::gone, "There is no record of the centre itself.")
            : center.LastStatus();
    }
    report.m_strCenter = center.m_strCenterName;
    std::string place = center.m_strState;
    if (!center.m_strZip.empty()) {
        place += (place.empty() ? "" : " ") + center.m_strZip;
    }
    for (auto const* part : {&center.m_strAddress1, &center.m_strAddress2, &center.m_strCity,
             &place, &center.m_strPhone}) {
        if (!part->empty()) {
            report.m_strCenterLine += (report.m_strCenterLine.empty() ? "" : ", ") + *part;
        }
    }
    return {};
}

CDbStatus FillIn(CReportRequest const& request)
{
    switch (request.m_job.m_nType) {
    case CDAOReport::rtMemberProfile:
        return MemberProfile(request);
    case CDAOReport::rtMemberCount:
        return MemberCount(request);
    case CDAOReport::rtEmergencyContacts:
        return EmergencyContacts(request);
    case CDAOReport::rtMembershipStatus:
        return MembershipStatus(request);
    case CDAOReport::rtClassRoster:
        return ClassRoster(request);
    case CDAOReport::rtDailyWorkouts:
        return DailyWorkouts(request);
    case CDAOReport::rtWorkoutSummaries:
        return WorkoutSummaries(request);
    case CDAOReport::rtMemberWorkouts:
        return MemberWorkouts(request);
    case CDAOReport::rtClassWorkouts:
        return ClassWorkouts(request);
    case CDAOReport::rtUnknownWorkouts:
        return UnknownWorkouts(request);
    case CDAOReport::rtEvalInterpretation:
        return TestInterpretation(request);
    case CDAOReport::rtEvalComparison:
        return EvaluationComparison(request);
    case CDAOReport::rtBodyCompInterpretation:
        return BodyCompInterpretation(request);
    case CDAOReport::rtBodyCompComparison:
        return BodyCompComparison(request);
    default:
        return {DbError::failed, "There is no report of this type."};
    }
}

} // namespace

CDbStatus BuildReport(CReportJob const& job, CReportWatch const& watch, CReport& report)
{
    report = {};
    report.m_strTitle = CDAOReport::GetTypeStr(job.m_nType);
    report.m_strMade = CEFOleDateTime::GetCurrentTime().DateTimeStrLongYear();
    if (auto status = ReadCenter(report); !status) {
        return status;
    }
    return FillIn({job, watch, report});
}
