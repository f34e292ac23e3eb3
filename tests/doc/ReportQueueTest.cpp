#include "doc/CorvanaDoc.h"
#include "doc/ReportJob.h"
#include "doc/ReportOptionsDlg.h"
#include "platform/qt/DateField.h"
#include "platform/qt/DropDown.h"
#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/Convert.h"

#include <QLabel>
#include <QListView>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace
{

using Step = CDialogUser::Step;
using Steps = QList<Step>;

template <typename Set>
void AddRecord(int member, CEFOleDateTime Set::*date, CEFOleDateTime const& when, int number)
{
    Set set;
    set.OpenSet(false);
    QVERIFY(set.Op(CDAOEFSet::opAddNew));
    set.m_lMemberID = member;
    set.*date = when;
    if constexpr (requires { set.m_lEvalID; }) {
        set.m_lEvalID = number;
    }
    QVERIFY(set.Op(CDAOEFSet::opUpdate));
}

Step Enter(char const* field, QString const& text)
{
    return [=](QDialog& dialog) {
        Type(Child<QLineEdit>(dialog, field), text);
        ClickOk(dialog);
    };
}

Step Member(int id)
{
    return Enter("memberIDEdit", QString::number(id));
}

void ChooseClass(QDialog& dialog)
{
    Choose(Child<CDropDown>(dialog, "categoryList"), 1);
    ClickOk(dialog);
}

/// Looks which class of the member is selected, and chooses one.
Step MemberClass(QString const& selected, int index)
{
    return [selected, index](QDialog& dialog) {
        auto& list = Child<CDropDown>(dialog, "classList");
        QCOMPARE(list.currentText(), selected);
        Choose(list, index);
        ClickOk(dialog);
    };
}

/// Presses the buttons, and enters the same day twice where that is asked then.
Step Options(QList<char const*> const& buttons)
{
    return [buttons](QDialog& dialog) {
        for (auto const* const button : buttons) {
            Child<QRadioButton>(dialog, button).click();
        }
        if (Child<CDateField>(dialog, "fromEdit").isVisible()) {
            Type(Child<CDateField>(dialog, "fromEdit"), u"11/5/2026"_s);
            Type(Child<CDateField>(dialog, "toEdit"), u"11052026"_s);
        }
        ClickOk(dialog);
    };
}

void SelectRow(QDialog const& dialog, char const* list, int row)
{
    auto& view = Child<QListView>(dialog, list);
    view.setCurrentIndex(view.model()->index(row, 0));
}

Step Compare(int first, int second)
{
    return [first, second](QDialog& dialog) {
        SelectRow(dialog, "firstList", first);
        SelectRow(dialog, "secondList", second);
        QVERIFY(QGuiApplication::overrideCursor() == nullptr); // nobody waits
        ClickOk(dialog);
    };
}

void Accept(QDialog& dialog)
{
    ClickOk(dialog);
}

auto const kAll = u"All Categories/Courses/Sections"_s;
auto const kDay = u"|11/05/2026 00:00:00|11/05/2026 23:59:59"_s;

} // namespace

class ReportQueueTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void whatWasAskedIsQueued();
    void whatCannotBeReportedIsTold();
    void recordsThatGoMeanwhileAreTold();
    void queueThatCannotBeWrittenIsTold();
    void rangeIsTakenOrRefused();
    void twoRecordsAreAskedFor();
    void formsAreFitForEveryone();

private:
    QString Queue(int type, Steps const& steps);

    std::unique_ptr<CTestCentre> m_pCentre;
    std::unique_ptr<CMessageRecorder> m_pMessages;
    CTestApp m_app;
    CTestViews m_views;
    std::unique_ptr<CCorvanaDoc> m_pDoc;
};

