#include "members/ClassSlotBox.h"
#include "members/MemberGoalsPg.h"
#include "platform/qt/DropDown.h"
#include "platform/qt/OneLineList.h"
#include "platform/qt/PropertySheet.h"
#include "tests/QtTests.h"
#include "tests/members/RecordDesk.h"

#include <QCheckBox>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace
{

CClassSlotBox& Box(QDialog const& sheet, int number)
{
    return Child<CClassSlotBox>(ShowPage(sheet, 1), qPrintable(u"class%1Box"_s.arg(number)));
}

/// The class that a box shows, after "-" when it cannot be deleted: "Staff|Wellness|Morning".
QString ClassIn(QDialog const& sheet, int number)
{
    QStringList names;
    auto const& box = Box(sheet, number);
    for (auto const* const name : {"categoryList", "courseList", "sectionList"}) {
        auto const& list = Child<CDropDown>(box, name);
        names += list.isVisible() ? list.currentText() : QString();
    }
    auto const& button = Child<QPushButton>(box, "deleteButton");
    [&] { QCOMPARE(button.isEnabled(), button.isVisible()); }();
    return QLatin1StringView(button.isVisible() ? "" : "-") + names.join(u'|');
}

auto const kSameClass = u"Error: duplicate category, course, and section @categoryList"_s;

} // namespace

/// The pages of the member editor.
class MemberPagesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void goalsAndConditionsAreTheirBits();
    void profileChecksInOrder();
    void whatIsTypedAndChosenIsStored();
    void enrollmentChecksInOrder();
    void deletesAClassAtOnceOrNotAtAll();
    void classesAreStoredAsTheyAreShown();
    void areNotCut();
};

void MemberPagesTest::goalsAndConditionsAreTheirBits()
{
    auto const goals = u"Increase Strength|Improve Flexibility|Gain Weight|Firm Up/Lose Inches|"
                       "Lose Weight|Improve Cardiovascular Fitness|Reduce Stress/Feel More Relaxed|"
                       "Feel Better/Have More Energy"_s.split(u'|');
    auto const conditions
        = u"Disabilities/Limitations|Cur. Shoulder Prob.|Shoulder Surgery|Shoulder Injury|"
          "Current Knee Prob.|Knee Surgery|Knee Injury|Current Back Prob.|Back Surgery|Back Injury|"
          "Back Problems|Blood Pressure/Heart Medication|Stroke|Diagnosed Heart Problem|"
          "Diabetes Type II|Diabetes Type I|High Blood Pressure|History of Family Heart Problems|"
          "Little Exercise in Past 6 Months|20 or More lbs Overweight|"
          "Smoke or Chew Tobacco"_s.split(u'|');
    CMemberDesk desk;
    for (unsigned bit = 0; bit < 21; ++bit) {
        auto const stored = std::to_string(0x80000000U | 1U << bit);
        RunOnMembers("UPDATE profiles SET goals = " + stored + ", medical_history = " + stored);
        QStringList checked;
        QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
            for (int const page : {2, 3}) {
                for (auto* const box : ShowPage(sheet, page).findChildren<QCheckBox*>()) {
                    if (box->isChecked()) {
                        checked += box->text().remove(u'&');
                    }
                    box->click();
                }
            }
            ClickOk(sheet);
        }));
        QCOMPARE(checked, goals.mid(bit, 1) + conditions.mid(bit, 1));
        CDAOProf profile;
        QCOMPARE(profile.FindProfile(7), 1);
        // All the others; those without a box stay.
        QCOMPARE(profile.m_Goals, 0x80000000U | (0xFFU ^ 1U << bit));
        QCOMPARE(profile.m_MedHist, 0x80000000U | (0x1FFFFFU ^ 1U << bit));
    }
}

