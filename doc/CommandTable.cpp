#include "doc/CommandTable.h"

#include "doc/CorvanaDoc.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace
{

template <auto Operation, auto... Arguments>
void OnDoc(CCorvanaDoc& doc, CAppCommands&)
{
    (doc.*Operation)(Arguments...);
}

template <auto Operation, auto... Arguments>
void OnApp(CCorvanaDoc&, CAppCommands& app)
{
    (app.*Operation)(Arguments...);
}

QString tr(char const* text)
{
    return QCoreApplication::translate("CommandTable", text);
}

} // namespace

std::vector<CMenu> MenuTable()
{
    return {
        {CMenuID::file, {}, tr("&File"), {}},
        {CMenuID::backup, CMenuID::file, tr("&Backup"),
            tr("Copy members, workouts, evaluations, or body compositions from database")},
        {CMenuID::archive, CMenuID::file, tr("&Archive"),
            tr("Copy then delete members, workouts, evaluations, or body compositions from "
               "database")},
        {CMenuID::restore, CMenuID::file, tr("&Restore"),
            tr("Restore members, workouts, evaluations, or body compositions to database")},
        {CMenuID::options, {}, tr("&Options"), {}},
        {CMenuID::members, {}, tr("&Members"), {}},
        {CMenuID::memberReports, CMenuID::members, tr("&Reports"), {}},
        {CMenuID::workouts, {}, tr("&Workouts"), {}},
        {CMenuID::workoutReports, CMenuID::workouts, tr("&Reports"), {}},
        {CMenuID::evaluations, {}, tr("&Evaluations"), {}},
        {CMenuID::evaluationReports, CMenuID::evaluations, tr("&Reports"), {}},
        {CMenuID::bodyComps, {}, tr("&Body Compositions"), {}},
        {CMenuID::bodyCompReports, CMenuID::bodyComps, tr("&Reports"), {}},
        {CMenuID::help, {}, tr("&Help"), {}},
    };
}

