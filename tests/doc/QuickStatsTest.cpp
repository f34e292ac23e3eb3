#include "doc/CheckInModel.h"
#include "doc/QuickStatsDlg.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/UserSteps.h"

#include <QAbstractItemModelTester>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <QTreeView>

#include <filesystem>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

CEFOleDateTime const kNow(2026, 11, 6, 18, 5, 9);

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

/// The rows, their cells between bars.
QStringList Rows(QAbstractItemModel const& model)
{
    QStringList rows(model.rowCount());
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            rows[row] += model.index(row, column).data().toString() + u'|';
        }
    }
    return rows;
}

/// A desk with the dialog of the statistics.
class CStatsDesk : public CTestDesk
{
public:
    CStatsDesk() { CEFOleDateTime::SetClock(kNow); }

    /// Opens the dialog, which is fit for everyone with whatever it shows.
    void Open()
    {
        m_pDialog = std::make_unique<CQuickStatsDlg>(m_doc.m_setChkIn);
        m_pDialog->show();
        new QAbstractItemModelTester(List().model(),
            QAbstractItemModelTester::FailureReportingMode::QtTest, m_pDialog.get());
        QVERIFY(QTest::qWaitForWindowActive(m_pDialog.get()));
        QCOMPARE(FaultsOf(*m_pDialog), QStringList());
        QVERIFY(m_pDialog->width() < 700 && m_pDialog->height() < 550);
    }
    /// Lets the time of the next refresh come. The list is as one that is made anew then.
    void Tick()
    {
        QVERIFY(Timer().isActive() && Timer().interval() == 15000);
        QTimerEvent tick(Timer().timerId());
        QCoreApplication::sendEvent(&Timer(), &tick);
        CCheckInModel fresh;
        if (fresh.Refresh(m_doc.m_setChkIn)) {
            QCOMPARE(Shown(), Rows(fresh));
        }
    }
    QTimer& Timer() const { return Child<QTimer>(*m_pDialog, "refreshTimer"); }
    QTreeView& List() const { return Child<QTreeView>(*m_pDialog, "checkInList"); }
    QStringList Shown() const { return Rows(*List().model()); }
    int Selected() const { return MemberAt(List().selectionModel()->selectedRows().value(0)); }
    /// The second one from the top of what is in sight.
    int InSight() const { return MemberAt(List().indexBelow(List().indexAt({}))); }
    static int MemberAt(QModelIndex const& row) { return row.siblingAtColumn(3).data().toInt(); }
    void Select(int row) const { List().setCurrentIndex(List().model()->index(row, 0)); }

    std::unique_ptr<CQuickStatsDlg> m_pDialog;
};

} // namespace

class QuickStatsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void countsAndSaysWhatItCannotCount();
    void refreshKeepsThePlaceAndTellsWhatChanged();
    void deletesTheFirstCheckInOfTheMember();
    void failuresAreSaidAndLoseNothing();
};

void QuickStatsTest::countsAndSaysWhatItCannotCount()
{
    CStatsDesk desk;
    auto const counts = [&desk] {
        QString texts;
        auto const look = [&texts](QDialog& dialog) {
            texts = Texts(dialog,
                u"membersValue currentMembersValue pastMembersValue workoutsValue "
                "todaysWorkoutsValue evaluationsValue bodyCompsValue notCountedLabel"_s);
            ClickOk(dialog);
        };
        desk.Told({look}, &CCorvanaDoc::ShowQuickStats);
        return texts;
    };
    for (int id = 1; id <= 10; ++id) {
        StoreMember(id, "Doe", {}, {}, id <= 7 ? 1 : 0);
    }
    auto const midnight = CEFOleDateTime(2026, 11, 6).Seconds();
    for (int const seconds : {-1, 0, 86399, 86400}) { // two of them today
        StoreRecords(5, CEFOleDateTime::FromSeconds(midnight + seconds));
    }
    RunOnMembers("DELETE FROM evaluations WHERE eval_id = 1");
    RunOnMembers("DELETE FROM body_compositions WHERE id IN (2, 4)");
    QCOMPARE(counts(), u"10|7|3|4|2|3|2|"_s);
    auto const reason = MoveAway(desk.m_centre.Folder() / "member.mdb");
    QCOMPARE(counts(),
        u"0|0|0|0|0|0|0|Not counted: members, workouts, evaluations, body compositions. "_s
            + reason);
    QCOMPARE(desk.m_messages.Texts(), QStringList());
}