/// Member 12 has two classes and three records of each kind, 13 one of each, 14 none.
void ReportQueueTest::init()
{
    m_pCentre = std::make_unique<CTestCentre>();
    m_pMessages = std::make_unique<CMessageRecorder>();
    m_pDoc = std::make_unique<CCorvanaDoc>(m_app);
    m_views.m_lstResults.clear();
    m_pDoc->SetViews(&m_views);
    CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 6, 18, 5, 9));
    for (int const id : {12, 13, 14}) {
        AddMember(id);
    }
    AddClass(12, 2, "'Staff', 'Wellness', 'Morning'");
    AddClass(12, 98, "'Students', '', ''");
    AddClass(13, 3, "'Staff', '', ''");
    CEFOleDateTime const first(2025, 12, 31, 23, 59, 59);
    CEFOleDateTime const last(2026, 11, 5, 23, 59, 59);
    for (auto const& [member, when, number] : {std::tuple(12, last, 1),
             {12, CEFOleDateTime(2026, 1, 1), 2}, {12, first, 3}, {13, first, 4}}) {
        AddRecord(member, &CDAOSmEval::m_dtEvalDate, when, number);
        AddRecord(member, &CDAOBodyComp::m_dtBodyCompDate, when, number);
        AddRecord(member, &CDAOWk::m_dtCheckIn, when, number);
    }
}

void ReportQueueTest::cleanup()
{
    CEFOleDateTime::SetClock(std::nullopt);
    m_pDoc.reset();
    m_pMessages.reset();
    m_pCentre.reset();
}

/// The job that a command queued, empty without one; the queue is empty afterwards.
QString ReportQueueTest::Queue(int type, Steps const& steps)
{
    CDialogUser const user(steps);
    auto const results = m_views.m_lstResults.size();
    bool const queued = m_pDoc->QueueReport(type);
    for (auto const& fault : user.Faults()) {
        QTest::qFail(qPrintable(fault), __FILE__, __LINE__);
    }
    CDAOReport queue;
    if (queue.FindReports() == 0) {
        return queued ? u"no job"_s : QString();
    }
    auto const date = [](CEFOleDateTime const& value) {
        return value.IsZero() ? "-" : value.DateTimeStrLongYear();
    };
    auto const job = std::to_string(queue.m_nRptType) + '|' + std::to_string(queue.m_nRptParam)
        + '|' + date(queue.m_dtRptFrom) + '|' + date(queue.m_dtRptTo) + '|' + queue.m_strRptCategory
        + '|' + queue.m_strRptCourse + '|' + queue.m_strRptSection;
    bool const isOne = queue.DelAll() == 1 && queued && m_views.m_lstResults.size() == results + 1;
    return isOne ? ToQt(job) : u"not once and told once"_s;
}

void ReportQueueTest::whatWasAskedIsQueued()
{
    auto const day = Enter("dateEdit", u"11/5/2026"_s);
    auto const all = MemberClass(kAll, 0);
    auto const one = MemberClass(u"Staff"_s, 2);
    auto const past = Options({"idsNoButton", "statusPastButton"});
    auto const current = Options({"statusCurrentButton"});
    auto const range = Options({"allNoButton"});
    struct Case
    {
        int type;
        Steps steps;
        QString job;
    };
    for (auto const& [type, steps, job] :
        std::initializer_list<Case>{{0, {Member(13)}, u"0|13|-|-|||"_s}, {1, {}, u"1|0|-|-|||"_s},
            {2, {Accept}, u"2|3|-|-|||"_s}, {3, {past}, u"3|8|-|-|||"_s},
            {4, {ChooseClass, current}, u"4|5|-|-|Staff|Wellness|Morning"_s},
            {5, {day}, u"5|0"_s + kDay + u"|||"_s}, {6, {Accept}, u"6|19|-|-|||"_s},
            {6, {range}, u"6|3"_s + kDay + u"|||"_s},
            {7, {Member(12), all}, u"7|12|-|-|99|Unknown|"_s},
            {7, {Member(13), one}, u"7|13|-|-|3|Staff|"_s},
            {7, {Member(14), Accept}, u"7|14|-|-|101|%1|"_s.arg(kAll)},
            {8, {ChooseClass, past}, u"8|24|-|-|Staff|Wellness|Morning"_s},
            {8, {ChooseClass, range}, u"8|3"_s + kDay + u"|Staff|Wellness|Morning"_s},
            {9, {Member(12)}, u"9|12|12/31/2025 23:59:59|-|||"_s},
            {10, {Member(12), Accept}, u"10|12|12/31/2025 23:59:59|01/01/2026 00:00:00|||"_s},
            {11, {Member(13)}, u"11|13|12/31/2025 23:59:59|-|||"_s},
            {12, {Member(12), Compare(2, 0)},
                u"12|12|11/05/2026 23:59:59|12/31/2025 23:59:59|||"_s},
            {13, {}, u"13|0|-|-|||"_s}, {14, {}, {}}, {-1, {}, {}}}) {
        QCOMPARE(Queue(type, steps), job);
        for (qsizetype kept = 0; kept < steps.size(); ++kept) { // each dialog cancelled in turn
            QCOMPARE(Queue(type, steps.first(kept) << Step(ClickCancel)), QString());
        }
    }
    QCOMPARE(m_views.m_lstResults.constLast(),
        u"The report \"Category \"Unknown\" Workouts\" is queued for the report server."_s);
    QCOMPARE(m_pMessages->Texts(), QStringList());
    QCOMPARE(m_pDoc->m_setWk.CountSet() + m_pDoc->m_setCls.CountSet() + m_pDoc->m_setEval.CountSet()
            + m_pDoc->m_setBodyComp.CountSet(),
        0); // they are closed
}

