#include "platform/qt/DropDown.h"
#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"
#include "tests/platform/db/Faults.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "workouts/WorkoutDlg.h"

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace
{

auto const kAddCaption = u"Add Workout for Member ID 7"_s;
auto const kEditCaption = u"Edit Workout for Member ID 7"_s;
/// Of member 7's workout, as the member tree shows it.
QString CheckInText()
{
    return ToQt(CEFOleDateTime::FromSeconds(4000000000).DateTimeStrLongYear());
}

/// A desk whose clock stands half an hour after the check-out of member 7's workout.
class CWorkoutDesk : public CMemberDesk
{
public:
    CWorkoutDesk() { CEFOleDateTime::SetClock(CEFOleDateTime::FromSeconds(4000004800)); }

    static QStringList Workouts() { return Rows({u"workouts"_s}); }
    bool Add(CDialogUser::Step const& step)
    {
        return Use({[](QDialog& prompt) {
                        Type(::Edit(prompt, "memberIDEdit"), u"7"_s);
                        ClickOk(prompt);
                    },
                       step},
            [this] { return m_doc.AddEditWorkout(nullptr); });
    }
    bool EditIt(CDialogUser::Step const& step)
    {
        return Use({step}, [this] { return m_doc.EditWorkoutAt(7, CheckInText()); });
    }
};

/// The station rows that are shown: "Chest Press=0".
QStringList RowsOf(QDialog const& dialog)
{
    QStringList rows;
    for (int row = 1; row <= 12; ++row) {
        auto const name = u"station%1"_s.arg(row);
        auto const* const label = dialog.findChild<QLabel*>(name + u"Label"_s);
        if (label != nullptr && label->isVisible()) {
            rows += label->text() + u'=' + Edit(dialog, (name + u"Edit"_s).toLatin1()).text();
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
    void addsAWorkoutAsItWasTyped();
    void refusesInTheOrderOfTheForm();
    void asksAboutADesignationAgainstTheMinimums();
    void editsWithoutTouchingWhatIsNotShown();
    void anotherDesksChangesAreNotOverwritten();
    void aFailedWriteKeepsTheFormAndTheRow();
    void deletesAfterAsking();
    void findsByMemberClassAndDates();
};

void WorkoutTest::showsTheStationsThatTheCentreHas()
{
    CWorkoutDesk desk;
    AddClass(7, 5, "'Students', 'PE 101', ''");
    for (int count : {0, 1, 2, 13, 15}) {
        desk.m_doc.m_lstStnNames.assign(std::size_t(count), "Push & Pull");
        std::unique_ptr<CLargeFont> const large(count == 15 ? new CLargeFont : nullptr);
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

void WorkoutTest::addsAWorkoutAsItWasTyped()
{
    CWorkoutDesk desk;
    auto const now = CEFOleDateTime::GetCurrentTime();
    QVERIFY(!desk.Use({ClickCancel}, [&] { return desk.m_doc.AddEditWorkout(nullptr); }));
    QVERIFY(!desk.Add(ClickCancel));
    QCOMPARE(desk.Workouts().size(), 1);
    QVERIFY(desk.Add([&](QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), kAddCaption);
        auto const& length = Child<QLabel>(dialog, "lengthLabel");
        QCOMPARE(Edit(dialog, "checkInDateEdit").text(), ToQt(now.DateStrLongYear()));
        QCOMPARE(length.text(), u"0 min"_s);
        Type(Edit(dialog, "checkInDateEdit"), u"3/2/24"_s);
        Type(Edit(dialog, "checkInTimeEdit"), u"6:05p"_s);
        Type(Edit(dialog, "checkOutDateEdit"), u"2024-03-02"_s);
        Type(Edit(dialog, "checkOutTimeEdit"), u"19:03:59"_s);
        QCOMPARE(length.text(), u"58 min"_s);
        Type(Edit(dialog, "checkOutTimeEdit"), u"5:00p"_s);
        QCOMPARE(length.text(), QString());
        Type(Edit(dialog, "checkOutTimeEdit"), u"19:03:59"_s);
        Type(*Child<QWidget>(dialog, "circuitsSpin").findChild<QLineEdit*>(), u"5"_s);
        Type(Edit(dialog, "station1Edit"), u"999"_s);
        Type(Edit(dialog, "station2Edit"), u"40"_s);
        Child<QRadioButton>(dialog, "okYesRadio").click();
        ClickOk(dialog);
    }));
    QCOMPARE(desk.m_messages.Texts(), QStringList());
    auto const from = CEFOleDateTime(2024, 3, 2, 18, 5, 0).Seconds();
    QCOMPARE(desk.Workouts()[1],
        u"workouts: 7|1|4|%1|%2|5|999|40|0|0|0|0|0|0|0|0|0|0"_s.arg(from).arg(from + 3539));
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList{u"Refresh 7 -9 0"_s});
    QCOMPARE(desk.m_views.m_lstResults, QStringList{u"The workout of member ID 7 was saved."_s});
    QVERIFY(desk.m_doc.m_setWk.IsEOF() != 0);
}

void WorkoutTest::refusesInTheOrderOfTheForm()
{
    CWorkoutDesk desk;
    RunOnMembers("DELETE FROM classes");
    auto const range = [](int least, int greatest) {
        return u"Enter an integer between %1 and %2. @"_s.arg(least).arg(greatest);
    };
    QVERIFY(!desk.EditIt([&](QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), kEditCaption);
        auto const tomorrow
            = CEFOleDateTime::FromSeconds(4000004800 + CEFOleDateTime::kDay).DateStrLongYear();
        auto& circuits = *Child<QWidget>(dialog, "circuitsSpin").findChild<QLineEdit*>();
        // From the last fault to the first: each one is told before all those after it.
        QCOMPARE(desk.Ok(dialog), u"Error: select a category, course, section @classList"_s);
        Type(Edit(dialog, "checkOutDateEdit"), u"1/1/2020"_s);
        QCOMPARE(desk.Ok(dialog), u"Error: check out cannot precede check in @checkOutDateEdit"_s);
        Type(Edit(dialog, "checkOutDateEdit"), ToQt(tomorrow));
        QCOMPARE(desk.Ok(dialog), u" @checkOutDateEdit"_s);
        Type(Edit(dialog, "checkInDateEdit"), ToQt(tomorrow));
        QCOMPARE(desk.Ok(dialog), u" @checkInDateEdit"_s);
        Type(Edit(dialog, "checkInTimeEdit"), u"25:00"_s);
        QCOMPARE(desk.Ok(dialog), u"Enter a time, such as 18:05:09. @checkInTimeEdit"_s);
        Type(Edit(dialog, "station2Edit"), u"1000"_s);
        QCOMPARE(desk.Ok(dialog), range(0, 999) + u"station2Spin"_s);
        Type(circuits, u"6"_s);
        QCOMPARE(desk.Ok(dialog), range(0, 5) + u"circuitsSpin"_s);
        ClickCancel(dialog);
    }));
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList());
}

