#include "doc/CheckInModel.h"
#include "doc/CorvanaDoc.h"
#include "doc/QuickStatsDlg.h"
#include "store/sets/AddRow.h"
#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/MessageRecorder.h"

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTimer>
#include <QTreeView>

#include <filesystem>
#include <random>

using namespace Qt::StringLiterals;

namespace
{

CEFOleDateTime const kNow(2026, 11, 6, 18, 5, 9);
QStringList const kNoneFound{u"None Found"_s, {}, {}, {}, {}};
/// What is painted of a widget while it lives.
class CPaintWatch : public QObject
{
public:
    explicit CPaintWatch(QWidget& widget) { widget.installEventFilter(this); }
    QRegion Painted()
    {
        QCoreApplication::processEvents();
        return std::exchange(m_painted, {});
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            m_painted += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

private:
    QRegion m_painted;
};

/// Takes a file of the centre away, and returns what the engine says then.
QString MoveAway(std::filesystem::path const& file)
{
    std::filesystem::rename(file, file.string() + ".away");
    QTest::qWait(20); // the engine asks for the name every few milliseconds
    return u"The file \"%1\" was renamed or deleted while it was open."_s.arg(
        QString::fromStdString(file.string()));
}

void OnCheckIns(QString const& sql)
{
    CTestCentre::Run(sql.toStdString(), DataFile::checkIn);
}

/// A member of the name of his ID, whose workout number is a hundred more.
void CheckIn(int memberID, int minutesAgo)
{
    OnCheckIns(u"INSERT INTO check_ins (member_id, workout_number, first_name, last_name, "
               "check_in) VALUES (%1, %1 + 100, 'Ann', 'No%1', %2)"_s.arg(memberID)
                   .arg(kNow.Seconds() - std::int64_t(minutesAgo) * 60));
}

QStringList Rows(QAbstractItemModel const& model)
{
    QStringList rows;
    for (int cell = 0; cell < model.rowCount() * 5; ++cell) {
        rows += model.index(cell / 5, cell % 5).data().toString();
    }
    return rows;
}

} // namespace

class QuickStatsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void countsAndSaysWhatItCannotCount();
    void refreshKeepsThePlaceAndPaintsWhatChanged();
    void refreshFollowsEveryChange();
    void deletesTheFirstCheckInOfTheMember();
    void deletesNothingElse();
    void failuresAreSaidAndLoseNothing();
    void formIsFitForEveryone();

private:
    void Open();
    void Tick();
    QTreeView& List() const { return Child<QTreeView>(*m_pDialog, "checkInList"); }
    QStringList Shown() const { return Rows(*List().model()); }
    QString State() const { return Child<QLabel>(*m_pDialog, "stateLabel").text(); }
    int MemberAt(QModelIndex const& row) const { return row.siblingAtColumn(3).data().toInt(); }
    int Selected() const { return MemberAt(List().selectionModel()->selectedRows().value(0)); }
    void Select(int row) { List().setCurrentIndex(List().model()->index(row, 0)); }
    void Press(Qt::Key key) { QTest::keyClick(&List(), key); }

    std::unique_ptr<CTestCentre> m_pCentre;
    std::unique_ptr<CMessageRecorder> m_pMessages;
    CTestApp m_app;
    std::unique_ptr<CCorvanaDoc> m_pDoc;
    std::unique_ptr<CQuickStatsDlg> m_pDialog;
};

void QuickStatsTest::init()
{
    CEFOleDateTime::SetClock(kNow);
    m_pCentre = std::make_unique<CTestCentre>();
    m_pMessages = std::make_unique<CMessageRecorder>();
    m_pDoc = std::make_unique<CCorvanaDoc>(m_app);
}

void QuickStatsTest::cleanup()
{
    m_pDialog.reset();
    m_pDoc.reset();
    m_pMessages.reset();
    m_pCentre.reset();
    CEFOleDateTime::SetClock({});
}

void QuickStatsTest::Open()
{
    m_pDialog = std::make_unique<CQuickStatsDlg>(m_pDoc->m_setChkIn);
    m_pDialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pDialog.get()));
}

/// Lets the time of the next refresh come.
void QuickStatsTest::Tick()
{
    auto& timer = Child<QTimer>(*m_pDialog, "refreshTimer");
    QVERIFY(timer.isActive());
    QCOMPARE(timer.interval(), 15000);
    QTimerEvent tick(timer.timerId());
    QCoreApplication::sendEvent(&timer, &tick);
    QVERIFY(timer.isActive());
}