void MemberPagesTest::profileChecksInOrder()
{
    CMemberDesk desk;
    AddMember(8);
    RunOnMembers("UPDATE members SET workout_number = 80 WHERE member_id = 8");
    RunOnMembers("UPDATE members SET first_name = '', last_name = '' WHERE member_id = 7");
    auto const tomorrow = CEFOleDateTime(2026, 11, 7).Seconds();
    RunOnMembers("UPDATE profiles SET birthday = " + std::to_string(tomorrow));
    auto const range = u"Enter an integer between 1 and 999999999. @"_s;
    auto const taken = u"Error: %1 is already\nin use for an existing member @%2"_s;
    auto const birthday = u"Error: invalid birthday @birthdayEdit"_s;
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        desk.Refuses(sheet,
            {{u"workoutNumEdit=0 memberIDEdit="_s, u"Enter an integer. @memberIDEdit"_s},
                {u"memberIDEdit=1000000000"_s, range + u"memberIDEdit"_s},
                {u"memberIDEdit=8"_s, range + u"workoutNumEdit"_s},
                {u"workoutNumEdit=80"_s, u"Error: enter first name @firstNameEdit"_s},
                {u"firstNameEdit=Bo"_s, u"Error: enter last name @lastNameEdit"_s},
                {u"lastNameEdit=Baker"_s, taken.arg(u"Member ID 8"_s, u"memberIDEdit"_s)},
                {u"memberIDEdit=7"_s, taken.arg(u"Workout ID 80"_s, u"workoutNumEdit"_s)},
                {u"workoutNumEdit=1007"_s, birthday}, // both are the member's own
                {u"memberIDEdit=999999999"_s, birthday},
                {u"workoutNumEdit=8"_s, birthday}, // a member ID only
                {u"birthdayEdit=2/29/00"_s, QString()}});
    }));
    QCOMPARE(desk.Rows()[0], u"members: 999999999|8|Bo|B|Baker|1"_s);
    auto const born = QString::number(CEFOleDateTime(2000, 2, 29).Seconds());
    QVERIFY(desk.Rows({u"profiles"_s})[0].contains(u"|1|0|%1|0|"_s.arg(born)));
}

void MemberPagesTest::whatIsTypedAndChosenIsStored()
{
    CMemberDesk desk;
    RunOnMembers("UPDATE profiles SET state = 'or', sex = 1, employee = 1, release = 0");
    auto expected = desk.Rows();
    QStringList taken;
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        QCOMPARE(Child<COneLineList>(sheet, "stateList").SelectedText(), u"OR"_s);
        Do(sheet,
            u"memberIDEdit=999999999 femaleRadio pastRadio employeeNoRadio releaseYesRadio"_s);
        for (auto const& [field, limit] : {std::pair("firstNameEdit", 12), {"middleInitEdit", 1},
                 {"lastNameEdit", 20}, {"addressEdit", 28}, {"cityEdit", 16}, {"zipEdit", 10},
                 {"phoneEdit", 14}, {"emailEdit", 32}, {"emergNameEdit", 32},
                 {"emergPhoneEdit", 14}, {"physicianEdit", 32}, {"messageEdit", 200}}) {
            auto const typed = QString(limit + 1, QChar(u'a' + int(taken.size())));
            Type(Child<QWidget>(sheet, field), typed);
            taken += typed.first(limit);
        }
        QTest::keyClicks(&Child<COneLineList>(sheet, "stateList"), u"TX"_s);
        ClickOk(sheet);
    }));
    taken.insert(5, u"TX"_s);
    expected.replaceInStrings(u": 7|"_s, u": 999999999|"_s);
    expected[0].replace(u"Ann|B|Archer|1"_s, taken.first(3).join(u'|') + u"|0"_s);
    expected[1] = u"profiles: 999999999|"_s + taken.sliced(3, 9).join(u'|')
        + u"|1|0|3000000000|0|2147483651|2147483649"_s;
    expected[4].replace(u"Bring a towel"_s, taken[12]);
    QCOMPARE(desk.Rows(), expected);
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList{u"Refresh 999999999 -10 7"_s});
}

