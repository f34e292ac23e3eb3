#include "platform/qt/DropDown.h"
#include "tests/QtTests.h"
#include "tests/members/RecordDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "workouts/WorkoutDlg.h"

#include <QGroupBox>
#include <QLabel>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

auto const kCheckIn = CEFOleDateTime::FromSeconds(4000000000);

/// A desk whose clock stands half an hour after the check-out of member 7's workout.
class CWorkoutDesk : public CRecordDesk<&CCorvanaDoc::AddEditWorkout, &CCorvanaDoc::EditWorkoutAt,
                         &CCorvanaDoc::DeleteWorkoutAt, &CCorvanaDoc::ShowMemberWorkouts>
{
public:
    CWorkoutDesk()
        : CRecordDesk(
            u"workout"_s, {u"workouts"_s}, ToQt(kCheckIn.DateTimeStrLongYear()), kWorkoutsNode)
    {
        CEFOleDateTime::SetClock(CEFOleDateTime::FromSeconds(4000004800));
    }
};

/// The station rows that are shown: "Chest Press=0".
QStringList RowsOf(QDialog const& dialog)
{
    QStringList rows;
    for (int row = 1; row <= 12; ++row) {
        if (auto const* const label = dialog.findChild<QLabel*>(u"station%1Label"_s.arg(row));
            label != nullptr && label->isVisible()) {
            rows += label->text() + u'=' + Texts(dialog, u"station%1Edit"_s.arg(row));
        }
    }
    return rows;
}

} // namespace

/// Workouts, used through their real form over a real file.
class WorkoutTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void showsTheStationsThatTheCentreHas();
    void addsAWorkoutAsItWasTypedAndRefusesWhatIsNone();
    void asksAboutADesignationAgainstTheMinimums();
    void keepsWhatIsNotShownAndWhatOthersChanged();
    void losesNothing() { CWorkoutDesk().LosesNothing(u"station1Spin=77"_s); }
    void findsByMemberAndDates();
};

void WorkoutTest::showsTheStationsThatTheCentreHas()
{
    CWorkoutDesk desk;
    AddClass(7, 5, "'Students', 'PE 101', ''");
    CLargeFont const large;
    for (int const count : {0, 1, 2, 15}) {
        desk.m_doc.m_lstStnNames.assign(std::size_t(count), "Push & Pull");
        CWorkoutDlg dialog(desk.m_doc);
        dialog.m_lMemberID = 7;
        dialog.m_nClassIndex = count == 1 ? 99 : 5;
        dialog.m_nStnVal.fill(3);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(Child<QGroupBox>(dialog, "circuitsGroup").isVisible(), count > 0);
        QCOMPARE(Child<QGroupBox>(dialog, "stationsGroup").isVisible(), count > 1);
        QCOMPARE(RowsOf(dialog), QStringList(std::clamp(count - 1, 0, 12), u"Push && Pull=3"_s));
        auto const& list = Child<CDropDown>(dialog, "classList");
        QCOMPARE(list.currentText(), count == 1 ? u"Unknown"_s : u"Students PE 101"_s);
        QCOMPARE(list.count(), count == 1 ? 3 : 2);
        QCOMPARE(FaultsOf(dialog), QStringList());
    }
}