std::vector<CCommand> CommandTable()
{
    return {
        {57606, CMenuID::file, tr("&Print Setup..."), {}, tr("Change printer or printing options"),
            OnApp<&CAppCommands::SetUpPrinter>},
        {32871, CMenuID::backup, tr("&Members..."), {}, tr("Copy members from database"),
            OnDoc<&CCorvanaDoc::BackUpAll, CRecordKind::members>},
        {32872, CMenuID::backup, tr("&Workouts..."), {}, tr("Copy workouts from database"),
            OnDoc<&CCorvanaDoc::BackUpAll, CRecordKind::workouts>},
        {32873, CMenuID::backup, tr("&Evaluations..."), {}, tr("Copy evaluations from database"),
            OnDoc<&CCorvanaDoc::BackUpAll, CRecordKind::evaluations>},
        {32874, CMenuID::backup, tr("&Body Compositions..."), {},
            tr("Copy body compositions from database"),
            OnDoc<&CCorvanaDoc::BackUpAll, CRecordKind::bodyComps>},
        {32875, CMenuID::archive, tr("&Members..."), {},
            tr("Copy then delete members from database"),
            OnDoc<&CCorvanaDoc::ArchiveAll, CRecordKind::members>},
        {32876, CMenuID::archive, tr("&Workouts..."), {},
            tr("Copy then delete workouts from database"),
            OnDoc<&CCorvanaDoc::ArchiveAll, CRecordKind::workouts>},
        {32877, CMenuID::archive, tr("&Evaluations..."), {},
            tr("Copy then delete evaluations from database"),
            OnDoc<&CCorvanaDoc::ArchiveAll, CRecordKind::evaluations>},
        {32878, CMenuID::archive, tr("&Body Compositions..."), {},
            tr("Copy then delete body compositions from database"),
            OnDoc<&CCorvanaDoc::ArchiveAll, CRecordKind::bodyComps>},
        {32879, CMenuID::restore, tr("&Members..."), {}, tr("Restore members to database"),
            OnDoc<&CCorvanaDoc::RestoreAll, CRecordKind::members>},
        {32880, CMenuID::restore, tr("&Workouts..."), {}, tr("Restore workouts to database"),
            OnDoc<&CCorvanaDoc::RestoreAll, CRecordKind::workouts>},
        {32881, CMenuID::restore, tr("&Evaluations..."), {}, tr("Restore evaluations to database"),
            OnDoc<&CCorvanaDoc::RestoreAll, CRecordKind::evaluations>},
        {32882, CMenuID::restore, tr("&Body Compositions..."), {},
            tr("Restore body compositions to database"),
            OnDoc<&CCorvanaDoc::RestoreAll, CRecordKind::bodyComps>},
        {32885, CMenuID::file, tr("&Start Report Server"), {},
            tr("Start service for printing reports"), OnDoc<&CCorvanaDoc::StartReportServer>},
        {32892, CMenuID::file, tr("&Compact and Repair Database..."), {},
            tr("Reduce database size, enhance database performance, and fix database "
               "inconsistencies"),
            OnDoc<&CCorvanaDoc::CompactDatabase>},
        {57665, CMenuID::file, tr("E&xit"), {}, tr("Quit Corvana"), OnApp<&CAppCommands::Exit>},
        {32888, CMenuID::options, tr("&Start Report Server at Start-Up"), {},
            tr("When starting Corvana, automatically start report server"),
            OnApp<&CAppCommands::ToggleOption, CAppOption::reportServer>, CAppOption::reportServer},
        {32889, CMenuID::options, tr("&Load Members at Start-Up"), {},
            tr("When starting Corvana, automatically load all members"),
            OnApp<&CAppCommands::ToggleOption, CAppOption::loadMembers>, CAppOption::loadMembers},
        {32891, CMenuID::options, tr("&Auto Backup at Exit"), {},
            tr("When exiting Corvana, automatically back up all data"),
            OnApp<&CAppCommands::ToggleOption, CAppOption::autoBackup>, CAppOption::autoBackup},
        {32863, CMenuID::members, tr("&Add..."), u"Ctrl+M"_s, tr("Enter new member"),
            OnDoc<&CCorvanaDoc::EditMember, 0>},
        {32784, CMenuID::members, tr("&Edit..."), u"Ctrl+Alt+M"_s, tr("Change existing member"),
            OnDoc<&CCorvanaDoc::EditExistingMember>},
        {32785, CMenuID::members, tr("&Delete..."), {}, tr("Remove member from database"),
            [](CCorvanaDoc& doc, CAppCommands&) { doc.DeleteMember(0, {}); }},
        {32890, CMenuID::members, tr("&Find..."), {}, tr("Find members for display"),
            OnDoc<&CCorvanaDoc::FindMembers>},
        {32829, CMenuID::memberReports, tr("Member &Profile..."), {}, tr("Generate member profile"),
            OnDoc<&CCorvanaDoc::QueueReport, 0>},
        {32822, CMenuID::memberReports, tr("Member &Count"), {},
            tr("Calculate number of members in each category/course/section"),
            OnDoc<&CCorvanaDoc::QueueReport, 1>},
        {32887, CMenuID::memberReports, tr("Member &Emergency Contacts..."), {},
            tr("Generate list of members' emergency contacts"),
            OnDoc<&CCorvanaDoc::QueueReport, 2>},
        {32819, CMenuID::memberReports, tr("Membership &Status..."), {},
            tr("Generate list of members by membership status"),
            OnDoc<&CCorvanaDoc::QueueReport, 3>},
        {32820, CMenuID::memberReports, tr("Cate&gory/Course/Section &Roster..."), {},
            tr("Generate list of members in category/course/section"),
            OnDoc<&CCorvanaDoc::QueueReport, 4>},
        {32806, CMenuID::workouts, tr("&Add..."), u"Ctrl+W"_s, tr("Enter new workout"),
            OnDoc<&CCorvanaDoc::AddEditWorkout, nullptr>},
        {32808, CMenuID::workouts, tr("&Edit/Delete..."), u"Ctrl+Alt+W"_s,
            tr("Change or remove workouts from database"), OnDoc<&CCorvanaDoc::ShowMemberWorkouts>},
        {32809, CMenuID::workouts, tr("&Delete All..."), {}, tr("Remove workouts from database"),
            OnDoc<&CCorvanaDoc::DeleteAll, CRecordKind::workouts>},
        {32864, CMenuID::workouts, tr("&Find..."), {}, tr("Find workouts for display"),
            OnDoc<&CCorvanaDoc::FindWorkouts>},
        {32815, CMenuID::workoutReports, tr("&Daily Workouts..."), {},
            tr("Generate list of workouts completed on given date"),
            OnDoc<&CCorvanaDoc::QueueReport, 5>},
        {32816, CMenuID::workoutReports, tr("Workout &Summaries..."), {},
            tr("Calculate totals of workouts completed"), OnDoc<&CCorvanaDoc::QueueReport, 6>},
        {32817, CMenuID::workoutReports, tr("&Member Workouts..."), {},
            tr("Generate list of workouts completed by given member"),
            OnDoc<&CCorvanaDoc::QueueReport, 7>},
        {32818, CMenuID::workoutReports, tr("&Category/Course/Section Workouts..."), {},
            tr("Calculate totals of workouts completed by members in given "
               "category/course/section"),
            OnDoc<&CCorvanaDoc::QueueReport, 8>},
        {32894, CMenuID::workoutReports, tr("Category \"&Unknown\" Workouts"), {},
            tr("Generate list of workouts that are not associated with any category, course, or "
               "section"),
            OnDoc<&CCorvanaDoc::QueueReport, 13>},
        {32810, CMenuID::evaluations, tr("&Add..."), u"Ctrl+E"_s, tr("Enter new evaluation"),
            OnDoc<&CCorvanaDoc::AddEditEvaluation, nullptr>},
        {32811, CMenuID::evaluations, tr("&Edit/Delete..."), u"Ctrl+Alt+E"_s,
            tr("Change or remove evaluations from database"),
            OnDoc<&CCorvanaDoc::ShowMemberEvaluations>},
        {32812, CMenuID::evaluations, tr("&Delete All..."), {},
            tr("Remove evaluations from database"),
            OnDoc<&CCorvanaDoc::DeleteAll, CRecordKind::evaluations>},
        {32813, CMenuID::evaluationReports, tr("Test Results &Interpretation..."), {},
            tr("Analyze fitness test results for member"), OnDoc<&CCorvanaDoc::QueueReport, 9>},
        {32814, CMenuID::evaluationReports, tr("Evaluation &Comparison..."), {},
            tr("Compare two sets of fitness test results"), OnDoc<&CCorvanaDoc::QueueReport, 10>},
        {32866, CMenuID::bodyComps, tr("&Add..."), u"Ctrl+B"_s, tr("Enter new body composition"),
            OnDoc<&CCorvanaDoc::AddEditBodyComp, nullptr>},
        {32868, CMenuID::bodyComps, tr("&Edit/Delete..."), u"Ctrl+Alt+B"_s,
            tr("Change or remove body compositions from database"),
            OnDoc<&CCorvanaDoc::ShowMemberBodyComps>},
        {32870, CMenuID::bodyComps, tr("&Delete All..."), {},
            tr("Remove body compositions from database"),
            OnDoc<&CCorvanaDoc::DeleteAll, CRecordKind::bodyComps>},
        {32883, CMenuID::bodyCompReports, tr("Body Composition &Interpretation..."), {},
            tr("Analyze body composition results for member"),
            OnDoc<&CCorvanaDoc::QueueReport, 11>},
        {32886, CMenuID::bodyCompReports, tr("Body Composition &Comparison..."), {},
            tr("Compare two body compositions"), OnDoc<&CCorvanaDoc::QueueReport, 12>},
        {57664, CMenuID::help, tr("&About Corvana"), {}, tr("Read about Corvana"),
            OnApp<&CAppCommands::ShowAbout>},
        {32823, {}, {}, {}, tr("Generate list of members by expiration date"), nullptr, {},
            tr("Expired Members")},
    };
}

QString TipOf(CCommand const& command)
{
    if (!command.m_strTip.isEmpty()) {
        return command.m_strTip;
    }
    auto tip = command.m_strText;
    return tip.remove(u'&').remove(u"..."_s);
}
