#include "doc/CheckInModel.h"
#include "doc/CorvanaDoc.h"
#include "doc/QuickStatsDlg.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTimer>
#include <QTreeView>

#include <filesystem>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

CEFOleDateTime const kNow(2026, 11, 6, 18, 5, 9);
/// Keeps what is painted of the widgets that it is a filter of.
class CPaintWatch : public QObject
{
public:
    QRegion m_painted;

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            m_painted += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
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

/// The rows, their cells between bars.
QStringList Rows(QAbstractItemModel const& model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column) {
            cells += model.index(row, column).data().toString();
        }
        rows += cells.join(u'|');
    }
    return rows;
}

} // namespace

class QuickStatsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        CEFOleDateTime::SetClock(kNow);
        m_pDesk = std::make_unique<CTestDesk>();
    }
    void cleanup()
    {
        m_pDialog.reset();
        m_pDesk.reset();
        CEFOleDateTime::SetClock({});
    }
    void countsAndSaysWhatItCannotCount();
    void refreshKeepsThePlaceAndPaintsWhatChanged();
    void deletesTheFirstCheckInOfTheMember();
    void failuresAreSaidAndLoseNothing();
    void formIsFitForEveryone();

private:
    /// Opens a dialog, which is fit for everyone with whatever it shows.
    void Open()
    {
        m_pDialog = std::make_unique<CQuickStatsDlg>(m_pDesk->m_doc.m_setChkIn);
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
        auto& timer = Child<QTimer>(*m_pDialog, "refreshTimer");
        QVERIFY(timer.isActive());
        QCOMPARE(timer.interval(), 15000);
        QTimerEvent tick(timer.timerId());
        QCoreApplication::sendEvent(&timer, &tick);
        QVERIFY(timer.isActive());
        CCheckInModel fresh;
        if (fresh.Refresh(m_pDesk->m_doc.m_setChkIn)) {
            QCOMPARE(Shown(), Rows(fresh));
        }
    }
    QTreeView& List() const { return Child<QTreeView>(*m_pDialog, "checkInList"); }
    QStringList Shown() const { return Rows(*List().model()); }
    QString State() const { return Child<QLabel>(*m_pDialog, "stateLabel").text(); }
    int MemberAt(QModelIndex const& row) const { return row.siblingAtColumn(3).data().toInt(); }
    int Selected() const { return MemberAt(List().selectionModel()->selectedRows().value(0)); }
    void Select(int row) { List().setCurrentIndex(List().model()->index(row, 0)); }
    void Press(Qt::Key key) { QTest::keyClick(&List(), key); }

    QStringList Told() const { return m_pDesk->m_messages.Texts(); }

    std::unique_ptr<CTestDesk> m_pDesk;
    std::unique_ptr<CQuickStatsDlg> m_pDialog;
};

void QuickStatsTest::countsAndSaysWhatItCannotCount()
{
    auto const check = [this](QString const& expected, QString const& reason) {
        auto const look = [&](QDialog& dialog) {
            QString counts;
            for (auto const* const name : {"members", "currentMembers", "pastMembers", "workouts",
                     "todaysWorkouts", "evaluations", "bodyComps"}) {
                counts += Child<QLabel>(dialog, QByteArray(name) + "Value").text() + u' ';
            }
            QCOMPARE(counts, expected);
            QCOMPARE(Child<QLabel>(dialog, "notCountedLabel").text(), reason);
            ClickOk(dialog);
        };
        CDialogUser const user({look});
        m_pDesk->m_doc.ShowQuickStats();
        QCOMPARE(user.Faults(), QStringList());
    };
    check(u"0 0 0 0 0 0 0 "_s, {});
    for (int id = 1; id <= 10; ++id) {
        AddMember(id);
    }
    RunOnMembers("UPDATE members SET status = 0 WHERE member_id > 7");
    auto midnight = kNow;
    midnight.Midnight();
    for (int const seconds : {-1, 0, 86399, 86400}) { // two of them today
        StoreRecords(5, CEFOleDateTime::FromSeconds(midnight.Seconds() + seconds));
    }
    RunOnMembers("DELETE FROM evaluations WHERE eval_id = 1");
    RunOnMembers("DELETE FROM body_compositions WHERE id IN (2, 4)");
    check(u"10 7 3 4 2 3 2 "_s, {});
    auto const reason = MoveAway(m_pDesk->m_centre.Folder() / "member.mdb");
    check(u"0 0 0 0 0 0 0 "_s,
        u"Not counted: members, workouts, evaluations, body compositions. "_s + reason);
    QCOMPARE(Told(), QStringList());
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
    CPaintWatch watch;
    list.viewport()->installEventFilter(&watch);
    auto const isPainted = [&](QRegion const& region) {
        QCoreApplication::processEvents();
        return std::exchange(watch.m_painted, {}) == region;
    };
    QVERIFY(!isPainted({})); // the selection

    Tick();
    QVERIFY(isPainted({}));
    for (auto const& [column, change] : {std::pair(4, u"workout_number = 7"_s),
             {1, u"first_name = 'New'"_s}, {1, u"last_name = 'New'"_s}}) {
        OnCheckIns(u"UPDATE check_ins SET %1 WHERE member_id IN (2, 18)"_s.arg(change));
        Tick();
        QVERIFY(isPainted(list.visualRect(list.model()->index(17, column)))); // 2 is not in sight
    }
    CEFOleDateTime::SetClock(CEFOleDateTime::FromSeconds(kNow.Seconds() + 60));
    Tick();
    QVERIFY(!isPainted({})); // their minutes

    OnCheckIns(u"DELETE FROM check_ins WHERE member_id IN (3, 4, 16, 19)"_s);
    CheckIn(50, 98); // between the first ones, and at the same time as one of them
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
    OnCheckIns(u"UPDATE check_ins SET member_id = 100 - member_id, check_in = check_in % 7"_s);
    Tick(); // all stand elsewhere
    QCOMPARE(Told(), QStringList());
}