void WorkoutTest::addsAWorkoutAsItWasTypedAndRefusesWhatIsNone()
{
    CWorkoutDesk desk;
    auto const tomorrow
        = ToQt(CEFOleDateTime::FromSeconds(4000004800 + CEFOleDateTime::kDay).DateStrLongYear());
    QVERIFY(desk.Add([&](QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), u"Add Workout for Member ID 7"_s);
        auto const today = ToQt(CEFOleDateTime::GetCurrentTime().DateStrLongYear());
        QCOMPARE(Texts(dialog, u"checkInDateEdit lengthLabel"_s), today + u"|0 min"_s);
        // From the last fault to the first: each one is told before all those after it.
        desk.Refuses(dialog,
            {{u"checkOutDateEdit=1/1/2020"_s,
                 u"Error: check out cannot precede check in @checkOutDateEdit"_s},
                {u"checkOutDateEdit="_s + tomorrow, u" @checkOutDateEdit"_s},
                {u"checkInDateEdit="_s + tomorrow, u" @checkInDateEdit"_s},
                {u"checkInTimeEdit=25:00"_s, u"Enter a time, such as 18:05:09. @checkInTimeEdit"_s},
                {u"station2Spin=1000"_s, u"Enter an integer between 0 and 999. @station2Spin"_s},
                {u"circuitsSpin=6"_s, u"Enter an integer between 0 and 5. @circuitsSpin"_s}});
        Do(dialog, u"checkInDateEdit=3/2/24 checkInTimeEdit=6:05p checkOutDateEdit=2024-03-02"_s);
        Shows(dialog, u"lengthLabel"_s,
            {{u"checkOutTimeEdit=5:00p"_s, {}}, {u"checkOutTimeEdit=19:03:59"_s, u"58 min"_s}});
        Do(dialog, u"circuitsSpin=5 station1Spin=999 station2Spin=40 okYesRadio OK"_s);
    }));
    auto const from = CEFOleDateTime(2024, 3, 2, 18, 5, 0).Seconds();
    QCOMPARE(desk.All()[1],
        u"workouts: 7|1|4|%1|%2|5|999|40|0|0|0|0|0|0|0|0|0|0"_s.arg(from).arg(from + 3539));
    RunOnMembers("DELETE FROM classes");
    QVERIFY(!desk.EditIt([&](QDialog& dialog) {
        QCOMPARE(desk.Ok(dialog), u"Error: select a category, course, section @classList"_s);
        ClickCancel(dialog);
    }));
}

void WorkoutTest::asksAboutADesignationAgainstTheMinimums()
{
    CWorkoutDesk desk;
    auto const text = u"This workout %1 the minimum requirements of\n"
                      "1 circuit(s) and/or 20 total minute(s). Do you still want\n"
                      "to enter it with a designation of \"Workout %2\"?"_s;
    auto const notMet = text.arg(u"does not meet"_s, u"Okay"_s);
    auto const met = text.arg(u"meets"_s, u"Not Okay"_s);
    // What is stored is "Okay" with two circuits in 50 minutes.
    for (auto const& [steps, question, answer, stored] :
        {std::tuple(u"circuitsSpin=1 okYesRadio OK"_s, QString(), true, u"1"_s),
            {u"circuitsSpin=0 okYesRadio OK"_s, notMet, true, u"1"_s},
            {u"circuitsSpin=0 okYesRadio OK"_s, notMet, false, u"0"_s},
            {u"circuitsSpin=0 okNoRadio OK"_s, QString(), true, u"0"_s},
            {u"circuitsSpin=1 okNoRadio OK"_s, met, true, u"0"_s},
            {u"circuitsSpin=1 okNoRadio OK"_s, met, false, u"1"_s}}) {
        desk.m_messages.AnswerNext(question.isEmpty() ? QList<bool>() : QList<bool>{answer});
        auto const edit = [did = steps, isTaken = answer](QDialog& dialog) {
            Do(dialog, did);
            QCOMPARE(dialog.isVisible(), !isTaken);
            if (!isTaken) { // the designation agrees now
                ClickOk(dialog);
            }
        };
        auto const at = ToQt(kCheckIn.DateTimeStrLongYear());
        QCOMPARE(desk.Told({edit}, [&] { desk.m_doc.EditWorkoutAt(7, at); }), question);
        QCOMPARE(desk.All()[0].section(u'|', 1, 1), stored);
    }
}