void ReportQueueTest::whatCannotBeReportedIsTold()
{
    auto const day = Enter("dateEdit", u"11/4/2026"_s);
    auto const tells = [this](int type, Step const& step, QString const& message, bool withReason) {
        auto const told = m_pMessages->Texts().size();
        QCOMPARE(Queue(type, {step}), QString());
        QCOMPARE(m_pMessages->Texts().sliced(told), QStringList{message});
        QCOMPARE(m_pMessages->Messages().constLast().m_strDetail.isEmpty(), !withReason);
        QCOMPARE(m_pMessages->Messages().constLast().m_icon, CMessageIcon::none);
    };
    tells(5, day, u"No workouts are recorded for 11/04/2026."_s, false);
    for (auto const& [type, kind] : {std::pair(9, u"evaluation"_s), {11, u"body composition"_s}}) {
        auto const none = u"No %1s are recorded for Member ID 14."_s.arg(kind);
        tells(type, Member(14), none, false);
        tells(type + 1, Member(14), none, false);
        tells(
            type + 1, Member(13), u"Only one %1 is recorded for Member ID 13."_s.arg(kind), false);
    }
    RunOnMembers("PRAGMA legacy_alter_table = ON");
    for (auto const* const table : {"workouts", "classes", "evaluations", "body_compositions"}) {
        RunOnMembers(std::string("ALTER TABLE ").append(table).append(" RENAME TO lost_") + table);
    }
    auto const unread = u"Error: the %1 could not be read."_s;
    tells(5, day, unread.arg(u"workouts of 11/04/2026"_s), true);
    tells(7, Member(12), unread.arg(u"classes of Member ID 12"_s), true);
    for (auto const& [type, kind] :
        {std::pair(9, u"evaluations"_s), {11, u"body compositions"_s}}) {
        for (int const either : {type, type + 1}) {
            tells(either, Member(12), unread.arg(kind + u" of Member ID 12"_s), true);
        }
    }
}

void ReportQueueTest::recordsThatGoMeanwhileAreTold()
{
    auto const goes = [](int number, Step const& compare) {
        return [number, compare](QDialog& dialog) {
            RunOnMembers("DELETE FROM evaluations WHERE eval_id = " + std::to_string(number));
            compare(dialog);
        };
    };
    // Of the three, the second one goes, and the others keep their places.
    QCOMPARE(Queue(10, {Member(12), goes(2, Compare(0, 2))}),
        u"10|12|12/31/2025 23:59:59|11/05/2026 23:59:59|||"_s);
    QCOMPARE(Queue(10, {Member(12), goes(1, Compare(0, 1))}), QString());
    QCOMPARE(m_pMessages->Texts(),
        QStringList{u"Error: one of the two evaluations is no longer there.\n"
                    "The report was not queued."_s});
}

void ReportQueueTest::queueThatCannotBeWrittenIsTold()
{
    CTestCentre::Run("CREATE TRIGGER full BEFORE INSERT ON reports BEGIN "
                     "SELECT raise(ABORT, 'no room'); END",
        DataFile::report);
    QCOMPARE(Queue(2, {Accept}), QString());
    CDatabaseSession::Get().ShutDown();
    std::filesystem::remove(m_pCentre->Folder() / "report.mdb");
    QVERIFY(!m_pDoc->AddReport({.m_nType = CDAOReport::rtEmergencyContacts}));
    auto const message = u"Error: the report \"Member Emergency Contacts\" could not be queued."_s;
    QCOMPARE(m_pMessages->Texts(), (QStringList{message, message}));
    QVERIFY(!m_pMessages->Messages()[0].m_strDetail.isEmpty());
    QVERIFY(m_pMessages->Messages()[1].m_strDetail.contains(u"report.mdb"_s));
    QVERIFY(m_views.m_lstResults.isEmpty());
}

