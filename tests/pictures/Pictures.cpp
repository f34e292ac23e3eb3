// Makes the pictures of the manual: opens the forms of a centre off screen, as the user would, and
// saves what they look like. Changes nothing in the centre but the time of its check-ins.
//
//   corvana_pictures DATA-FOLDER PICTURE-FOLDER [--dark] [--large]

#include "app/MainFrame.h"
#include "doc/CorvanaDoc.h"
#include "platform/qt/DateField.h"
#include "reports/server/ReportWnd.h"
#include "store/sets/DatabaseSession.h"
#include "tests/TempFolder.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestCentre.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/UserSteps.h"
#include "ui/Convert.h"

#include <QDir>
#include <QPalette>
#include <QPlainTextEdit>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTreeView>

#include <cstdio>
#include <memory>
#include <set>

using namespace Qt::StringLiterals;

namespace
{

/// A day on which nothing in the pictures has to change.
CEFOleDateTime const kToday(2026, 11, 6, 18, 5, 9);

QString g_folder;
int g_failures = 0;

void Save(QWidget& window, QString const& name)
{
    QCoreApplication::processEvents();
    if (!window.grab().save(g_folder + u'/' + name + u".png"_s)) {
        std::fprintf(stderr, "cannot save %s.png\n", qPrintable(name));
        ++g_failures;
    }
}

/// Saves each page of a sheet under the name and its title, with what it calculates, and cancels.
CDialogUser::Step Pages(QString const& name)
{
    return [name](QDialog& sheet) {
        auto& tabs = Child<QTabWidget>(sheet, "tabs");
        for (int page = 0; page < tabs.count(); ++page) {
            tabs.setCurrentIndex(page);
            auto const& shown = *tabs.currentWidget();
            if (auto* const button = shown.findChild<QPushButton*>(u"calculateButton"_s)) {
                button->click();
            }
            Save(sheet, name + u'-' + tabs.tabText(page).toLower().replace(u' ', u'-'));
        }
        ClickCancel(sheet);
    };
}

/// Saves the dialog after these steps, if there is a name, and cancels or takes it.
CDialogUser::Step Look(QString const& name, QString const& steps = {}, bool isTaken = false)
{
    return [=](QDialog& dialog) {
        Do(dialog, steps);
        if (!name.isEmpty()) {
            Save(dialog, name);
        }
        isTaken ? ClickOk(dialog) : dialog.done(QDialog::Rejected);
    };
}

/// Enters a member's ID.
CDialogUser::Step Prompt(std::int32_t memberID, QString const& name = {})
{
    return Look(name, u"memberIDEdit=%1"_s.arg(memberID), true);
}

void Use(QList<CDialogUser::Step> steps, std::function<void()> const& operation)
{
    CDialogUser const user(std::move(steps));
    operation();
    for (auto const& fault : user.Faults()) {
        std::fprintf(stderr, "%s\n", qPrintable(fault));
        ++g_failures;
    }
}

void Darken()
{
    QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Highlight, QColor(42, 110, 180));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    QApplication::setPalette(dark);
}

std::int32_t MemberWithTwoEvaluations()
{
    CDAOSmMem members;
    for (int row = members.FindAllMembersByName(false); row-- > 0;) {
        if (CDAOSmEval().FindEvals(CDAOSmEval::idMember, members.m_MemberID) > 1) {
            break;
        }
        members.Op(CDAOEFSet::opMoveNext);
    }
    return members.m_MemberID;
}

void MakeSearchPictures(CCorvanaDoc& doc)
{
    auto const find = [&] { doc.FindMembers(); };
    Use({Look(u"find-members-profile"_s)}, find);
    Use({Look(u"find-members-enrollment"_s,
            u"@1 enrollFromField=1/1/26 enrollToField=6/30/26 expireFromField=12/1/26 "
            "expireToField=12/31/26 categoryList=1"_s)},
        find);
    Use({Steps(u"lastNameEdit=s OK"_s), Look(u"members-list"_s)}, find);
    auto const press = [](QDialog& list, char const* button, CDialogUser::Step const& step) {
        Use({step}, [&] { Child<QPushButton>(list, button).click(); });
    };
    auto const change = [&](QDialog& list) {
        press(list, "updateClassButton", Look(u"update-class"_s, u"categoryList=2"_s));
        press(list, "updateEnrollButton", Look(u"update-enrollment"_s));
        press(list, "postMessageButton", [](QDialog& form) {
            Type(Child<QPlainTextEdit>(form, "messageEdit"), u"Please bring a towel."_s);
            Look(u"post-message"_s)(form);
        });
        list.done(QDialog::Rejected);
    };
    Use({Steps(u"@1 categoryList=3 OK"_s), change}, find);
}

