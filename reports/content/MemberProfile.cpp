#include "reports/content/MemberReports.h"
#include "reports/content/ReportRows.h"
#include "reports/content/ReportTexts.h"
#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOCls.h"
#include "store/sets/DAODef.h"
#include "store/sets/DAOEnr.h"
#include "store/sets/DAOMsg.h"
#include "store/sets/DAOProf.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/DAOWk.h"
#include "store/sets/SetCloser.h"

#include <algorithm>

namespace
{

char const* YesNo(bool yes)
{
    return yes ? "Yes" : "No";
}

std::string AgeText(CEFOleDateTime const& birthday)
{
    auto const age = birthday.IsZero() || !birthday.ChkStatus() ? -1 : birthday.ElapsedYrs();
    return DateText(birthday) + (age < 0 ? "" : " (" + std::to_string(age) + ")");
}

std::string PlaceText(CDAOProf const& profile)
{
    return profile.m_City + (profile.m_City.empty() || profile.m_State.empty() ? "" : ", ")
        + ClassText(profile.m_State, profile.m_Zip, {});
}

/// The texts of the bits that are set, the highest first.
std::string BitTexts(std::uint32_t mask, int highest, char const* (*text)(int bit))
{
    std::string texts;
    for (int bit = highest; bit >= 0; --bit) {
        if ((mask >> unsigned(bit) & 1U) != 0) {
            texts += (texts.empty() ? "" : ", ") + std::string(text(bit));
        }
    }
    return texts.empty() ? "None noted" : texts;
}

CDbStatus AddProfile(CReport& report, std::int32_t member, CReportFacts& facts)
{
    CDAOProf profile;
    CSetCloser const close(profile);
    if (profile.FindProfile(member) == 0) {
        return profile.LastStatus();
    }
    auto& list = facts.m_lstFacts;
    list.emplace_back("Birthday (age)", AgeText(profile.m_Birthday));
    list.emplace_back("Sex", profile.m_Sex != 0 ? "Male" : "Female");
    list.emplace_back("Address", profile.m_Address);
    list.emplace_back("City", PlaceText(profile));
    list.emplace_back("Telephone", profile.m_Phone);
    list.emplace_back("E-mail", profile.m_Email);
    list.emplace_back("Emergency contact", profile.m_EmergName);
    list.emplace_back("Emergency telephone", profile.m_EmergPhone);
    list.emplace_back("Physician", profile.m_Physician);
    list.emplace_back("Release form on file", YesNo(profile.m_Release != 0));
    list.emplace_back("Employee", YesNo(profile.m_Employee != 0));
    report.m_lstBlocks.emplace_back(std::move(facts));
    report.Heading("Fitness goals");
    report.Body(BitTexts(profile.m_Goals, 7, CDAOProf::GetGoalStr));
    report.Heading("Medical history");
    report.Body(BitTexts(profile.m_MedHist, 20, CDAOProf::GetMedHistStr));
    return {};
}

CDbStatus AddEnrollment(CReport& report, std::int32_t member)
{
    CDAOEnr enrollment;
    CSetCloser const close(enrollment);
    if (enrollment.FindEnrollment(member) == 0) {
        return enrollment.LastStatus();
    }
    report.Heading("Enrollment");
    report.m_lstBlocks.emplace_back(CReportFacts{
        {{"Enrolled", DateText(enrollment.m_EnrollDate)},
            {"Expires", DateText(enrollment.m_ExpireDate)},
            {"Period", CDAODef::GetEnrPerStr(CDAODef::enrollper(enrollment.m_EnrollPer))},
            {"Incentive club", YesNo(enrollment.m_Incentive != 0)}},
        2});
    return {};
}

CDbStatus AddClasses(CReportRequest const& request, std::int32_t member)
{
    CDAOCls classes;
    CSetCloser const close(classes);
    auto const count = classes.FindClasses(member);
    CReportTable table({{"Class", 40}, {"Grade status", 13}, {"Orientation", 11},
        {"Re-evaluations", 13, true}, {"Other bonuses", 13, true}});
    table.m_strIfEmpty = "The member is in no class.";
    auto status = ForEachRow(request, classes, count, [&] {
        table.AddRow({ClassOf(classes),
            CDAODef::GetGrdStatStr(CDAODef::gradestat(classes.m_GradeStat)),
            YesNo(classes.m_Orient != 0), CountText(classes.m_ReEval), CountText(classes.m_Other)});
    });
    request.m_report.Heading("Classes");
    request.m_report.m_lstBlocks.emplace_back(std::move(table));
    return status;
}

/// "12, the last one on 11/16/2026" for records that were found in the order of time.
template <typename Set>
CDbStatus CountRecords(
    Set& set, int count, CEFOleDateTime Set::*date, char const* label, CReportFacts& facts)
{
    CSetCloser const close(set);
    if (!set.LastStatus()) {
        return set.LastStatus();
    }
    auto text = CountText(count);
    if (count > 0 && set.MoveSet(count - 1)) {
        text += ", the last one on " + DateText(set.*date);
    }
    facts.m_lstFacts.emplace_back(label, text);
    return set.LastStatus();
}

CDbStatus AddRecords(CReport& report, std::int32_t member)
{
    CReportFacts facts{{}, 1};
    CDAOWk workouts;
    auto status
        = CountRecords(workouts, workouts.FindWks(member), &CDAOWk::m_dtCheckIn, "Workouts", facts);
    if (status) {
        CDAOSmEval evaluations;
        status = CountRecords(evaluations, evaluations.FindEvals(CDAOSmEval::idMember, member),
            &CDAOSmEval::m_dtEvalDate, "Evaluations", facts);
    }
    if (status) {
        CDAOBodyComp bodyComps;
        status = CountRecords(bodyComps, bodyComps.FindBodyComps(member),
            &CDAOBodyComp::m_dtBodyCompDate, "Body compositions", facts);
    }
    report.Heading("Records");
    report.m_lstBlocks.emplace_back(std::move(facts));
    return status;
}

CDbStatus AddMessage(CReport& report, std::int32_t member)
{
    CDAOMsg messages;
    CSetCloser const close(messages);
    if (messages.FindMessages(member) > 0 && !messages.m_Message.empty()) {
        report.Heading("Message at the next check-in");
        report.Body(messages.m_Message);
    }
    return messages.LastStatus();
}

} // namespace

CDbStatus MemberProfile(CReportRequest const& request)
{
    auto const member = request.m_job.m_nParam;
    auto& report = request.m_report;
    CDAOSmMem summary;
    CSetCloser const close(summary);
    if (summary.FindMember(CDAOSmMem::idMember, member) == 0) {
        return summary.LastStatus() ? NoSuchMember() : summary.LastStatus();
    }
    report.m_lstScope.push_back(NameOf(summary));
    CReportFacts facts{{{"Member ID", std::to_string(member)},
                           {"Workout number", std::to_string(summary.m_WorkoutNum)},
                           {"Status", CDAOSmMem::GetStatusStr(summary.m_Status)}},
        2};
    auto status = AddProfile(report, member, facts);
    if (status) {
        status = AddEnrollment(report, member);
    }
    if (status) {
        status = AddClasses(request, member);
    }
    if (status) {
        status = AddRecords(report, member);
    }
    if (status) {
        status = AddMessage(report, member);
    }
    return status;
}
