#include "doc/CorvanaDoc.h"
#include "doc/ReportOptionsDlg.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/UserSteps.h"
#include "ui/Convert.h"

#include <QListView>

#include <filesystem>
#include <tuple>

using namespace Qt::StringLiterals;

namespace
{

using Step = CDialogUser::Step;

/// Dialogs that come one after the other, fit for everyone, with the steps in each:
/// "memberIDEdit=12 OK;OK".
QList<Step> Through(QString const& dialogs)
{
    QList<Step> user;
    for (auto const& steps : dialogs.split(u';', Qt::SkipEmptyParts)) {
        user += [steps](QDialog& dialog) {
            QVERIFY(QGuiApplication::overrideCursor() == nullptr); // nobody waits
            QCOMPARE(FaultsOf(dialog), QStringList());
            Do(dialog, steps);
        };
    }
    return user;
}

CEFOleDateTime const kFirst(2025, 12, 31, 23, 59, 59);
CEFOleDateTime const kMiddle(2026, 1, 1);
CEFOleDateTime const kLast(2026, 11, 5, 23, 59, 59);
auto const kAll = u"All Categories/Courses/Sections"_s;
auto const kDay = u"|11/05/2026 00:00:00|11/05/2026 23:59:59"_s;

/// Member 12 has two classes and three records of each kind, 13 one of each, 14 none.
class CReportDesk : public CTestDesk
{
public:
    CReportDesk()
    {
        CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 6, 18, 5, 9));
        for (int const id : {12, 13, 14}) {
            AddMember(id);
        }
        AddClass(12, 2, "'Staff', 'Wellness', 'Morning'");
        AddClass(12, 98, "'Students', '', ''");
        AddClass(13, 3, "'Staff', '', ''");
        for (auto const& [member, when] :
            {std::pair(12, kLast), {12, kMiddle}, {12, kFirst}, {13, kFirst}}) {
            StoreRecords(member, when);
        }
    }

    /// What comes of a command: the job that it queued, which is gone from the queue then, and what
    /// the user was told, with " (why)" for what the engine says. The last step comes behind those
    /// in the other dialogs.
    QString Queue(int type, QString const& dialogs, Step const& last = {})
    {
        auto const told = m_messages.Messages().size();
        m_views.m_lstResults.clear();
        auto const steps = Through(dialogs) + (last ? QList{last} : QList<Step>());
        bool const queued = Use(steps, [&] { return m_doc.QueueReport(type); });
        CDAOReport queue;
        int const jobs = queue.FindReports();
        [&] { QVERIFY(jobs == int(queued) && m_views.m_lstResults.size() == jobs); }();
        auto outcome = jobs == 0 ? QString() : TextOf(queue);
        queue.DelAll();
        for (auto const& message : m_messages.Messages().sliced(told)) {
            outcome += message.m_strText + (message.m_strDetail.isEmpty() ? u""_s : u" (why)"_s);
        }
        return outcome;
    }

private:
    static QString TextOf(CDAOReport const& job)
    {
        auto text = u"%1|%2"_s.arg(job.m_nRptType).arg(job.m_nRptParam);
        for (auto const& date : {job.m_dtRptFrom, job.m_dtRptTo}) {
            text += u'|' + (date.IsZero() ? u"-"_s : ToQt(date.DateTimeStrLongYear()));
        }
        for (auto const& part : {job.m_strRptCategory, job.m_strRptCourse, job.m_strRptSection}) {
            text += u'|' + ToQt(part);
        }
        return text;
    }
};

} // namespace

class ReportQueueTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void whatWasAskedIsQueued();
    void whatCannotBeReportedIsTold();
    void rangeIsTakenOrRefused();
    void twoRecordsAreAskedFor();
};