void QuickStatsTest::refreshKeepsThePlaceAndTellsWhatChanged()
{
    CStatsDesk desk;
    for (int i = 1; i <= 40; ++i) {
        CheckIn(i, 100 - i);
    }
    desk.Open();
    auto& list = desk.List();
    auto& bar = *list.verticalScrollBar();
    QCOMPARE(bar.value(), bar.maximum()); // the last one is in sight, and nobody selected
    QCOMPARE(desk.Selected(), 0);
    desk.Select(20);
    bar.setValue(15);
    QSignalSpy changes(
        list.model(), &QAbstractItemModel::dataChanged); // each lets a cell be painted
    desk.Tick();
    QCOMPARE(changes.size(), 0);
    for (auto const& [column, change] : {std::pair(4, u"workout_number = 7"_s),
             {1, u"first_name = 'New'"_s}, {1, u"last_name = 'New'"_s}}) {
        OnCheckIns(u"UPDATE check_ins SET %1 WHERE member_id = 18"_s.arg(change));
        desk.Tick();
        auto const cell = list.model()->index(17, column);
        QVERIFY(changes.size() == 1 && changes[0][0] == cell && changes.takeFirst()[1] == cell);
    }
    CEFOleDateTime::SetClock(CEFOleDateTime::FromSeconds(kNow.Seconds() + 60));
    desk.Tick();
    QCOMPARE(changes.size(), 40); // their minutes

    OnCheckIns(u"DELETE FROM check_ins WHERE member_id IN (3, 4, 16, 19)"_s);
    CheckIn(50, 98); // between the first ones, and at the same time as one of them
    CheckIn(51, 0);
    desk.Tick();
    QVERIFY(desk.InSight() == 17 && desk.Selected() == 21); // where they were
    OnCheckIns(u"UPDATE check_ins SET check_in = check_in + 5700 WHERE member_id = 21"_s);
    desk.Tick();
    QCOMPARE(desk.Selected(), 21); // wherever it stands now
    QCOMPARE(desk.MemberAt(list.currentIndex()), 21);
    OnCheckIns(u"DELETE FROM check_ins WHERE member_id = 21"_s);
    desk.Tick();
    QVERIFY(desk.InSight() == 17 && desk.Selected() == 0); // and nobody in its place

    bar.setValue(bar.maximum());
    CheckIn(52, 0);
    desk.Tick();
    QCOMPARE(bar.value(), bar.maximum());
    OnCheckIns(u"UPDATE check_ins SET member_id = 100 - member_id, check_in = check_in % 7"_s);
    desk.Tick(); // all stand elsewhere
}