void MemberPagesTest::enrollmentChecksInOrder()
{
    CMemberDesk desk;
    CTestCentre::Run("INSERT INTO sections (number, course, name) VALUES (5, 9, 'Evening')");
    CEFOleDateTime const day(2026, 6, 7);
    auto const atNine = QString::number(day.Seconds() + 9 * 3600);
    RunOnMembers("UPDATE enrollments SET enroll_date = " + FromQt(atNine));
    auto const choose = [](QDialog& sheet, int box, QString const& section) {
        Do(Box(sheet, box), u"categoryList=Staff sectionList="_s + section);
    };
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        QCOMPARE(ClassIn(sheet, 1), u"Staff|Wellness|Morning"_s);
        QCOMPARE(ClassIn(sheet, 2), u"-||"_s);
        choose(sheet, 2, u"Morning"_s); // as in the first
        QCOMPARE(ClassIn(sheet, 2), u"Staff|Wellness|Morning"_s);
        Do(sheet, u"expireEdit=6/6/26"_s); // the day before
        for (int box = 1; box <= 3; ++box) {
            for (auto const& spin : {u"reEvalSpin"_s, u"otherSpin"_s}) {
                Do(Box(sheet, box), spin + u"=100"_s);
                QCOMPARE(desk.Ok(sheet), u"Enter an integer between 0 and 99. @"_s + spin);
                QVERIFY(Box(sheet, box).isAncestorOf(sheet.focusWidget()));
                Do(Box(sheet, box), spin + u"=99"_s);
            }
        }
        QCOMPARE(
            desk.Ok(sheet), u"Error: expiration date cannot precede enrollment date @expireEdit"_s);
        Do(sheet, u"expireEdit=06.07.2026"_s); // the same day, earlier than the stored hour
        QCOMPARE(desk.Ok(sheet), kSameClass);
        choose(sheet, 2, u"Evening"_s);
        choose(sheet, 3, u"Evening"_s);
        QCOMPARE(desk.Ok(sheet), kSameClass);
        choose(sheet, 3, u"Morning"_s);
        QCOMPARE(desk.Ok(sheet), kSameClass);
        QVERIFY(Box(sheet, 1).isAncestorOf(sheet.focusWidget()));
        Do(Box(sheet, 3), u"categoryList="_s);
        QCOMPARE(ClassIn(sheet, 3), u"-||"_s);
        Do(Box(sheet, 2), u"gradeList=Withdrawn orientYesRadio otherSpin=7"_s);
        Do(sheet, u"periodList=1 incentiveNoRadio OK"_s);
    }));
    QCOMPARE(desk.Rows({u"enrollments"_s, u"classes"_s}),
        (QStringList{u"enrollments: 7|%1|%2|1|0"_s.arg(atNine).arg(day.Seconds()),
            u"classes: 7|4|Staff|Wellness|Morning|1|1|99|99"_s,
            u"classes: 7|5|Staff|Wellness|Evening|4|1|99|7"_s}));
    RunOnMembers("UPDATE classes SET category = 'Guests'"); // not of the catalogue
    desk.Edit(7, [&](QDialog& sheet) {
        ShowPage(sheet, 1);
        QCOMPARE(desk.Ok(sheet),
            u"Error: select at least one category, course, and/or section @categoryList"_s);
        ClickCancel(sheet);
    });
}