void QuickStatsTest::countsAndSaysWhatItCannotCount()
{
    auto const check = [this](QString const& expected, QString const& reason) {
        CDialogUser const user({[&](QDialog& dialog) {
            QStringList counts;
            for (auto const* const name :
                {"membersValue", "currentMembersValue", "pastMembersValue", "workoutsValue",
                    "todaysWorkoutsValue", "evaluationsValue", "bodyCompsValue"}) {
                counts += Child<QLabel>(dialog, name).text();
            }
            QCOMPARE(counts.join(u' '), expected);
            QCOMPARE(Child<QLabel>(dialog, "notCountedLabel").text(), reason);
            ClickOk(dialog);
        }});
        m_pDoc->ShowQuickStats();
        QCOMPARE(user.Faults(), QStringList());
    };
    check(u"0 0 0 0 0 0 0"_s, {});
    for (int id = 1; id <= 10; ++id) {
        AddMember(id);
    }
    RunOnMembers("UPDATE members SET status = 0 WHERE member_id > 7");
    auto midnight = kNow;
    midnight.Midnight();
    for (int const seconds : {-1, 0, 86399, 86400}) { // two of them today
        QVERIFY(AddRow<CDAOWk>([&](CDAOWk& set) {
            set.m_lMemberID = 5;
            set.m_dtCheckIn = CEFOleDateTime::FromSeconds(midnight.Seconds() + seconds);
        }));
    }
    QVERIFY(AddRow<CDAOSmEval>([](CDAOSmEval& set) { set.m_lMemberID = 5; }));
    QVERIFY(AddRow<CDAOBodyComp>([](CDAOBodyComp& set) { set.m_lMemberID = 5; }));
    check(u"10 7 3 4 2 1 1"_s, {});
    auto const reason = MoveAway(m_pCentre->Folder() / "member.mdb");
    check(u"0 0 0 0 0 0 0"_s,
        u"Not counted: members, workouts, evaluations, body compositions. "_s + reason);
    QCOMPARE(m_pMessages->Texts(), QStringList());
}

void QuickStatsTest::refreshKeepsThePlaceAndPaintsWhatChanged()
{
    for (int i = 1; i <= 40; ++i) {
        CheckIn(i, 100 - i);
    }
    Open();
    auto& list = List();
    auto& bar = *list.verticalScrollBar();
    QVERIFY(bar.maximum() > 20);
    QCOMPARE(bar.value(), bar.maximum()); // the last one is in sight, and nobody selected
    QCOMPARE(Selected(), 0);
    Select(20);
    bar.setValue(15);
    auto& ok = *Child<QDialogButtonBox>(*m_pDialog, "buttonBox").button(QDialogButtonBox::Ok);
    ok.setFocus();
    CPaintWatch watch(*list.viewport());
    watch.Painted();

    Tick();
    QCOMPARE(watch.Painted(), QRegion());
    OnCheckIns(u"UPDATE check_ins SET workout_number = 7 WHERE member_id IN (2, 18)"_s);
    Tick();
    QCOMPARE(watch.Painted(), QRegion(list.visualRect(list.model()->index(17, 4))));

    OnCheckIns(u"DELETE FROM check_ins WHERE member_id IN (3, 4, 16, 19)"_s);
    CheckIn(50, 98); // between the first ones
    CheckIn(51, 0);
    Tick();
    QCOMPARE(list.indexAt({}).row(), 13);
    QCOMPARE(MemberAt(list.indexBelow(list.indexAt({}))), 17); // where it was
    QCOMPARE(Selected(), 21);
    QVERIFY(ok.hasFocus());
    OnCheckIns(u"UPDATE check_ins SET check_in = check_in + 5700 WHERE member_id = 21"_s);
    Tick();
    QCOMPARE(Selected(), 21); // wherever it stands now
    QCOMPARE(MemberAt(list.currentIndex()), 21);
    OnCheckIns(u"DELETE FROM check_ins WHERE member_id = 21"_s);
    Tick();
    QCOMPARE(Selected(), 0); // and nobody in its place
    QCOMPARE(list.indexAt({}).row(), 13);

    bar.setValue(bar.maximum());
    CheckIn(52, 0);
    Tick();
    QCOMPARE(bar.value(), bar.maximum());
    QCOMPARE(m_pMessages->Texts(), QStringList());
}