void QuickStatsTest::deletesTheFirstCheckInOfTheMember()
{
    CStatsDesk desk;
    for (auto const& [memberID, minutes] : {std::pair(5, 30), {6, 20}, {5, 10}, {7, 5}}) {
        CheckIn(memberID, minutes);
    }
    desk.Open();
    auto& dialog = *desk.m_pDialog;
    auto& messages = desk.m_messages;
    messages.m_fnWhileShown = [&desk] { QVERIFY(!desk.Timer().isActive()); };
    auto const escape = [&desk] { QTest::keyClick(&desk.List(), Qt::Key_Escape); };
    // What is said when a row, if any, is selected and deleted in some way; then who is in the list
    // and who is selected in it.
    auto const after = [&](int row, auto const& way) {
        row < 0 ? void() : desk.Select(row);
        auto const told = desk.Told({}, way);
        [&] { QVERIFY(dialog.isVisible() && desk.Timer().isActive()); }();
        QString ids;
        for (auto const& shown : desk.Shown()) {
            ids += shown.section(u'|', 3, 3);
        }
        return told + u" %1 %2"_s.arg(ids).arg(desk.Selected());
    };
    QCOMPARE(after(-1, escape),
        u"To delete a check-in, you must first click on the check-in,\nthen click \"Delete.\""
        " 5657 0"_s);
    auto const ask = u"Are you sure you want to delete the check-in\n"
                     "for Member ID: %1 dated 11/06/2026 %2:09? %3"_s;
    messages.AnswerNext({false, true, true, true});
    auto const first = ask.arg(u"5"_s, u"17:35"_s);
    QCOMPARE(after(2, escape), first.arg(u"5657 5"_s)); // the second one of 5
    QCOMPARE(after(-1, escape), first.arg(u"657 5"_s));
    QCOMPARE(after(0, [&] { QTest::keyClick(&desk.List(), Qt::Key_Delete); }),
        ask.arg(u"6"_s, u"17:45"_s, u"57 0"_s));
    QCOMPARE(messages.Messages().constLast().m_question, CQuestion::destroying);
    OnCheckIns(u"DELETE FROM check_ins WHERE member_id = 5"_s);
    QCOMPARE(after(0, escape), u" 7 0"_s); // gone before the question
    messages.m_fnWhileShown = [] { OnCheckIns(u"DELETE FROM check_ins"_s); };
    QCOMPARE(after(0, [&] { Do(dialog, u"deleteButton"_s); }), // gone before the answer
        ask.arg(u"7"_s, u"18:00"_s, u" 0"_s));
    QCOMPARE(desk.Shown(), QStringList{u"None Found|||||"_s});
    QCOMPARE(after(0, escape), u"  0"_s); // there is nothing to ask
    CheckIn(6, 20);
    desk.Tick();
    QCOMPARE(desk.Shown(), QStringList{u"11/06/26 17:45|Ann No6|20|6|106|"_s});
    QTest::keyClick(&desk.List(), Qt::Key_Return); // OK is the default
    QVERIFY(!dialog.isVisible() && !desk.Timer().isActive());
}

void QuickStatsTest::failuresAreSaidAndLoseNothing()
{
    CStatsDesk desk;
    for (int i = 0; i < 40; ++i) {
        CheckIn(5, 60 - i);
    }
    CLargeFont const large;
    desk.Open();
    auto const state = [&desk] { return Texts(*desk.m_pDialog, u"stateLabel"_s); };
    auto const& bar = *desk.List().verticalScrollBar();
    auto const rowsBelow = bar.maximum();
    auto const before = desk.Shown();
    auto const file = desk.m_centre.Folder() / "checkin.mdb";
    auto const reason = MoveAway(file);
    CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 6, 18, 5, 24));
    desk.Tick();
    QCOMPARE(desk.Shown(), before);
    QCOMPARE(state(), u"Not refreshed at 18:05:24: %1\nLast refreshed: 18:05:09"_s.arg(reason));
    QVERIFY(bar.maximum() > rowsBelow && bar.value() == bar.maximum()); // the text needs room
    desk.Select(0);
    desk.m_pDialog->reject();
    QCOMPARE(desk.m_messages.Messages().constLast().m_strDetail, reason);
    QCOMPARE(desk.m_messages.Texts(), QStringList(u"Error: the check-in was not deleted."_s));
    std::filesystem::rename(file.string() + ".away", file);
    desk.Tick();
    QCOMPARE(state(), u"Last refreshed: 18:05:24"_s);
    QCOMPARE(desk.Selected(), 5);
}

static CTestEntryOf<QuickStatsTest> const g_entry;
#include "QuickStatsTest.moc"