void MakeLetterPictures(CCorvanaDoc& doc)
{
    doc.m_setMem.FindAllMembers(true);
    Use({Look(u"letter-templates"_s, u"templateList=1"_s, true), Look(u"merge-letter"_s)},
        [&] { doc.PrintLetters(doc.m_setMem); });
}

void MakeWorkoutPictures(CCorvanaDoc& doc)
{
    CDAOWk workouts;
    auto const from = CEFOleDateTime(2026, 1, 1);
    if (workouts.FindWks(0, from, kToday, CDAOWk::okYes) > 0) {
        Use({Look(u"workout"_s)}, [&] { doc.AddEditWorkout(&workouts); });
    }
    Use({Look(u"find-workouts"_s)}, [&] { doc.FindWorkouts(); });
    auto const show = [](QDialog& list) {
        QTest::keyClick(&list, Qt::Key_6, Qt::ControlModifier);
        Type(Child<QLineEdit>(list, "findEdit"), u"ar"_s);
        Save(list, u"workouts-list"_s);
        Use({Look(u"print-options"_s)}, [&] { Child<QPushButton>(list, "printButton").click(); });
        QTest::keyClick(&list, Qt::Key_0, Qt::ControlModifier);
        list.done(QDialog::Rejected);
    };
    Use({Steps(u"fromEdit=10/1/26 OK"_s), show}, [&] { doc.FindWorkouts(); });
}

void MakeEvaluationPictures(CCorvanaDoc& doc)
{
    CDAOEval evaluations;
    int const count = evaluations.FindEvals(CDAOSmEval::idMember, MemberWithTwoEvaluations());
    if (evaluations.MoveSet(count - 1)) {
        auto const member = evaluations.m_lMemberID;
        Use({Pages(u"evaluation"_s)}, [&] { doc.AddEditEvaluation(&evaluations); });
        Use({Prompt(member), Steps(u"OK"_s), Look(u"evaluations-list"_s)},
            [&] { doc.ShowMemberEvaluations(); });
    }
}

/// The pages of each method, of the last body composition by it; the first page once more, of a
/// member with several.
void MakeBodyCompPictures(CCorvanaDoc& doc)
{
    CDAOBodyComp set;
    int const count = set.FindBodyComps(0);
    Use({Prompt(set.m_lMemberID), Look(u"body-composition-method"_s)},
        [&] { doc.AddEditBodyComp(nullptr); });
    std::set<int> missing{0, 1, 2, 3};
    std::int32_t several = 0;
    for (int row = count - 1; row >= 0 && set.MoveSet(row); --row) {
        if (CDAOCls().FindClasses(set.m_lMemberID) > 0 && missing.erase(set.m_nMethod) > 0) {
            Use({Pages(u"body-composition"_s)}, [&] { doc.AddEditBodyComp(&set); });
        }
        several = CDAOBodyComp().FindBodyComps(set.m_lMemberID) > 2 ? set.m_lMemberID : several;
    }
    if (set.FindBodyComps(several) > 0) {
        Use({Look(u"body-composition-profile"_s)}, [&] { doc.AddEditBodyComp(&set); });
    }
}

void MakeReportPictures(CCorvanaDoc& doc)
{
    auto const enter = Prompt(MemberWithTwoEvaluations());
    auto const queue = [&doc](int type, QList<CDialogUser::Step> const& steps) {
        Use(steps, [&] { doc.QueueReport(type); });
    };
    queue(CDAOReport::rtMembershipStatus, {Look(u"report-options"_s)});
    queue(CDAOReport::rtClassRoster, {Look(u"class"_s, u"categoryList=1"_s)});
    queue(CDAOReport::rtMemberWorkouts, {enter, Look(u"member-class"_s)});
    queue(CDAOReport::rtWorkoutSummaries, {Look(u"report-options-workouts"_s, u"allNoButton"_s)});
    queue(CDAOReport::rtEvalComparison, {enter, Look(u"compare-evaluations"_s)});
}

