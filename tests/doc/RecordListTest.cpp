#include "bodycomp/BodyCompListDlg.h"
#include "evaluations/EvaluationListDlg.h"
#include "members/MemberListDlg.h"
#include "platform/qt/Settings.h"
#include "store/services/MemberSearchData.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FileRecorder.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/PrintedPages.h"
#include "workouts/WorkoutListDlg.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QTreeView>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

CEFOleDateTime const kNow(2026, 11, 6, 18, 5, 9);

QTreeView& ListOf(QDialog const& dialog)
{
    return Child<QTreeView>(dialog, "recordList");
}

/// The headings, or the texts of a row.
QString RowOf(QDialog const& dialog, int row)
{
    auto const& model = *ListOf(dialog).model();
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column) {
        texts += row < 0 ? model.headerData(column, Qt::Horizontal).toString()
                         : model.index(row, column).data().toString();
    }
    return texts.join(u'|');
}

/// The texts of a column, from the first row on.
QString Column(QDialog const& dialog, int column)
{
    auto const& model = *ListOf(dialog).model();
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row) {
        texts += model.index(row, column).data().toString();
    }
    return texts.join(u' ');
}

QString SelectedID(QDialog const& dialog)
{
    auto const rows = ListOf(dialog).selectionModel()->selectedRows(1);
    return rows.isEmpty() ? QString() : rows.front().data().toString();
}

void SelectRow(QDialog const& dialog, int row)
{
    auto& list = ListOf(dialog);
    list.scrollTo(list.model()->index(row, 0));
    auto const place = list.visualRect(list.model()->index(row, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
}

void Trigger(QDialog const& dialog, char const* action)
{
    dialog.findChild<QAction*>(QLatin1StringView(action))->trigger();
}

/// Presses Print, unchecks some items and takes the rest.
QList<QStringList> Print(QDialog const& dialog, QList<int> const& unchecked = {})
{
    CPrintedPages const printed;
    CTestDesk::Use({[&](QDialog& options) {
        for (auto const item : unchecked) {
            Child<QCheckBox>(options, qPrintable(u"item%1Check"_s.arg(item))).setChecked(false);
        }
        ClickOk(options);
    }},
        [&] { return Do(dialog, u"printButton"_s), true; });
    return printed.Lines();
}

/// A desk with members 1 to 9 and a workout of each, the first one of the ninth member; and the
/// list of these workouts.
class CListDesk : public CTestDesk
{
public:
    CListDesk()
    {
        CEFOleDateTime::SetClock(kNow);
        WriteProfileInt("workouts_list", "sort", 0); // a case may have ended sorted
        QVERIFY(m_doc.OnNewDocument());
        for (int id = 1; id <= 9; ++id) {
            StoreMember(id, std::string(1, char('S' - id)) + "mith", id % 2 == 0 ? "Éva" : "=Bob");
            AddClass(id, 4, "'Staff', 'Wellness', ''");
            AddWorkout(id, 10 - id);
        }
    }

    /// On that day of the month, as long as the member's number tells, checked in later each day.
    static void AddWorkout(int memberID, int day)
    {
        Store<CDAOWk>([&](CDAOWk& set) {
            set.m_lMemberID = memberID;
            set.m_nClassIndex = 4;
            set.m_dtCheckIn = CEFOleDateTime(2026, 3, day, 8 + day, 30);
            set.m_dtCheckOut
                = CEFOleDateTime::FromSeconds(set.m_dtCheckIn.Seconds() + memberID * 660);
            set.m_bWorkoutOK = memberID % 2 == 0;
            set.SetStnVal(2, std::int16_t(memberID * 4));
        });
    }

    CWorkoutListDlg& Show()
    {
        m_doc.m_setWk.FindWks(0);
        m_pList = std::make_unique<CWorkoutListDlg>(m_doc, m_doc.m_setWk);
        m_pList->show();
        [&] { QVERIFY(QTest::qWaitForWindowExposed(m_pList.get())); }();
        return *m_pList;
    }

    /// What was told since the last time.
    QString Told()
    {
        return m_messages.Texts()
            .sliced(std::exchange(m_nTold, m_messages.Texts().size()))
            .join(u';');
    }

    /// Runs SQL as another process, which nobody here hears of.
    static void RunElsewhere(QString const& sql)
    {
        auto const path = CDatabaseSession::Get().PathOf(DataFile::member);
        QProcess other;
        other.start(u"sqlite3"_s, {u"-bail"_s, QString::fromStdString(path), sql});
        QVERIFY(other.waitForFinished() && other.exitCode() == 0);
    }

private:
    std::unique_ptr<CWorkoutListDlg> m_pList;
    qsizetype m_nTold = 0;
};

} // namespace

/// The four lists over real files.
class RecordListTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void showsAndPrintsWhatEachKindHas();
    void actsOnTheSelectedRowWhateverOthersDo();
    void keepsThePlaceAndClosesWhenNoneIsLeft();
    void sortsByValuesAndNarrowsToWords();
    void looksThroughManyRowsWhileTheUserTypes();
    void copiesAndSavesWhatIsShown();
    void printsAllRowsInTheOrderShown();
};