void WorkoutTest::keepsWhatIsNotShownAndWhatOthersChanged()
{
    CWorkoutDesk desk;
    // What no field shows, or could: stations beyond the centre's, a deleted class, a negative
    // flag.
    RunOnMembers("UPDATE workouts SET station3 = -5, station12 = 30000, class_index = 99");
    auto expected = desk.All();
    QVERIFY(desk.EditIt([](QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), u"Edit Workout for Member ID 7"_s);
        QCOMPARE(RowsOf(dialog), (QStringList{u"Chest Press=1"_s, u"Rowing=2"_s}));
        QCOMPARE(Texts(dialog, u"circuitsLabel lengthLabel"_s), u"Leg Press|50 min"_s);
        ClickOk(dialog);
    }));
    QCOMPARE(desk.All(), expected);
    expected[0].replace(u"|2|1|2|"_s, u"|2|77|2|"_s);
    for (auto const* const sql :
        {"UPDATE workouts SET check_out = check_out + 60", "DELETE FROM workouts"}) {
        desk.AsksBeforeReplacing(u"station1Spin=77"_s, sql);
        QCOMPARE(desk.All(), expected);
    }
    // One that another desk deletes while this one is asked is as good as deleted.
    desk.m_messages.AnswerNext({true});
    desk.m_messages.m_fnWhileShown = [] { RunOnMembers("DELETE FROM workouts"); };
    QVERIFY(desk.Delete());
    QCOMPARE(desk.m_views.m_lstResults.constLast(), u"The workout of member ID 7 was deleted."_s);
}

void WorkoutTest::findsByMemberAndDates()
{
    CWorkoutDesk desk;
    AddMember(8);
    auto const find = [&desk](QString const& steps, bool isFound) {
        QString focus;
        QString list;
        auto const use = [&](QDialog& dialog) {
            QCOMPARE(FaultsOf(dialog), QStringList());
            Do(dialog, u"oneMemberRadio"_s);
            QCOMPARE(dialog.focusWidget(), &Edit(dialog, "memberIDEdit"));
            Do(dialog, u"allMembersRadio"_s);
            QVERIFY(Edit(dialog, "memberIDEdit").isReadOnly());
            Do(dialog, u"fromEdit=1/1/2020 "_s + steps + u" OK"_s);
            if (dialog.isVisible()) {
                focus = u" @"_s + dialog.focusWidget()->objectName();
                ClickCancel(dialog);
            }
        };
        QList<CDialogUser::Step> dialogs{use, SeeList(list)};
        dialogs.resize(isFound ? 2 : 1);
        return desk.Told(dialogs, &CCorvanaDoc::FindWorkouts) + focus + list;
    };
    auto const day = ToQt(kCheckIn.DateStrLongYear());
    auto const toDay = u"toEdit="_s + day;
    auto const member = toDay + u" oneMemberRadio memberIDEdit="_s;
    auto const nothing = u"No workouts are recorded for the specified search criteria"_s;
    for (auto const& [steps, told] :
        {std::pair(u"okAllRadio "_s + toDay, u"Workouts for 01/01/2020 to %1|Name|1"_s.arg(day)),
            {u"okYesRadio "_s + member + u'7',
                u"Workouts for Member ID 7 - 01/01/2020 to %1|Date|1"_s.arg(day)},
            {u"okAllRadio fromEdit=%1 "_s.arg(day) + toDay, u"Workouts for %1|Name|1"_s.arg(day)},
            {u"okNoRadio "_s + toDay, nothing}, {u"toEdit=1/2/2020"_s, nothing},
            {member + u'8', nothing},
            {member + u'0', u"Enter an integer between 1 and 999999999. @memberIDEdit"_s},
            {member + u'9',
                u"Sorry, there is no member in the database\nthat matches ID 9. @memberIDEdit"_s},
            {u"toEdit=12/31/2019"_s,
                u"Error: second date must be later than or equal to first date @toEdit"_s}}) {
        QCOMPARE(find(steps, told.contains(u'|')), told);
    }
    RunOnMembers("ALTER TABLE workouts RENAME TO away");
    QCOMPARE(find(toDay, false), u"Error: the workouts could not be read."_s);
}

static CTestEntryOf<WorkoutTest> const g_entry;
#include "WorkoutTest.moc"