void ReportQueueTest::rangeIsTakenOrRefused()
{
    CReportOptionsDlg dialog(CReportOptionsDlg::Kind::workouts);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto const size = dialog.size();
    auto& from = Child<CDateField>(dialog, "fromEdit");
    auto& to = Child<CDateField>(dialog, "toEdit");
    QVERIFY(!from.isVisible() && !to.isVisible());
    Child<QRadioButton>(dialog, "allNoButton").click();
    QVERIFY(from.isVisible() && to.isVisible());
    QCOMPARE(from.text() + to.text(), u"11/06/202611/06/2026"_s);
    QCOMPARE(dialog.size(), size); // it does not jump
    auto const order = u"Error: second date must be later than or equal to first date"_s;
    auto const none = u"Enter a date, such as 11/24/2026."_s;
    for (auto const& [first, second, message, focus] :
        {std::tuple(u"11/7/2026"_s, u"11/8/2026"_s, QString(), &from),
            {u"11/6/2026"_s, u"11/7/2026"_s, QString(), &to},
            {u"11/6/2026"_s, u"11/5/2026"_s, order, &to}, {u""_s, u""_s, none, &from},
            {u"1/1/2026"_s, u"2/30/2026"_s, none, &to}}) {
        auto const told = m_pMessages->Texts().size();
        Type(from, first);
        Type(to, second);
        Child<QRadioButton>(dialog, "allNoButton").setFocus();
        ClickOk(dialog);
        QVERIFY(dialog.isVisible() && focus->hasFocus());
        QCOMPARE(m_pMessages->Texts().sliced(told),
            message.isEmpty() ? QStringList() : QStringList{message});
        QVERIFY(dialog.m_bAllWorkouts);
        QCOMPARE(dialog.m_dtTo, CEFOleDateTime(2026, 11, 6, 18, 5, 9));
    }
    auto const told = m_pMessages->Texts().size();
    QTest::mouseClick(&Child<QRadioButton>(dialog, "allYesButton"), Qt::LeftButton);
    ClickOk(dialog); // whatever stands in the hidden fields
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(m_pMessages->Texts().size(), told);
    QVERIFY(dialog.m_bAllWorkouts);
}

void ReportQueueTest::twoRecordsAreAskedFor()
{
    for (auto const& [type, kind, article] :
        {std::tuple(10, u"evaluation"_s, u"an"_s), {12, u"body composition"_s, u"a"_s}}) {
        auto const refuses = [this, kind = kind, article = article](QDialog& dialog) {
            auto const isRefused = [&](QString const& message, QWidget const& focus) {
                Child<QDialogButtonBox>(dialog, "buttonBox").setFocus();
                ClickOk(dialog);
                return dialog.isVisible() && focus.hasFocus()
                    && m_pMessages->Texts().constLast() == message;
            };
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            auto& second = Child<QListView>(dialog, "secondList");
            SelectRow(dialog, "secondList", 0);
            QVERIFY(isRefused(u"Error: select two different %1s"_s.arg(kind), second));
            for (auto* const list : {&second, &Child<QListView>(dialog, "firstList")}) {
                QVERIFY(list->accessibleName().contains(u" Date "_s)); // labels name no lists
                QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                    list->visualRect(list->currentIndex()).center()); // which unselects
                auto const message = u"Error: select %1 %2 from each list"_s.arg(article, kind);
                QVERIFY(isRefused(message, *list));
            }
            ClickCancel(dialog);
        };
        QCOMPARE(Queue(type, {Member(12), refuses}), QString());
    }
}

void ReportQueueTest::formsAreFitForEveryone()
{
    auto const check = [this] {
        auto const look = [](QDialog& dialog) {
            QCOMPARE(FaultsOf(dialog), QStringList());
            if (auto* const no = dialog.findChild<QRadioButton*>(u"allNoButton"_s)) {
                no->click();
                QCOMPARE(FaultsOf(dialog), QStringList());
            }
            ClickCancel(dialog);
        };
        Queue(2, {look});
        Queue(6, {look});
        Queue(10, {Member(12), look});
        Queue(12, {Member(12), look});
    };
    check();
    CLargeFont const large;
    check();
}

static CTestEntryOf<ReportQueueTest> const g_entry;
#include "ReportQueueTest.moc"