void RecordListTest::showsAndPrintsWhatEachKindHas()
{
    CTestDesk desk;
    CEFOleDateTime::SetClock(kNow);
    QVERIFY(desk.m_doc.OnNewDocument());
    desk.m_doc.m_circuit.m_arrStnName = {"Leg Press", "Rows"};
    StoreMember(7, "Featherstonehaugh", "Ann", "B", 0);
    auto const day = std::to_string(CEFOleDateTime(2025, 1, 2, 9, 5, 0).Seconds());
    std::string const zeros = ", 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0";
    for (auto const& row : {"enrollments VALUES (NULL, 7, 1, " + day + ", 3, 1)",
             "workouts VALUES (NULL, 7, 1, 4, " + day + ", " + day
                 + " + 3599, 5, 41, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12)",
             "evaluations VALUES (NULL, 3, 7, " + day
                 + ", 4, 70.55, 150.25, 1, 62, 121, 79, -1.25, 30, 20, 90, 605, 44)",
             std::string("skinfolds VALUES (NULL, 3, 9.5, 1, 2, 3, 4, 5, 6, 7)"),
             "lifts VALUES (NULL, 3, 99.5, 5" + zeros + zeros + ")",
             "body_compositions VALUES (NULL, 7, " + day
                 + ", 4, 70.5, 150.25, 4, 9, 21.5, 31, 6, 41.25, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "
                   "0)"}) {
        RunOnMembers("INSERT INTO " + row);
    }
    auto& doc = desk.m_doc;
    auto const check = [](CListDlg& list, QString const& title, QStringList const& row,
                           QString const& printed) {
        list.m_strTitle = title;
        list.show();
        QVERIFY(QTest::qWaitForWindowExposed(&list));
        QCOMPARE(FaultsOf(list), QStringList());
        QCOMPARE((QStringList{RowOf(list, -1), RowOf(list, 0)}), row);
        auto const page = Print(list).value(0);
        QCOMPARE(page.value(0), u"%1, Riverside Fitness Center, 11/06/26 - Page 1"_s.arg(title));
        QCOMPARE(page.value(2), printed);
    };
    for (auto const& [id, date] :
        {std::pair(8, CEFOleDateTime(2026, 11, 6)), {9, CEFOleDateTime(2026, 11, 5)}}) {
        StoreMember(id, "Doe");
        RunOnMembers("INSERT INTO enrollments VALUES (NULL, " + std::to_string(id) + ", 1, "
            + std::to_string(date.Seconds()) + ", 3, 1)");
    }
    QCOMPARE(doc.m_setMem.FindAllMembers(true), 3);
    CMemberListDlg members(doc, doc.m_setMem, false);
    check(members, u"Member ID 7"_s,
        {u"Name|ID #|Workout #|Status|Expiration"_s,
            u"Featherstonehaugh, Ann B|7|7|Past|01/02/25"_s},
        u"Featherstonehaugh, Ann B 7 7 Past 01/02/25"_s);
    QStringList meanings; // of the pictures
    for (int row = 0; row < 3; ++row) {
        auto const cell = ListOf(members).model()->index(row, 0);
        QVERIFY(!cell.data(Qt::DecorationRole).value<QIcon>().isNull());
        meanings += cell.data(Qt::AccessibleTextRole).toString().section(u", "_s, -1);
    }
    auto const past = u"Past or expired member"_s;
    QCOMPARE(meanings, (QStringList{past, u"Current and unexpired member"_s, past}));
    QCOMPARE(doc.m_setWk.FindWks(7), 1);
    CWorkoutListDlg workouts(doc, doc.m_setWk);
    check(workouts, u"Workouts"_s,
        {u"Name|ID #|Date|In|Out|Min|LP|CP|RW"_s,
            u"Featherstonehaugh, Ann B|7|01/02/25|09:05|10:04|59|5|41|2"_s},
        u"Featherstonehaugh, Ann B 7 01/02/25 09:05 10:04 59 5 41 2 x"_s);
    QCOMPARE(doc.m_setEval.FindEvals(CDAOSmEval::idMember, 7), 1);
    CEvaluationListDlg evaluations(doc, doc.m_setEval);
    check(evaluations, u"Evaluations"_s,
        {u"Name|ID #|Date|Ht|Wt|Activity Level|HR|BP|Trunk Flexion|Sit-Ups|Ab Crunches|Step|Run|"
         "Ergometer|Fat %|Leg Press|Rows"_s,
            u"Featherstonehaugh, Ann B|7|01/02/25|70.55|150.25|Lightly Active|62|121/79|-1.25|30|"
            "20|90|10:05|44|09.50|099.50|005.00"_s},
        u"Featherstone, AB 7 01/02/25 70 150 Light 62 121/79 -1.2 30 20 90 10:05 44 09.50 100 5"_s);
    QCOMPARE(doc.m_setBodyComp.FindBodyComps(7), 1);
    CBodyCompListDlg bodyComps(doc, doc.m_setBodyComp);
    check(bodyComps, u"Body Compositions"_s,
        {u"Name|ID #|Date|Fat %|Method|Activity Level|Ht|Wt|Ws|Hip"_s,
            u"Featherstonehaugh, Ann B|7|01/02/25|21.50||Very Active|70.50|150.25|31.00|41.25"_s},
        u"Featherstonehaugh, Ann B 7 01/02/25 21.50 VeryAct 70.50 150.25 31.00 41.25"_s);

    // Analyze asks for a report of the selected row.
    auto& report = doc.m_setReport;
    for (auto const& [list, type] :
        {std::pair<QDialog*, int>(&evaluations, CDAOReport::rtEvalInterpretation),
            {&bodyComps, CDAOReport::rtBodyCompInterpretation}}) {
        SelectRow(*list, 0);
        Do(*list, u"analyzeButton"_s);
        QVERIFY(report.OpenSet(true) == 1 && report.m_nRptType == type && report.m_nRptParam == 7);
        QVERIFY(std::to_string(report.m_dtRptFrom.Seconds()) == day);
        QVERIFY(report.m_dtRptTo == report.m_dtRptFrom);
        report.DelAll();
    }
}