void WorkoutTest::asksAboutADesignationAgainstTheMinimums()
{
    CWorkoutDesk desk;
    auto const notMet
        = u"This workout does not meet the minimum requirements of\n1 circuit(s) and/or 20 total "
          "minute(s). Do you still want\nto enter it with a designation of \"Workout Okay\"?"_s;
    auto const met
        = u"This workout meets the minimum requirements of\n1 circuit(s) and/or 20 total "
          "minute(s). Do you still want\nto enter it with a designation of \"Workout Not Okay\"?"_s;
    // What is stored is "Okay" with two circuits in 50 minutes.
    for (auto const& [circuits, okay, question, answer, stored] :
        {std::tuple(1, true, QString(), true, 1), {0, true, notMet, true, 1},
            {0, true, notMet, false, 0}, {0, false, QString(), true, 0}, {1, false, met, true, 0},
            {1, false, met, false, 1}}) {
        desk.m_messages.AnswerNext(question.isEmpty() ? QList<bool>() : QList<bool>{answer});
        auto const before = desk.m_messages.Texts().size();
        QVERIFY(desk.EditIt([&, circuits = circuits, okay = okay](QDialog& dialog) {
            Type(*Child<QWidget>(dialog, "circuitsSpin").findChild<QLineEdit*>(),
                QString::number(circuits));
            Child<QRadioButton>(dialog, okay ? "okYesRadio" : "okNoRadio").click();
            ClickOk(dialog);
            QCOMPARE(dialog.isVisible(), !question.isEmpty() && !answer);
            if (dialog.isVisible()) { // the designation agrees now
                ClickOk(dialog);
            }
        }));
        QCOMPARE(desk.m_messages.Texts().sliced(before).join(u'|'), question);
        QCOMPARE(desk.Workouts()[0].section(u'|', 1, 1), QString::number(stored));
    }
}