void ReportQueueTest::whatWasAskedIsQueued()
{
    CLargeFont const large;
    CReportDesk desk;
    auto const chooseClass = u"categoryList=1 OK;"_s;
    auto const past = u"idsNoButton statusPastButton OK"_s;
    auto const range = u"allNoButton fromEdit=11/5/2026 toEdit=11052026 OK"_s;
    auto const of12 = u"memberIDEdit=12 OK;"_s;
    auto const of13 = u"memberIDEdit=13 OK;"_s;
    QList<std::tuple<int, QString, QString>> const cases{{0, of13, u"0|13|-|-|||"_s},
        {1, {}, u"1|0|-|-|||"_s}, {2, u"OK"_s, u"2|3|-|-|||"_s}, {3, past, u"3|8|-|-|||"_s},
        {4, chooseClass + u"statusCurrentButton OK"_s, u"4|5|-|-|Staff|Wellness|Morning"_s},
        {5, u"dateEdit=11/5/2026 OK"_s, u"5|0"_s + kDay + u"|||"_s}, {6, u"OK"_s, u"6|19|-|-|||"_s},
        {6, range, u"6|3"_s + kDay + u"|||"_s},
        {7, of12 + u"OK"_s, u"7|12|-|-|101|%1|"_s.arg(kAll)},
        {7, of12 + u"classList=0 OK"_s, u"7|12|-|-|99|Unknown|"_s},
        {7, of13 + u"OK"_s, u"7|13|-|-|3|Staff|"_s},
        {7, u"memberIDEdit=14 OK;OK"_s, u"7|14|-|-|101|%1|"_s.arg(kAll)},
        {8, chooseClass + past, u"8|24|-|-|Staff|Wellness|Morning"_s},
        {8, chooseClass + range, u"8|3"_s + kDay + u"|Staff|Wellness|Morning"_s},
        {9, of12, u"9|12|12/31/2025 23:59:59|-|||"_s},
        {10, of12 + u"OK"_s, u"10|12|12/31/2025 23:59:59|01/01/2026 00:00:00|||"_s},
        {11, of13, u"11|13|12/31/2025 23:59:59|-|||"_s},
        {12, of12 + u"firstList=2 secondList=0 OK"_s,
            u"12|12|11/05/2026 23:59:59|12/31/2025 23:59:59|||"_s},
        {14, {}, {}}, {-1, {}, {}}, {13, {}, u"13|0|-|-|||"_s}};
    for (auto const& [type, dialogs, job] : cases) {
        QCOMPARE(desk.Queue(type, dialogs), job);
    }
    QCOMPARE(desk.m_views.m_lstResults,
        QStringList{
            u"The report \"Category \"Unknown\" Workouts\" is queued for the report server."_s});
    for (auto const& [type, dialogs, job] : cases) {
        auto const steps = dialogs.split(u';', Qt::SkipEmptyParts);
        for (qsizetype kept = 0; kept < steps.size(); ++kept) {
            QCOMPARE(desk.Queue(type, steps.first(kept).join(u';'), ClickCancel), QString());
        }
    }
}

void ReportQueueTest::whatCannotBeReportedIsTold()
{
    CReportDesk desk;
    auto const day = u"dateEdit=11/4/2026 OK"_s;
    auto const member = u"memberIDEdit=%1 OK"_s;
    auto const of12 = member.arg(12);
    QCOMPARE(desk.Queue(5, day), u"No workouts are recorded for 11/04/2026."_s);
    for (auto const& [type, kind] : {std::pair(9, u"evaluation"_s), {11, u"body composition"_s}}) {
        auto const none = u"No %1s are recorded for Member ID 14."_s.arg(kind);
        QCOMPARE(desk.Queue(type, member.arg(14)), none);
        QCOMPARE(desk.Queue(type + 1, member.arg(14)), none);
        QCOMPARE(desk.Queue(type + 1, member.arg(13)),
            u"Only one %1 is recorded for Member ID 13."_s.arg(kind));
    }
    // While two are chosen another one goes, and they keep their places; then one of the two.
    auto const goes = [](CEFOleDateTime const& when, QString const& steps) {
        return [when, steps](QDialog& dialog) {
            RunOnMembers(
                "DELETE FROM evaluations WHERE eval_date = " + std::to_string(when.Seconds()));
            Do(dialog, steps);
        };
    };
    QCOMPARE(desk.Queue(10, of12, goes(kMiddle, u"secondList=2 OK"_s)),
        u"10|12|12/31/2025 23:59:59|11/05/2026 23:59:59|||"_s);
    QCOMPARE(desk.Queue(10, of12, goes(kLast, u"secondList=1 OK"_s)),
        u"Error: one of the two evaluations is no longer there.\nThe report was not queued."_s);

    RunOnMembers("PRAGMA legacy_alter_table = ON");
    for (auto const& [table, type, dialog, what] :
        {std::tuple("workouts", 5, day, u"workouts of 11/04/2026"_s),
            {"classes", 7, of12, u"classes of Member ID 12"_s},
            {"evaluations", 10, of12, u"evaluations of Member ID 12"_s},
            {"body_compositions", 11, of12, u"body compositions of Member ID 12"_s}}) {
        RunOnMembers(std::string("ALTER TABLE ").append(table).append(" RENAME TO lost_") + table);
        QCOMPARE(desk.Queue(type, dialog), u"Error: the %1 could not be read. (why)"_s.arg(what));
    }
    CDatabaseSession::Get().ShutDown();
    std::filesystem::remove(desk.m_centre.Folder() / "report.mdb");
    QCOMPARE(desk.Queue(2, u"OK"_s),
        u"Error: the report \"Member Emergency Contacts\" could not be queued. (why)"_s);
}