void QuickStatsTest::refreshFollowsEveryChange()
{
    Open();
    QAbstractItemModelTester const tester(
        List().model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    std::mt19937 random(1);
    for (int round = 0; round < 60; ++round) {
        for (int change = 0; change < round % 4; ++change) {
            int const id = 1 + int(random() % 8);
            int const minutes = int(random() % 5);
            auto const what = random() % 4;
            if (what > 1) {
                CheckIn(id, minutes);
            } else {
                OnCheckIns((what == 0 ? u"DELETE FROM check_ins"_s
                                      : u"UPDATE check_ins SET last_name = 'New', check_in = "
                                        "check_in - %1"_s.arg(minutes * 60))
                    + u" WHERE member_id <> %1"_s.arg(id));
            }
        }
        CEFOleDateTime::SetClock(
            CEFOleDateTime::FromSeconds(kNow.Seconds() + std::int64_t(round) * 15));
        Tick();
        CCheckInModel fresh;
        QVERIFY(fresh.Refresh(m_pDoc->m_setChkIn));
        QCOMPARE(Shown(), Rows(fresh));
    }
}

void QuickStatsTest::deletesTheFirstCheckInOfTheMember()
{
    CheckIn(5, 30);
    CheckIn(6, 20);
    CheckIn(5, 10);
    CheckIn(7, 5);
    Open();
    auto const question = u"Are you sure you want to delete the check-in\nfor Member ID: %1 dated "
                          "11/06/2026 %2?"_s;
    auto const& timer = Child<QTimer>(*m_pDialog, "refreshTimer");
    m_pMessages->m_fnWhileShown = [&] { QVERIFY(!timer.isActive()); };
    QStringList asked;
    auto const check = [&](QString const& text, QString const& left) {
        asked += text;
        QCOMPARE(m_pMessages->Texts(), asked);
        QCOMPARE(m_pMessages->Messages().constLast().m_question, CQuestion::destroying);
        QString ids;
        for (int cell = 3; cell < Shown().size(); cell += 5) {
            ids += Shown().at(cell);
        }
        QCOMPARE(ids, left);
        QVERIFY(m_pDialog->isVisible() && timer.isActive());
    };
    Select(2); // the second one of 5
    Press(Qt::Key_Escape);
    check(question.arg(5).arg(u"17:35:09"_s), u"5657"_s); // No
    m_pMessages->AnswerNext({true, true, true, true});
    Press(Qt::Key_Escape);
    check(question.arg(5).arg(u"17:35:09"_s), u"657"_s);
    QCOMPARE(Selected(), 5);
    m_pDialog->close();
    check(question.arg(5).arg(u"17:55:09"_s), u"67"_s);
    QCOMPARE(Selected(), 0);
    Select(0);
    Press(Qt::Key_Delete);
    check(question.arg(6).arg(u"17:45:09"_s), u"7"_s);
    Select(0);
    m_pMessages->m_fnWhileShown = [] { OnCheckIns(u"DELETE FROM check_ins"_s); };
    Child<QPushButton>(*m_pDialog, "deleteButton").click(); // gone before the answer
    check(question.arg(7).arg(u"18:00:09"_s), QString());
    QCOMPARE(Shown(), kNoneFound);
}

void QuickStatsTest::deletesNothingElse()
{
    Open();
    Select(0);
    m_pDialog->reject(); // "None Found"
    QCOMPARE(m_pMessages->Texts(), QStringList());
    CheckIn(5, 30);
    Tick();
    QCOMPARE(Selected(), 0);
    Press(Qt::Key_Escape);
    QCOMPARE(m_pMessages->Texts().value(0),
        u"To delete a check-in, you must first click on the check-in,\nthen click \"Delete.\""_s);
    Select(0);
    OnCheckIns(u"DELETE FROM check_ins"_s);
    CheckIn(6, 20);
    Press(Qt::Key_Escape);
    QCOMPARE(m_pMessages->Texts().size(), 1); // nothing to ask
    QCOMPARE(Shown(), u"11/06/26 17:45|Ann No6|20|6|106"_s.split(u'|'));
    Press(Qt::Key_Return); // OK is the default
    QVERIFY(!m_pDialog->isVisible());
    QVERIFY(!Child<QTimer>(*m_pDialog, "refreshTimer").isActive());
}

void QuickStatsTest::failuresAreSaidAndLoseNothing()
{
    for (int i = 0; i < 40; ++i) {
        CheckIn(5, 60 - i);
    }
    Open();
    QCOMPARE(State(), u"Last refreshed: 18:05:09"_s);
    auto const& bar = *List().verticalScrollBar();
    auto const rowsBelow = bar.maximum();
    auto const before = Shown();
    auto const file = m_pCentre->Folder() / "checkin.mdb";
    auto const reason = MoveAway(file);
    CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 6, 18, 5, 24));
    Tick();
    QCOMPARE(Shown(), before);
    QCOMPARE(State(), u"Not refreshed at 18:05:24: %1\nLast refreshed: 18:05:09"_s.arg(reason));
    QCOMPARE(m_pMessages->Texts(), QStringList());
    QVERIFY(bar.maximum() > rowsBelow); // the text needs room
    QCOMPARE(bar.value(), bar.maximum());
    Select(0);
    m_pDialog->reject();
    QCOMPARE(m_pMessages->Messages().constLast().m_strDetail, reason);
    QCOMPARE(m_pMessages->Texts(), QStringList(u"Error: the check-in was not deleted."_s));
    std::filesystem::rename(file.string() + ".away", file);
    Tick();
    QCOMPARE(State(), u"Last refreshed: 18:05:24"_s);
    QCOMPARE(Selected(), 5);
}

void QuickStatsTest::formIsFitForEveryone()
{
    auto const check = [this] {
        Open();
        QCOMPARE(FaultsOf(*m_pDialog).join(u'\n'), QString());
        QVERIFY(m_pDialog->width() < 700 && m_pDialog->height() < 550);
    };
    CheckIn(5, 30);
    check();
    int column = 0;
    for (int const least : {105, 125, 50, 70, 70}) {
        QVERIFY(List().columnWidth(column++) >= least);
    }
    CLargeFont const large;
    check();
}

static CTestEntryOf<QuickStatsTest> const g_entry;
#include "QuickStatsTest.moc"