void RecordListTest::actsOnTheSelectedRowWhateverOthersDo()
{
    CListDesk desk;
    auto& list = desk.Show();
    QAbstractItemModelTester const tester(ListOf(list).model());
    auto const click
        = u"To %1 a workout, you must first click on the workout,\nthen click \"%2.\""_s;
    Do(list, u"editButton"_s);
    QCOMPARE(desk.Told(), click.arg(u"edit"_s, u"Edit"_s));
    QTest::keyClick(&ListOf(list), Qt::Key_Delete);
    QCOMPARE(desk.Told(), click.arg(u"delete"_s, u"Delete"_s));
    // Others delete the row before the selected one, and add one in its place: the selected one is
    // deleted all the same, and the list shows what there is then.
    SelectRow(list, 3);
    QCOMPARE(SelectedID(list), u"6"_s);
    CListDesk::RunElsewhere(u"DELETE FROM workouts WHERE member_id IN (9, 7);"
                            "INSERT INTO workouts SELECT NULL, 7, 0, 4, check_in + 60, check_out,"
                            " 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 FROM workouts WHERE member_id ="
                            " 6"_s);
    desk.m_messages.AnswerNext({true});
    QTest::keyClick(&ListOf(list), Qt::Key_Delete);
    QCOMPARE(desk.Told(),
        u"Are you sure you want to delete the workout\nfor Member ID: 6 dated 03/04/2026?"_s);
    QCOMPARE(Column(list, 1), u"8 7 5 4 3 2 1"_s);
    QCOMPARE(SelectedID(list), QString());
    QCOMPARE(list.focusWidget(), &ListOf(list));

    // One that is gone by now is neither edited nor deleted, nor is the row in its place.
    SelectRow(list, 2);
    CListDesk::RunElsewhere(u"DELETE FROM workouts WHERE member_id = 5"_s);
    Do(list, u"editButton"_s);
    QCOMPARE(desk.Told(), QString());
    QCOMPARE(Column(list, 1), u"8 7 4 3 2 1"_s);

    // While a form is open over the list, and the list is painted, the form keeps its row.
    SelectRow(list, 4);
    desk.m_messages.AnswerNext({true}); // that the workout is okay all the same
    QVERIFY(CTestDesk::Use({[&](QDialog& form) {
        QCOMPARE(form.windowTitle(), u"Edit Workout for Member ID 2"_s);
        CListDesk::RunElsewhere(u"DELETE FROM workouts WHERE member_id = 8"_s);
        list.resize(list.size() + QSize(20, -60));
        ListOf(list).scrollToBottom();
        list.grab();
        Child<QLineEdit>(form, "station1Edit").setText(u"77"_s);
        ClickOk(form);
    }},
        [&] {
            auto const place = ListOf(list).visualRect(ListOf(list).currentIndex()).center();
            QTest::mouseDClick(ListOf(list).viewport(), Qt::LeftButton, {}, place);
            return true;
        }));
    QCOMPARE(Column(list, 1), u"7 4 3 2 1"_s);
    QCOMPARE(RowOf(list, 3).section(u'|', 7, 7), u"77"_s);
    QCOMPARE(SelectedID(list), u"2"_s);
}

