#include "doc/ReportPrompts.h"

#include "doc/ClassDlg.h"
#include "doc/CompareDlg.h"
#include "doc/CorvanaDoc.h"
#include "doc/ReportOptionsDlg.h"
#include "store/services/ReportJob.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/DateDlg.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

namespace
{

QString Tr(char const* text)
{
    return QCoreApplication::translate("ReportPrompts", text);
}

/// Tells why there will be no report; always false.
bool Stop(CCorvanaDoc const& doc, QString const& text, CDbStatus const& status = {})
{
    Tell(doc.Window(), text, CMessageIcon::none, ToQt(status.Text()));
    return false;
}

// Each of these puts answers into the job; false when the user cancels or was told why there will
// be no report.

bool AskMember(CCorvanaDoc& doc, CReportJob& job)
{
    job.m_nParam = doc.AskMemberID(true);
    return job.m_nParam != 0;
}

bool AskMemberClass(CCorvanaDoc& doc, CReportJob& job)
{
    auto const choice = AskMember(doc, job) ? doc.AskMemberClass(job.m_nParam) : std::nullopt;
    if (!choice) {
        return false;
    }
    job.m_strCategory = std::to_string(choice->m_nClassIndex);
    job.m_strCourse = choice->m_strClass;
    return true;
}

bool AskClass(CCorvanaDoc& doc, CReportJob& job)
{
    CClassDlg dialog(doc, doc.Window());
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    job.m_strCategory = dialog.m_strCategory;
    job.m_strCourse = dialog.m_strCourse;
    job.m_strSection = dialog.m_strSection;
    return true;
}

/// From the beginning of the one day to the end of the other.
void SetRange(CReportJob& job, CEFOleDateTime const& from, CEFOleDateTime const& to)
{
    job.m_dtFrom = from;
    job.m_dtFrom.Midnight();
    job.m_dtTo = to;
    job.m_dtTo.PreMidnight();
}

bool AskOptions(CCorvanaDoc& doc, CReportJob& job, CReportOptionsDlg::Kind kind)
{
    CReportOptionsDlg dialog(kind, doc.Window());
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    job.m_nParam = dialog.m_nStatus | (dialog.m_bMemberIDs ? CDAOReport::roMemberIDs : 0);
    if (kind == CReportOptionsDlg::Kind::workouts) {
        if (dialog.m_bAllWorkouts) {
            job.m_nParam |= CDAOReport::roAllWorkouts;
        } else {
            SetRange(job, dialog.m_dtFrom, dialog.m_dtTo);
        }
    }
    return true;
}

bool AskDay(CCorvanaDoc& doc, CReportJob& job)
{
    CDateDlg dialog(doc.Window());
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    SetRange(job, dialog.m_dtDate, dialog.m_dtDate);
    CWaitCursor const wait;
    CSetCloser const close(doc.m_setWk);
    int const count = doc.m_setWk.FindWks(0, job.m_dtFrom, job.m_dtTo, CDAOWk::okAll);
    auto const day = ToQt(job.m_dtFrom.DateStrLongYear());
    if (!doc.m_setWk.LastStatus()) {
        return Stop(doc, Tr("Error: the workouts of %1 could not be read.").arg(day),
            doc.m_setWk.LastStatus());
    }
    return count > 0 || Stop(doc, Tr("No workouts are recorded for %1.").arg(day));
}

/// What is told of one kind of record. %1 is the member ID.
struct CRecordTexts
{
    QString m_strNone;
    QString m_strOnlyOne;
    QString m_strUnread;
    QString m_strGone;
    CCompareTexts m_compare;
};

CRecordTexts EvaluationTexts()
{
    return {Tr("No evaluations are recorded for Member ID %1."),
        Tr("Only one evaluation is recorded for Member ID %1."),
        Tr("Error: the evaluations of Member ID %1 could not be read."),
        Tr("Error: one of the two evaluations is no longer there.\nThe report was not queued."),
        {150, Tr("Compare Evaluations"),
            Tr("Select two evaluations for comparison by clicking\n"
               "on one date in each box below, then select \"OK.\""),
            Tr("Evaluation Date &1:"), Tr("Evaluation Date &2:"),
            Tr("Error: select an evaluation from each list"),
            Tr("Error: select two different evaluations")}};
}

CRecordTexts BodyCompTexts()
{
    return {Tr("No body compositions are recorded for Member ID %1."),
        Tr("Only one body composition is recorded for Member ID %1."),
        Tr("Error: the body compositions of Member ID %1 could not be read."),
        Tr("Error: one of the two body compositions is no longer there.\n"
           "The report was not queued."),
        {208, Tr("Compare Body Compositions"),
            Tr("Select two body compositions for comparison by clicking\n"
               "on one date in each box below, then select \"OK.\""),
            Tr("Body Composition Date &1:"), Tr("Body Composition Date &2:"),
            Tr("Error: select a body composition from each list"),
            Tr("Error: select two different body compositions")}};
}

struct CDatedRow
{
    std::int32_t m_nPosition; ///< in the selection
    CEFOleDateTime m_dtDate;
};

/// The rows that are still there. The set's status tells whether all could be read.
template <typename Set>
std::vector<CDatedRow> ReadRows(Set& set, int count, CEFOleDateTime Set::*date)
{
    std::vector<CDatedRow> rows;
    for (std::int32_t position = 0; position < count && set.LastStatus(); ++position) {
        if (set.m_lMemberID != 0) {
            rows.push_back({position, set.*date});
        }
        set.Op(CDAOEFSet::opMoveNext);
    }
    return rows;
}

using CTwoRows = std::pair<CDatedRow, CDatedRow>;

std::optional<CTwoRows> AskTwo(
    CCorvanaDoc const& doc, std::vector<CDatedRow> const& rows, CCompareTexts const& texts)
{
    QStringList dates;
    for (auto const& row : rows) {
        dates += ToQt(row.m_dtDate.DateStrLongYear());
    }
    CWaitCursorPause const pause;
    CCompareDlg dialog(texts, dates, doc.Window());
    dialog.m_nSecond = 1;
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    auto const chosen = [&rows](int place) { return rows[static_cast<std::size_t>(place)]; };
    return CTwoRows(chosen(dialog.m_nFirst), chosen(dialog.m_nSecond));
}

/// The first of a member's records, or two of them that the user chooses to compare. Find selects
/// the records of a member.
template <typename Set, typename Find>
bool AskRecords(CCorvanaDoc& doc, CReportJob& job, Set& set, Find const& find,
    CEFOleDateTime Set::*date, CRecordTexts const& texts, bool compares)
{
    if (!AskMember(doc, job)) {
        return false;
    }
    CWaitCursor const wait;
    CSetCloser const close(set);
    auto const unread
        = [&] { return Stop(doc, texts.m_strUnread.arg(job.m_nParam), set.LastStatus()); };
    auto const rows = ReadRows(set, find(job.m_nParam), date);
    if (!set.LastStatus()) {
        return unread();
    }
    if (rows.empty()) {
        return Stop(doc, texts.m_strNone.arg(job.m_nParam));
    }
    if (!compares) {
        job.m_dtFrom = rows.front().m_dtDate;
        return true;
    }
    if (rows.size() == 1) {
        return Stop(doc, texts.m_strOnlyOne.arg(job.m_nParam));
    }
    auto const chosen = AskTwo(doc, rows, texts.m_compare);
    if (!chosen) {
        return false;
    }
    // As they are stored now: another program may have deleted one since they were shown.
    for (auto const& [row, taken] :
        {std::pair(chosen->first, &job.m_dtFrom), {chosen->second, &job.m_dtTo}}) {
        if (!set.MoveSet(row.m_nPosition)) {
            return set.LastStatus() ? Stop(doc, texts.m_strGone) : unread();
        }
        *taken = set.*date;
    }
    return true;
}

bool AskEvaluations(CCorvanaDoc& doc, CReportJob& job, bool compares)
{
    auto& set = doc.m_setEval;
    return AskRecords(
        doc, job, set,
        [&set](std::int32_t member) { return set.FindEvals(CDAOSmEval::idMember, member); },
        &CDAOEval::m_dtEvalDate, EvaluationTexts(), compares);
}

bool AskBodyComps(CCorvanaDoc& doc, CReportJob& job, bool compares)
{
    auto& set = doc.m_setBodyComp;
    return AskRecords(
        doc, job, set, [&set](std::int32_t member) { return set.FindBodyComps(member); },
        &CDAOBodyComp::m_dtBodyCompDate, BodyCompTexts(), compares);
}

} // namespace