void ReportQueueTest::rangeIsTakenOrRefused()
{
    CLargeFont const large;
    CReportDesk const desk;
    CReportOptionsDlg dialog(CReportOptionsDlg::Kind::workouts);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto const size = dialog.size();
    QVERIFY(!Child<QWidget>(dialog, "toEdit").isVisible());
    Do(dialog, u"allNoButton"_s);
    QCOMPARE(Texts(dialog, u"fromEdit toEdit"_s), u"11/06/2026|11/06/2026"_s);
    QCOMPARE(dialog.size(), size); // it does not jump
    QCOMPARE(FaultsOf(dialog), QStringList());
    auto const none = u"Enter a date, such as 11/24/2026. @"_s;
    desk.Refuses(dialog,
        {{u"fromEdit=11/7/2026 toEdit=11/8/2026"_s, u" @fromEdit"_s},
            {u"toEdit=11/7/2026 fromEdit=11/6/2026"_s, u" @toEdit"_s},
            {u"toEdit=11/5/2026 fromEdit=11/6/2026"_s,
                u"Error: second date must be later than or equal to first date @toEdit"_s},
            {u"fromEdit= toEdit="_s, none + u"fromEdit"_s},
            {u"toEdit=2/30/2026 fromEdit=1/1/2026"_s, none + u"toEdit"_s}});
    Do(dialog, u"allYesButton"_s);
    QCOMPARE(desk.Ok(dialog), QString()); // whatever stands in the hidden fields
    QVERIFY(dialog.m_bAllWorkouts && dialog.m_dtTo == CEFOleDateTime(2026, 11, 6, 18, 5, 9));
}

void ReportQueueTest::twoRecordsAreAskedFor()
{
    CReportDesk desk;
    auto const refuses = [&desk](QDialog& dialog) {
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(FaultsOf(dialog), QStringList());
        Do(dialog, u"secondList=0"_s);
        QVERIFY(desk.Ok(dialog).endsWith(u"@secondList"_s));
        for (auto const* const name : {"secondList", "firstList"}) {
            auto& list = Child<QListView>(dialog, name);
            QVERIFY(list.accessibleName().contains(u" Date "_s)); // labels name no lists
            QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                list.visualRect(list.currentIndex()).center()); // which unselects
            Child<QDialogButtonBox>(dialog, "buttonBox").setFocus();
            QVERIFY(desk.Ok(dialog).endsWith(QLatin1StringView(name)));
        }
        ClickCancel(dialog);
    };
    for (auto const& [type, kind, one] : {std::tuple(10, u"evaluation"_s, u"an evaluation"_s),
             {12, u"body composition"_s, u"a body composition"_s}}) {
        auto const none = u"Error: select %1 from each list"_s.arg(one);
        QCOMPARE(desk.Queue(type, u"memberIDEdit=12 OK"_s, refuses),
            u"Error: select two different %1s"_s.arg(kind) + none + none);
    }
}

static CTestEntryOf<ReportQueueTest> const g_entry;
#include "ReportQueueTest.moc"