void WorkoutTest::editsWithoutTouchingWhatIsNotShown()
{
    CWorkoutDesk desk;
    // What no field shows, or could: stations beyond the centre's, a deleted class, a negative
    // flag.
    RunOnMembers("UPDATE workouts SET station3 = -5, station12 = 30000, class_index = 99");
    auto const before = desk.Workouts();
    QVERIFY(desk.EditIt([](QDialog& dialog) {
        QCOMPARE(RowsOf(dialog), (QStringList{u"Chest Press=1"_s, u"Rowing=2"_s}));
        QCOMPARE(Child<QLabel>(dialog, "circuitsLabel").text(), u"Leg Press"_s);
        QCOMPARE(Child<QLabel>(dialog, "lengthLabel").text(), u"50 min"_s);
        ClickOk(dialog);
    }));
    QCOMPARE(desk.Workouts(), before);
    // An entry of the tree that is stale, or no date at all, opens nothing.
    for (auto const& text : {u"01/02/2003 04:05:06"_s, u"yesterday"_s, QString()}) {
        QVERIFY(!desk.Use({}, [&] { return desk.m_doc.EditWorkoutAt(7, text); }));
        QVERIFY(!desk.Use({}, [&] { return desk.m_doc.DeleteWorkoutAt(7, text); }));
    }
    QCOMPARE(desk.m_views.m_lstResults.constLast(),
        u"Member ID 7 does not have this workout any more."_s);
    QCOMPARE(desk.m_messages.Texts(), QStringList());
    RunOnMembers("ALTER TABLE workouts RENAME TO away");
    QVERIFY(!desk.Use({}, [&] { return desk.m_doc.EditWorkoutAt(7, CheckInText()); }));
    QCOMPARE(desk.m_messages.Texts(), QStringList{u"Error: the workout could not be read."_s});
}

void WorkoutTest::anotherDesksChangesAreNotOverwritten()
{
    CWorkoutDesk desk;
    auto expected = desk.Workouts();
    expected[0].replace(u"|2|1|2|"_s, u"|2|77|2|"_s);
    for (auto const& [sql, question] :
        {std::pair("UPDATE workouts SET check_out = check_out + 60",
             u"This workout has been changed at another place\nsince you opened the form.\n"
             "Do you want to replace those changes with yours?"_s),
            {"DELETE FROM workouts",
                u"This workout has been deleted at another place\nsince you opened the form.\n"
                "Do you want to add the workout again?"_s}}) {
        desk.m_messages.AnswerNext({false, true});
        QVERIFY(desk.EditIt([&](QDialog& dialog) {
            Type(Edit(dialog, "station1Edit"), u"77"_s);
            RunOnMembers(sql);
            auto const theirs = desk.Workouts();
            QCOMPARE(desk.Ok(dialog), question + u" @station1Spin"_s);
            QCOMPARE(desk.Workouts(), theirs);
            QCOMPARE(desk.Ok(dialog), QString());
        }));
        QCOMPARE(desk.Workouts(), expected);
    }
}

void WorkoutTest::aFailedWriteKeepsTheFormAndTheRow()
{
    CWorkoutDesk desk;
    auto const failing = [&desk](QString const& station, int& failures) {
        return [&desk, station, &failures](QDialog& dialog) {
            Type(Edit(dialog, "station1Edit"), station);
            auto const before = desk.Workouts();
            for (int nth = 1; dialog.isVisible() && nth < 50; ++nth) {
                Faults::Begin(nth, ENOSPC, true);
                auto const refusal = desk.Ok(dialog);
                bool const hit = Faults::End();
                if (!refusal.isEmpty()) {
                    QVERIFY(hit);
                    ++failures;
                    QCOMPARE(refusal,
                        u"Error: the workout was not saved.\n"
                        "Your entries are still in the form. @station1Spin"_s);
                    QCOMPARE(Edit(dialog, "station1Edit").text(), station);
                    QCOMPARE(desk.Workouts(), before);
                }
            }
        };
    };
    int failures = 0;
    QVERIFY(desk.EditIt(failing(u"77"_s, failures)));
    QVERIFY(failures > 0);
    failures = 0;
    QVERIFY(desk.Add(failing(u"78"_s, failures)));
    QVERIFY(failures > 0);
    QCOMPARE(desk.Workouts().size(), 2);
    QCOMPARE(desk.Workouts()[1].section(u'|', 6, 6), u"78"_s);

    desk.m_messages.AnswerNext({true});
    Faults::Begin(1, ENOSPC, true);
    QVERIFY(!desk.m_doc.DeleteWorkoutAt(7, CheckInText()));
    QVERIFY(Faults::End());
    QCOMPARE(desk.m_messages.Texts().constLast(), u"Error: the workout was not deleted."_s);
    QCOMPARE(desk.Workouts().size(), 2);
}