void RecordListTest::keepsThePlaceAndClosesWhenNoneIsLeft()
{
    CListDesk desk;
    for (int i = 0; i < 300; ++i) {
        CListDesk::AddWorkout(i % 9 + 1, i % 28 + 1);
    }
    auto& list = desk.Show();
    auto& view = ListOf(list);
    view.scrollTo(view.model()->index(150, 0), QAbstractItemView::PositionAtTop);
    SelectRow(list, 155);
    auto const top = RowOf(list, view.indexAt({}).row());
    auto const selected = RowOf(list, 155);
    CListDesk::RunElsewhere(
        u"DELETE FROM workouts WHERE id IN (SELECT id FROM workouts ORDER BY check_in, id LIMIT 40)"_s);
    Trigger(list, "refreshAction");
    QCOMPARE(view.model()->rowCount(), 269);
    QCOMPARE(RowOf(list, view.indexAt({}).row()), top);
    QCOMPARE(RowOf(list, view.selectionModel()->selectedRows().value(0).row()), selected);

    // A failure is no empty list.
    RunOnMembers("ALTER TABLE workouts RENAME TO away");
    Trigger(list, "refreshAction");
    QCOMPARE(desk.Told(), u"Error: the workouts could not be read."_s);
    QVERIFY(list.isVisible());
    RunOnMembers("ALTER TABLE away RENAME TO workouts");
    Trigger(list, "refreshAction");
    QCOMPARE(view.model()->rowCount(), 269);
    CListDesk::RunElsewhere(u"DELETE FROM workouts"_s);
    Trigger(list, "refreshAction");
    QCOMPARE(desk.Told(), u"No further workout records are available."_s);
    QVERIFY(!list.isVisible());
}