void MakePictures(CCorvanaDoc& doc, CMainFrame& frame)
{
    CDAOSmMem members;
    members.FindAllMembersByName(false);
    auto const member = members.m_MemberID;
    Use({Prompt(member, u"member-id"_s), Pages(u"member"_s)}, [&] { doc.EditMember(0); });
    Use({Look(u"delete-member"_s)}, [&] { doc.DeleteMember(member, {}); });
    MakeSearchPictures(doc);
    MakeLetterPictures(doc);
    MakeWorkoutPictures(doc);
    MakeEvaluationPictures(doc);
    MakeBodyCompPictures(doc);
    MakeReportPictures(doc);
    // Those who are checked in have come before the pictures' day is at its hour.
    CTestCentre::Run("UPDATE check_ins SET check_in = " + std::to_string(kToday.Seconds())
            + " - (total + 1 - n) * 700 + (n - 1) * (n - 1) * 40 FROM (SELECT id AS row, "
              "row_number() OVER (ORDER BY check_in, id) AS n, count(*) OVER () AS total FROM "
              "check_ins) WHERE id = row",
        DataFile::checkIn);
    Use({Look(u"quick-statistics"_s, u"checkInList=2"_s)}, [&] { doc.ShowQuickStats(); });
    auto& tree = Child<QTreeView>(frame, "memberTree");
    auto const root = tree.model()->index(0, 0);
    tree.expand(root);
    auto const first = tree.model()->index(0, 0, root);
    tree.expand(first);
    for (int branch = 0; branch < tree.model()->rowCount(first); ++branch) {
        tree.expand(tree.model()->index(branch, 0, first));
    }
    Save(frame, u"main-window"_s);
}

/// With a job in each of the states.
void SaveReportServer()
{
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::report, status);
    std::int64_t changed = 0;
    if (database == nullptr
        || !database->Execute("INSERT INTO reports (type, parameter, date_from, date_to, category,"
                              " course, section, state, attempts, finished, reason, output) VALUES"
                              " (3, 4, 0, 0, '', '', '', 0, 0, 0, '', ''),"
                              " (4, 2, 0, 0, 'Student', '', '', 0, 0, 0, '', ''),"
                              " (0, 1, 0, 0, '', '', '', 2, 3, 1794000000,"
                              " 'There is no member of this number any more.', ''),"
                              " (1, 0, 0, 0, '', '', '', 1, 1, 1794000100, '', 'Laser')",
            {}, changed)) {
        ++g_failures;
        return;
    }
    CReportWnd window;
    window.resize(760, 320);
    window.show();
    Save(window, u"report-server"_s);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    CTempFolder const settings; // the user's own would show
    qputenv("XDG_CONFIG_HOME", settings.Path().c_str());
    QApplication application(argc, argv);
    auto const arguments = QCoreApplication::arguments();
    if (arguments.size() < 3 || !QDir().mkpath(arguments[2])) {
        std::fprintf(
            stderr, "usage: corvana_pictures DATA-FOLDER PICTURE-FOLDER [--dark] [--large]\n");
        return 2;
    }
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    if (arguments.contains(u"--dark"_s)) {
        Darken();
    }
    auto const large = arguments.contains(u"--large"_s) ? std::make_unique<CLargeFont>() : nullptr;
    g_folder = arguments[2];
    CDatabaseSession::Get().SetDataFolder(FromQt(arguments[1]));
    CEFOleDateTime::SetClock(kToday);
    CTestApp commands;
    CCorvanaDoc doc(commands);
    CMainFrame frame(doc, commands);
    doc.SetViews(&frame);
    if (!doc.OnNewDocument()) {
        return 1;
    }
    frame.show();
    MakePictures(doc, frame);
    SaveReportServer();
    CDatabaseSession::Get().ShutDown();
    return g_failures == 0 ? 0 : 1;
}