void MemberPagesTest::deletesAClassAtOnceOrNotAtAll()
{
    CMemberDesk desk;
    CTestCentre::Run("UPDATE defaults SET grade_status = 3, re_eval_bonuses = 8, other_bonuses = 9,"
                     " flags = 0x20");
    desk.m_doc.OnNewDocument();
    AddClass(7, 4, "'staff', '', ''"); // the same index, which stays taken; shown as the first
    auto& messages = desk.m_messages;
    // What is said when the user asks to delete the class of a box, and answers like that; then
    // the classes that are stored.
    auto const toDelete = [&](QDialog const& sheet, int box, QList<bool> const& answers) {
        messages.AnswerNext(answers);
        auto const told = desk.Told({}, [&] { Do(Box(sheet, box), u"deleteButton"_s); });
        return told + u'|' + QString::number(CDAOCls().FindClasses(7));
    };
    auto const sure = u"Are you sure you want to delete\nthe class: Staff Wellness Morning?"_s;
    auto const withData = sure
        + u"|Do you want to permanently delete the member's\nworkout, evaluation, "
          "and body composition data\nthat have been recorded for the class?|"_s;
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        QCOMPARE(toDelete(sheet, 1, {}), sure + u"|2"_s);
        RunOnMembers("CREATE TRIGGER no_deletion BEFORE DELETE ON classes "
                     "BEGIN SELECT RAISE(ABORT, 'refused'); END");
        QCOMPARE(toDelete(sheet, 1, {true, true}),
            withData
                + u"Error: the class was not deleted.\n"
                  "The member's data are as they were before.|2"_s);
        QVERIFY(!messages.Messages().constLast().m_strDetail.isEmpty());
        QCOMPARE(ClassIn(sheet, 1), u"Staff|Wellness|Morning"_s);
        RunOnMembers("DROP TRIGGER no_deletion");

        Do(Box(sheet, 1), u"otherSpin=77"_s);
        QCOMPARE(toDelete(sheet, 1, {true, false}), withData + u'1');
        QCOMPARE(sheet.focusWidget(), &Child<QWidget>(Box(sheet, 1), "categoryList"));
        QCOMPARE(ClassIn(sheet, 1), u"-||"_s);
        Do(Box(sheet, 1), u"categoryList=Staff"_s); // the same names, but no longer stored
        QCOMPARE(toDelete(sheet, 1, {}), u"|1"_s);
        QVERIFY(toDelete(sheet, 2, {true, false}).endsWith(u"|0"_s));
        QCOMPARE(desk.Ok(sheet), QString()); // without a question about the deletions
    }));
    QCOMPARE(messages.Messages().constLast().m_question, CQuestion::destroying);
    QCOMPARE(
        desk.Rows({u"classes"_s}), QStringList{u"classes: 7|5|Staff|Wellness|Morning|3|1|8|9"_s});
    QVERIFY(desk.Rows({u"workouts"_s})[0].startsWith(u"workouts: 7|1|99|"_s)); // kept

    RunOnMembers("UPDATE workouts SET class_index = 5");
    desk.Edit(7, [&](QDialog& sheet) {
        QCOMPARE(toDelete(sheet, 1, {true, true}), withData + u'0');
        ClickCancel(sheet); // does not bring the class back
    });
    QCOMPARE(desk.Rows({u"classes"_s, u"workouts"_s}), QStringList());
}

void MemberPagesTest::classesAreStoredAsTheyAreShown()
{
    CMemberDesk desk;
    RunOnMembers("UPDATE classes SET category = 'staff', course = '', section = ''");
    AddClass(7, 5, "'Stud', 'Yoga', CAST(x'44ff' AS TEXT)"); // of which a byte cannot be shown
    AddClass(7, 6, "'', 'Odd', ''");
    QVERIFY(desk.Edit(7, Steps(u"@1 @0 @1 OK"_s)));
    QCOMPARE(desk.Rows({u"classes"_s}),
        (QStringList{u"classes: 7|4|Staff|Wellness|Morning|1|1|2|3"_s,
            u"classes: 7|5|Students|Yoga|D\u00ff|1|1|2|3"_s}));
}

void MemberPagesTest::areNotCut()
{
    CPropertySheet sheet(u"Wide"_s);
    auto* const page = new CMemberGoalsPg;
    // With what stands around it the page is wider than what windows get by themselves.
    page->findChild<QCheckBox*>()->setMinimumWidth(sheet.screen()->availableSize().width() / 2);
    sheet.AddPage(page, u"Wide"_s);
    sheet.show();
    QVERIFY(page->sizeHint().width() <= page->parentWidget()->width());
}

static CTestEntryOf<MemberPagesTest> const g_entry;
#include "MemberPagesTest.moc"