void RecordListTest::sortsByValuesAndNarrowsToWords()
{
    CListDesk desk;
    auto* list = &desk.Show();
    auto const ids = [&] { return Column(*list, 1).remove(u' '); };
    auto const press
        = [&](Qt::Key key) { QTest::keyClick(&ListOf(*list), key, Qt::ControlModifier); };
    auto const narrow
        = [&](QString const& text) { Type(Child<QLineEdit>(*list, "findEdit"), text); };
    auto const total = [&] { return Child<QLabel>(*list, "totalLabel").text(); };
    QCOMPARE(ids(), u"987654321"_s);
    SelectRow(*list, 1);
    // By values, not by texts: minutes of two and three digits, times of the day.
    press(Qt::Key_6);
    QCOMPARE(ids(), u"123456789"_s);
    QCOMPARE(SelectedID(*list), u"8"_s);
    press(Qt::Key_1);
    QCOMPARE(ids(), u"987654321"_s); // Jmith ... Rmith
    press(Qt::Key_4);
    press(Qt::Key_4);
    QCOMPARE(ids(), u"123456789"_s);

    narrow(u"ÉVA  03/"_s);
    QCOMPARE(ids(), u"2468"_s);
    QCOMPARE(SelectedID(*list), u"8"_s);
    narrow(u"ÉVA 03/ 44"_s);
    QCOMPARE(ids(), u"4"_s);
    QCOMPARE(total(), u"Total Workouts Listed: 9 (1 shown), sorted down by In"_s);
    narrow(u"mith, =bob"_s);
    press(Qt::Key_0);
    QCOMPARE(ids(), u"97531"_s);
    // What a search shows is not what it was opened with: sorting is remembered, words are not.
    press(Qt::Key_2);
    ListOf(*list).header()->resizeSection(0, 321);
    CListDesk::AddWorkout(5, 15);
    Trigger(*list, "refreshAction");
    QCOMPARE(ids(), u"135579"_s);
    list->accept();
    list = &desk.Show();
    QCOMPARE(ids(), u"1234556789"_s);
    QVERIFY(std::abs(ListOf(*list).header()->sectionSize(0) - 321) < 3);
    Trigger(*list, "resetAction");
    QCOMPARE(ids(), u"9876543215"_s);
    QVERIFY(ListOf(*list).header()->sectionSize(0) < 300);
    // Rows that are gone come last, and new ones when the list is filled again.
    CListDesk::RunElsewhere(u"DELETE FROM workouts WHERE member_id = 5 AND check_in % 2 = 0;"
                            "UPDATE workouts SET member_id = 4 WHERE member_id = 9"_s);
    press(Qt::Key_2);
    QVERIFY(Column(*list, 0).endsWith(u" (deleted) (deleted)"_s));
    QCOMPARE(ids(), u"12344678"_s);
    press(Qt::Key_0);
    QTest::keyClick(&ListOf(*list), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(list->focusWidget()->objectName(), u"findEdit"_s);
}

void RecordListTest::looksThroughManyRowsWhileTheUserTypes()
{
    CListDesk desk;
    AddWorkouts(60000, "i % 9 + 1");
    auto& list = desk.Show();
    auto& model = *ListOf(list).model();
    QAbstractItemModelTester const tester(&model);
    auto const& total = Child<QLabel>(list, "totalLabel");
    auto& edit = Child<QLineEdit>(list, "findEdit");
    QTest::keyClick(&ListOf(list), Qt::Key_2, Qt::ControlModifier);
    for (auto const& text : {u"777"_s, u"777 Kmith"_s, u"Kmith"_s}) {
        edit.setText(text);
        // Only what is left is looked through when the text has become longer.
        QCOMPARE(total.text().contains(u"searching"_s), !text.startsWith(u"777 "));
        // Rows come in before the one that is selected meanwhile.
        SelectRow(list, model.rowCount() - 1);
        auto const selected = RowOf(list, model.rowCount() - 1);
        QTRY_VERIFY(!total.text().contains(u"searching"_s));
        int const row = ListOf(list).selectionModel()->selectedRows().value(0).row();
        QCOMPARE(RowOf(list, row), selected);
        QVERIFY(ListOf(list).viewport()->rect().intersects(
            ListOf(list).visualRect(ListOf(list).currentIndex())));
        // Found in pieces or afresh, it is the same.
        auto const found = Column(list, 1) + Column(list, 2);
        QVERIFY(model.rowCount() > 5);
        Trigger(list, "refreshAction");
        QCOMPARE(Column(list, 1) + Column(list, 2), found);
        for (int at = 0; at < model.rowCount(); at += 97) {
            for (auto const& word : text.split(u' ')) {
                QVERIFY(RowOf(list, at).contains(word));
            }
        }
    }
    // The view may lay it out while it is filled, before any of the last rows is found again.
    edit.setText(u"09/11/23"_s);
    QTRY_VERIFY(!total.text().contains(u"searching"_s));
    QTimer layOut;
    connect(&layOut, &QTimer::timeout, &list, [&] { ListOf(list).doItemsLayout(); });
    layOut.start(1);
    Trigger(list, "refreshAction");
    QCOMPARE(model.rowCount(), 801);
    edit.clear();
    QCOMPARE(model.rowCount(), 60009);
    edit.setText(u"Kmith"_s); // the program may end in the middle of it
}

void RecordListTest::copiesAndSavesWhatIsShown()
{
    CListDesk desk;
    CFileRecorder files;
    auto& list = desk.Show();
    Type(Child<QLineEdit>(list, "findEdit"), u"bob"_s);
    SelectRow(list, 1);
    Trigger(list, "copyAction");
    QCOMPARE(QGuiApplication::clipboard()->text(),
        u"Lmith, =Bob\t7\t03/03/26\t11:30\t12:47\t77\t0\t0\t28\n"_s);
    Trigger(list, "copyAllAction");
    auto const lines = QGuiApplication::clipboard()->text().split(u'\n');
    QCOMPARE(lines.size(), 7); // headings, five rows, the end
    QCOMPARE(lines[0], u"Name\tID #\tDate\tIn\tOut\tMin\tLP\tCP\tRW"_s);

    // A name that begins like a formula is a text for a spreadsheet too.
    RunOnMembers("UPDATE members SET last_name = '=1+\"2\"' WHERE member_id = 1");
    RunOnMembers("DELETE FROM workouts WHERE member_id IN (3, 5, 7, 9)");
    Trigger(list, "refreshAction");
    auto const folder = QString::fromStdString(desk.m_centre.Folder().string());
    auto const path = folder + u"/out.csv"_s;
    auto const save = [&](QString const& to) {
        files.AnswerNext({to});
        Trigger(list, "saveAction");
        return desk.Told();
    };
    QCOMPARE(save(folder + u"/out"_s), QString());
    auto const saved = ReadFile(path.toStdString());
    QCOMPARE(QByteArray::fromStdString(saved),
        QString(
            u"\uFEFF\"Name\",\"ID #\",\"Date\",\"In\",\"Out\",\"Min\",\"LP\",\"CP\",\"RW\"\r\n"
            "\"'=1+\"\"2\"\", =Bob\",\"1\",\"03/09/26\",\"17:30\",\"17:41\",\"11\",\"0\",\"0\",\"4\"\r\n"_s)
            .toUtf8());
    QCOMPARE(
        QFile(path).permissions() & (QFile::ReadOther | QFile::ReadGroup), QFile::Permissions());
    // What is there stays unless the user says otherwise, and whenever a write fails.
    Type(Child<QLineEdit>(list, "findEdit"), u""_s);
    auto const replace = u"The file \"out.csv\" already exists.\nDo you want to replace it?"_s;
    QCOMPARE(save(path), replace);
    QVERIFY(ReadFile(path.toStdString()) == saved);
    desk.m_messages.AnswerNext({true});
    QCOMPARE(save(path), replace);
    QVERIFY(ReadFile(path.toStdString()) != saved);
    QCOMPARE(save(u"/nonexistent/out.csv"_s), u"Error: the file \"out.csv\" was not saved."_s);
    QVERIFY(!desk.m_messages.Messages().constLast().m_strDetail.isEmpty());
    QCOMPARE(save({}), QString());
    RunOnMembers("ALTER TABLE workouts RENAME TO away");
    desk.m_messages.AnswerNext({true});
    auto const kept = ReadFile(path.toStdString());
    QCOMPARE(save(path), replace + u";Error: the file \"out.csv\" was not saved."_s);
    QVERIFY(ReadFile(path.toStdString()) == kept);
}

void RecordListTest::printsAllRowsInTheOrderShown()
{
    CListDesk desk;
    auto& list = desk.Show();
    Type(Child<QLineEdit>(list, "findEdit"), u"bob"_s);
    QTest::keyClick(&ListOf(list), Qt::Key_6, Qt::ControlModifier);
    CListDesk::RunElsewhere(u"DELETE FROM workouts WHERE member_id = 4"_s);
    // What is done to all rows asks about those out of sight.
    for (auto const& button : {u"deleteAllButton"_s, u"backupButton"_s, u"archiveButton"_s}) {
        QVERIFY(
            desk.Press(list, button).startsWith(u"Only 5 of the 9 rows of this list are shown,"_s));
    }
    auto const pages = Print(list, {1, 4, 8, 16, 64, 128});
    QCOMPARE(
        pages.value(0).mid(1), u"ID # Min;1 11;2 22;3 33;5 55;6 66;7 77;8 88;9 99"_s.split(u';'));
    // The boxes begin with what the list shows, and one of them must be checked.
    CTestDesk::Use({[&](QDialog& options) {
        QCOMPARE(FaultsOf(options).join(u"|"_s), QString());
        auto const boxes = options.findChildren<QCheckBox*>();
        for (auto* const box : boxes) {
            QVERIFY(box->isChecked());
            box->setChecked(false);
        }
        QCOMPARE(desk.Ok(options), u"Error: select at least one item @item1Check"_s);
        ClickCancel(options);
    }},
        [&] { return Do(list, u"printButton"_s), true; });
    QCOMPARE(list.m_nPrintItems, 0x22U);

    CFileRecorder files;
    auto const pdf = QString::fromStdString((desk.m_centre.Folder() / "list.pdf").string());
    files.AnswerNext({pdf});
    CTestDesk::Use({ClickOk}, [&] { return Trigger(list, "pdfAction"), true; });
    QCOMPARE(CPrintedPages::LinesOf(pdf).value(0).size(), 10);
    // Without a printer nothing happens; one that fails in the middle is told.
    auto const before = SetPrinterMaker([] { return std::unique_ptr<QPrinter>(); });
    QCOMPARE(desk.Press(list, u"printButton"_s, {ClickOk}), QString());
    SetPrinterMaker(before);
    AddWorkouts(9000, "1");
    Trigger(list, "refreshAction");
    CPrintedPages const full(u"/dev/full"_s);
    QVERIFY(desk.Press(list, u"printButton"_s, {ClickOk})
                .startsWith(u"Error: printing stopped at page "_s));
}

static CTestEntryOf<RecordListTest> const g_entry;
#include "RecordListTest.moc"