void WorkoutTest::deletesAfterAsking()
{
    CWorkoutDesk desk;
    RunOnMembers("INSERT INTO workouts SELECT NULL, member_id, 0, 4, check_in + 1, check_out,"
                 " 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 FROM workouts");
    auto const before = desk.Workouts();
    QVERIFY(!desk.m_doc.DeleteWorkoutAt(7, CheckInText()));
    QCOMPARE(desk.Workouts(), before);
    desk.m_messages.AnswerNext({true});
    QVERIFY(desk.m_doc.DeleteWorkoutAt(7, CheckInText()));
    QCOMPARE(desk.Workouts(), QStringList{before[1]});
    auto const question = desk.m_messages.Messages().constLast();
    QCOMPARE(question.m_strText,
        u"Are you sure you want to delete the workout\nfor Member ID: 7 dated %1?"_s.arg(
            CheckInText().section(u' ', 0, 0)));
    QCOMPARE(question.m_question, CQuestion::destroying);
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList{u"Refresh 7 -9 0"_s});
}

/// Until there is a list, the message that there is none stands for what was found.
void WorkoutTest::findsByMemberClassAndDates()
{
    CWorkoutDesk desk;
    AddMember(8);
    AddClass(7, 5, "'Students', '', ''");
    auto const found = u"This command is not available yet."_s;
    auto const told = [&desk](QList<CDialogUser::Step> const& steps, auto operation) {
        auto const before = desk.m_messages.Texts().size();
        desk.Use(steps, [&] { return (desk.m_doc.*operation)(), true; });
        return desk.m_messages.Texts().sliced(before).join(u'|');
    };
    auto const member = [](QDialog& prompt) {
        Type(Edit(prompt, "memberIDEdit"), u"7"_s);
        ClickOk(prompt);
    };
    auto const none = u"No workouts are recorded for Member ID 7 under "_s;
    for (auto const& [entry, text] :
        {std::pair(0, none + u"Unknown"_s), {1, found}, {2, found}, {3, none + u"Students"_s}}) {
        QCOMPARE(told({member,
                          [entry = entry](QDialog& dialog) {
                              auto& list = Child<CDropDown>(dialog, "classList");
                              QCOMPARE(list.currentIndex(), 1);
                              Choose(list, entry);
                              ClickOk(dialog);
                          }},
                     &CCorvanaDoc::ShowMemberWorkouts),
            text);
    }

    auto const find = [&](char const* okay, QString const& to, QString const& memberID) {
        return told({[&](QDialog& dialog) {
            QCOMPARE(FaultsOf(dialog), QStringList());
            QVERIFY(Edit(dialog, "memberIDEdit").isReadOnly());
            Child<QRadioButton>(dialog, okay).click();
            Type(Edit(dialog, "fromEdit"), ToQt(CEFOleDateTime(2020, 1, 1).DateStrLongYear()));
            Type(Edit(dialog, "toEdit"), to);
            if (!memberID.isEmpty()) {
                Child<QRadioButton>(dialog, "oneMemberRadio").click();
                QCOMPARE(dialog.focusWidget(), &Edit(dialog, "memberIDEdit"));
                Type(Edit(dialog, "memberIDEdit"), memberID);
            }
            ClickOk(dialog);
            if (dialog.isVisible()) {
                QCOMPARE(dialog.focusWidget()->objectName(),
                    memberID.isEmpty() ? u"toEdit"_s : u"memberIDEdit"_s);
                ClickCancel(dialog);
            }
        }},
            &CCorvanaDoc::FindWorkouts);
    };
    auto const day = CheckInText().section(u' ', 0, 0);
    auto const nothing = u"No workouts are recorded for the specified search criteria"_s;
    QCOMPARE(find("okAllRadio", day, {}), found);
    QCOMPARE(find("okYesRadio", day, u"7"_s), found);
    QCOMPARE(find("okNoRadio", day, {}), nothing);
    QCOMPARE(find("okAllRadio", u"1/2/2020"_s, {}), nothing);
    QCOMPARE(find("okAllRadio", day, u"8"_s), nothing);
    QCOMPARE(find("okAllRadio", day, u"0"_s), u"Enter an integer between 1 and 999999999."_s);
    QCOMPARE(find("okAllRadio", day, u"9"_s),
        u"Sorry, there is no member in the database\nthat matches ID 9."_s);
    QCOMPARE(find("okAllRadio", u"12/31/2019"_s, {}),
        u"Error: second date must be later than or equal to first date"_s);
    RunOnMembers("ALTER TABLE workouts RENAME TO away");
    QCOMPARE(find("okAllRadio", day, {}), u"Error: the workouts could not be read."_s);
}

static CTestEntryOf<WorkoutTest> const g_entry;
#include "WorkoutTest.moc"