bool AskReport(CCorvanaDoc& doc, CReportJob& job)
{
    using Kind = CReportOptionsDlg::Kind;
    switch (job.m_nType) {
    case CDAOReport::rtMemberProfile:
        return AskMember(doc, job);
    case CDAOReport::rtMemberCount:
    case CDAOReport::rtUnknownWorkouts:
        return true;
    case CDAOReport::rtEmergencyContacts:
    case CDAOReport::rtMembershipStatus:
        return AskOptions(doc, job, Kind::members);
    case CDAOReport::rtClassRoster:
        return AskClass(doc, job) && AskOptions(doc, job, Kind::members);
    case CDAOReport::rtDailyWorkouts:
        return AskDay(doc, job);
    case CDAOReport::rtWorkoutSummaries:
        return AskOptions(doc, job, Kind::workouts);
    case CDAOReport::rtMemberWorkouts:
        return AskMemberClass(doc, job);
    case CDAOReport::rtClassWorkouts:
        return AskClass(doc, job) && AskOptions(doc, job, Kind::workouts);
    case CDAOReport::rtEvalInterpretation:
        return AskEvaluations(doc, job, false);
    case CDAOReport::rtEvalComparison:
        return AskEvaluations(doc, job, true);
    case CDAOReport::rtBodyCompInterpretation:
        return AskBodyComps(doc, job, false);
    case CDAOReport::rtBodyCompComparison:
        return AskBodyComps(doc, job, true);
    }
    return false; // there is no such report
}