void QuickStatsTest::deletesTheFirstCheckInOfTheMember()
{
    Open();
    auto& messages = m_pDesk->m_messages;
    auto const& timer = Child<QTimer>(*m_pDialog, "refreshTimer");
    messages.m_fnWhileShown = [&] { QVERIFY(!timer.isActive()); };
    qsizetype told = 0;
    // What is said since the last time, who is in the list, and who is selected in it.
    auto const check = [&](QString const& said, QString const& left) {
        QCOMPARE(Told().sliced(std::exchange(told, Told().size())).join(u'|'), said);
        QString ids;
        for (auto const& row : Shown()) {
            ids += row.section(u'|', 3, 3);
        }
        QCOMPARE(ids + u' ' + QString::number(Selected()), left);
        QVERIFY(m_pDialog->isVisible() && timer.isActive());
    };
    Select(0);
    Press(Qt::Key_Escape);
    check({}, u" 0"_s); // of "None Found" there is nothing to ask
    for (auto const& [memberID, minutes] : {std::pair(5, 30), {6, 20}, {5, 10}, {7, 5}}) {
        CheckIn(memberID, minutes);
    }
    Tick();
    Press(Qt::Key_Escape);
    check(u"To delete a check-in, you must first click on the check-in,\nthen click \"Delete.\""_s,
        u"5657 0"_s);
    auto const ask = u"Are you sure you want to delete the check-in\nfor Member ID: %1 dated "
                     "11/06/2026 %2?"_s;
    messages.AnswerNext({false, true, true, true, true});
    Select(2); // the second one of 5
    Press(Qt::Key_Escape);
    check(ask.arg(5).arg(u"17:35:09"_s), u"5657 5"_s);
    Press(Qt::Key_Escape);
    check(ask.arg(5).arg(u"17:35:09"_s), u"657 5"_s);
    m_pDialog->close();
    check(ask.arg(5).arg(u"17:55:09"_s), u"67 0"_s);
    Select(0);
    Press(Qt::Key_Delete);
    check(ask.arg(6).arg(u"17:45:09"_s), u"7 0"_s);
    QCOMPARE(messages.Messages().constLast().m_question, CQuestion::destroying);
    Select(0);
    messages.m_fnWhileShown = [] { OnCheckIns(u"DELETE FROM check_ins"_s); };
    Child<QPushButton>(*m_pDialog, "deleteButton").click(); // gone before the answer
    check(ask.arg(7).arg(u"18:00:09"_s), u" 0"_s);
    QCOMPARE(Shown(), QStringList{u"None Found||||"_s});
    CheckIn(8, 30);
    Tick();
    Select(0);
    OnCheckIns(u"DELETE FROM check_ins"_s);
    CheckIn(6, 20);
    Press(Qt::Key_Escape); // gone before the question
    check({}, u"6 0"_s);
    QCOMPARE(Shown(), QStringList{u"11/06/26 17:45|Ann No6|20|6|106"_s});
    Press(Qt::Key_Return); // OK is the default
    QVERIFY(!m_pDialog->isVisible() && !timer.isActive());
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
    auto const file = m_pDesk->m_centre.Folder() / "checkin.mdb";
    auto const reason = MoveAway(file);
    CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 6, 18, 5, 24));
    Tick();
    QCOMPARE(Shown(), before);
    QCOMPARE(State(), u"Not refreshed at 18:05:24: %1\nLast refreshed: 18:05:09"_s.arg(reason));
    QCOMPARE(Told(), QStringList());
    QVERIFY(bar.maximum() > rowsBelow); // the text needs room
    QCOMPARE(bar.value(), bar.maximum());
    Select(0);
    m_pDialog->reject();
    QCOMPARE(m_pDesk->m_messages.Messages().constLast().m_strDetail, reason);
    QCOMPARE(Told(), QStringList(u"Error: the check-in was not deleted."_s));
    std::filesystem::rename(file.string() + ".away", file);
    Tick();
    QCOMPARE(State(), u"Last refreshed: 18:05:24"_s);
    QCOMPARE(Selected(), 5);
}

void QuickStatsTest::formIsFitForEveryone()
{
    Open();
    int column = 0;
    for (int const least : {105, 125, 50, 70, 70}) {
        QVERIFY(List().columnWidth(column++) >= least);
    }
    CLargeFont const large;
    CheckIn(5, 30);
    Open();
}

static CTestEntryOf<QuickStatsTest> const g_entry;
#include "QuickStatsTest.moc"
