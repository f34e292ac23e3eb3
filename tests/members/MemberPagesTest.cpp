#include "members/ClassSlotBox.h"
#include "members/MemberEnrollPg.h"
#include "platform/qt/DropDown.h"
#include "platform/qt/OneLineList.h"
#include "platform/qt/SpinField.h"
#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace
{

/// Who uses the second page.
class CEnrollUser
{
public:
    explicit CEnrollUser(QDialog const& sheet)
        : m_sheet(sheet)
    {
        ShowPage(sheet, 1);
    }

    CClassSlotBox& Box(int number) const
    {
        return Child<CClassSlotBox>(m_sheet, qPrintable(u"class%1Box"_s.arg(number)));
    }
    CDropDown& List(int box, char const* name) const { return Child<CDropDown>(Box(box), name); }
    void Choose(int box, char const* name, QString const& text) const
    {
        ::Choose(List(box, name), List(box, name).findText(text));
    }
    CSpinField& Spin(int box, char const* name) const { return Child<CSpinField>(Box(box), name); }
    QPushButton& Delete(int box) const { return Child<QPushButton>(Box(box), "deleteButton"); }

private:
    QDialog const& m_sheet;
};

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
    void bonusesAreCheckedFirstAndDatesByDay();
    void slotsHoldDifferentClasses();
    void listsNarrowTheClass();
    void deletesAClassAtOnceOrNotAtAll();
    void classesAreStoredAsTheyAreShown();
};

void MemberPagesTest::goalsAndConditionsAreTheirBits()
{
    QStringList const goals{u"Increase Strength"_s, u"Improve Flexibility"_s, u"Gain Weight"_s,
        u"Firm Up/Lose Inches"_s, u"Lose Weight"_s, u"Improve Cardiovascular Fitness"_s,
        u"Reduce Stress/Feel More Relaxed"_s, u"Feel Better/Have More Energy"_s};
    QStringList const conditions{u"Disabilities/Limitations"_s, u"Cur. Shoulder Prob."_s,
        u"Shoulder Surgery"_s, u"Shoulder Injury"_s, u"Current Knee Prob."_s, u"Knee Surgery"_s,
        u"Knee Injury"_s, u"Current Back Prob."_s, u"Back Surgery"_s, u"Back Injury"_s,
        u"Back Problems"_s, u"Blood Pressure/Heart Medication"_s, u"Stroke"_s,
        u"Diagnosed Heart Problem"_s, u"Diabetes Type II"_s, u"Diabetes Type I"_s,
        u"High Blood Pressure"_s, u"History of Family Heart Problems"_s,
        u"Little Exercise in Past 6 Months"_s, u"20 or More lbs Overweight"_s,
        u"Smoke or Chew Tobacco"_s};
    CMemberDesk desk;
    for (auto const& [page, texts, column, mask] :
        {std::tuple(2, goals, "goals", &CDAOProf::m_Goals),
            {3, conditions, "medical_history", &CDAOProf::m_MedHist}}) {
        for (qsizetype bit = 0; bit < texts.size(); ++bit) {
            auto const stored = std::to_string(0x80000000U | 1U << bit);
            RunOnMembers(std::string("UPDATE profiles SET ") + column + " = " + stored);
            QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
                QStringList checked;
                auto const boxes = ShowPage(sheet, page).findChildren<QCheckBox*>();
                for (auto* const box : boxes) {
                    if (box->isChecked()) {
                        checked += box->text().remove(u'&');
                    }
                    box->click();
                }
                QCOMPARE(checked, QStringList{texts[bit]});
                ClickOk(sheet);
            }));
            CDAOProf profile;
            QCOMPARE(profile.FindProfile(7), 1);
            // Of all the others; the highest one has no box.
            QCOMPARE(profile.*mask, 0x80000000U | (((1U << texts.size()) - 1) & ~(1U << bit)));
        }
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
    auto const range = u"Enter an integer between 1 and 999999999. @%1"_s;
    auto const taken = u"Error: %1 is already\nin use for an existing member @%2"_s;
    auto const birthday = u"Error: invalid birthday @birthdayEdit"_s;
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        Type(Edit(sheet, "workoutNumEdit"), u"0"_s);
        for (auto const& [field, text, refusal] :
            {std::tuple("memberIDEdit", u""_s, u"Enter an integer. @memberIDEdit"_s),
                {"memberIDEdit", u"1000000000"_s, range.arg(u"memberIDEdit"_s)},
                {"memberIDEdit", u"8"_s, range.arg(u"workoutNumEdit"_s)},
                {"workoutNumEdit", u"80"_s, u"Error: enter first name @firstNameEdit"_s},
                {"firstNameEdit", u"Bo"_s, u"Error: enter last name @lastNameEdit"_s},
                {"lastNameEdit", u"Baker"_s, taken.arg(u"Member ID 8"_s, u"memberIDEdit"_s)},
                {"memberIDEdit", u"7"_s, taken.arg(u"Workout ID 80"_s, u"workoutNumEdit"_s)},
                {"workoutNumEdit", u"1007"_s, birthday}, // both are the member's own
                {"memberIDEdit", u"999999999"_s, birthday},
                {"workoutNumEdit", u"8"_s, birthday}, // a member ID only
                {"birthdayEdit", u"2/29/00"_s, QString()}}) {
            Type(Child<QWidget>(sheet, field), text);
            QCOMPARE(desk.Ok(sheet), refusal);
        }
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
    QVERIFY(desk.Edit(7, [](QDialog& sheet) {
        Type(Edit(sheet, "memberIDEdit"), u"999999999"_s); // everything follows
        for (auto const& [field, letter, limit] : {std::tuple("firstNameEdit", u'a', 12),
                 {"middleInitEdit", u'b', 1}, {"lastNameEdit", u'c', 20}, {"addressEdit", u'd', 28},
                 {"cityEdit", u'e', 16}, {"zipEdit", u'f', 10}, {"phoneEdit", u'g', 14},
                 {"emailEdit", u'h', 32}, {"emergNameEdit", u'i', 32}, {"emergPhoneEdit", u'j', 14},
                 {"physicianEdit", u'k', 32}, {"messageEdit", u'l', 200}}) {
            Type(Child<QWidget>(sheet, field), QString(limit + 1, letter));
        }
        auto& states = Child<COneLineList>(sheet, "stateList");
        QCOMPARE(states.SelectedText(), u"OR"_s);
        QTest::keyClicks(&states, u"TX"_s);
        for (auto const* const radio :
            {"femaleRadio", "pastRadio", "employeeNoRadio", "releaseYesRadio"}) {
            Child<QRadioButton>(sheet, radio).click();
        }
        ClickOk(sheet);
    }));
    expected.replaceInStrings(u": 7|"_s, u": 999999999|"_s);
    auto const text = [](char16_t letter, int length) { return QString(length, letter) + u'|'; };
    expected[0].replace(
        u"Ann|B|Archer|1"_s, text(u'a', 12) + text(u'b', 1) + text(u'c', 20) + u'0');
    expected[1] = u"profiles: 999999999|"_s + text(u'd', 28) + text(u'e', 16) + u"TX|"_s
        + text(u'f', 10) + text(u'g', 14) + text(u'h', 32) + text(u'i', 32) + text(u'j', 14)
        + text(u'k', 32) + u"1|0|3000000000|0|2147483651|2147483649"_s;
    expected[4].replace(u"Bring a towel"_s, QString(200, u'l'));
    QCOMPARE(desk.Rows(), expected);
    QCOMPARE(desk.m_views.m_lstTreeCalls, QStringList{u"Refresh 999999999 -10 7"_s});
}

void MemberPagesTest::bonusesAreCheckedFirstAndDatesByDay()
{
    CMemberDesk desk;
    CEFOleDateTime const day(2026, 6, 7);
    auto const atNine = QString::number(day.Seconds() + 9 * 3600);
    RunOnMembers("UPDATE enrollments SET enroll_date = " + FromQt(atNine));
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        CEnrollUser const user(sheet);
        auto& expire = Child<QWidget>(sheet, "expireEdit");
        Type(expire, u"6/6/26"_s); // the day before; refused only after the bonuses
        for (int box = 1; box <= 3; ++box) {
            for (auto const* const name : {"reEvalSpin", "otherSpin"}) {
                Type(user.Spin(box, name), u"100"_s);
                QCOMPARE(desk.Ok(sheet),
                    u"Enter an integer between 0 and 99. @%1"_s.arg(QLatin1StringView(name)));
                QCOMPARE(sheet.focusWidget(), &user.Spin(box, name));
                Type(user.Spin(box, name), u"99"_s);
            }
        }
        QCOMPARE(
            desk.Ok(sheet), u"Error: expiration date cannot precede enrollment date @expireEdit"_s);
        Type(expire, u"06.07.2026"_s); // the same day, though earlier than the stored hour
        QCOMPARE(desk.Ok(sheet), QString());
    }));
    QCOMPARE(desk.Rows({u"enrollments"_s})[0],
        u"enrollments: 7|%1|%2|3|1"_s.arg(atNine).arg(day.Seconds()));
}

void MemberPagesTest::slotsHoldDifferentClasses()
{
    CClassSlot const none;
    CClassSlot const pe{"Students", "PE 101", ""};
    CClassSlot const peInPart{"students", "", ""}; // shown as the one above
    CClassSlot const morning{"Staff", "Wellness", "Morning"};
    CClassSlot const evening{"Staff", "Wellness", "Evening"};
    CClassSlot const gone{"Guests", "Yoga", ""}; // not of the catalogue
    CClassSlot const goneToo{"guests", "Yoga", ""};
    auto const noClass
        = u"Error: select at least one category, course, and/or section @categoryList"_s;
    CMemberDesk desk;
    CTestCentre::Run("INSERT INTO sections (number, course, name) VALUES (5, 9, 'Evening')");
    using CSlots = CMemberEnrollPg::CSlots;
    for (auto const& [classes, refusal] : {std::pair(CSlots{none, none, none}, noClass),
             {{gone, none, none}, noClass}, {{none, none, pe}, QString()},
             {{pe, pe, none}, kSameClass}, {{pe, none, pe}, kSameClass},
             {{none, pe, pe}, kSameClass}, {{morning, evening, pe}, QString()},
             {{pe, peInPart, none}, kSameClass}, {{pe, gone, goneToo}, QString()}}) {
        desk.Edit(7, [&](QDialog& sheet) {
            sheet.findChild<CMemberEnrollPg*>()->m_lstSlots = classes;
            CEnrollUser const user(sheet);
            QCOMPARE(desk.Ok(sheet), refusal);
            QVERIFY(refusal.isEmpty() || sheet.focusWidget() == &user.List(1, "categoryList"));
            sheet.reject();
        });
    }
}

void MemberPagesTest::listsNarrowTheClass()
{
    CMemberDesk desk;
    CTestCentre::Run("INSERT INTO sections (number, course, name) VALUES (5, 9, 'Evening')");
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        CEnrollUser const user(sheet);
        QVERIFY(user.Delete(1).isVisible() && user.Delete(1).isEnabled());
        QVERIFY(!user.Delete(2).isVisible() && !user.Delete(2).isEnabled());
        QVERIFY(!user.List(2, "courseList").isVisible());

        user.Choose(2, "categoryList", u"Staff"_s);
        QVERIFY(user.Delete(2).isVisible() && user.Delete(2).isEnabled());
        QCOMPARE(user.List(2, "courseList").currentText(), u"Wellness"_s);
        user.Choose(2, "sectionList", u"Morning"_s);
        QCOMPARE(desk.Ok(sheet), kSameClass);
        user.Choose(2, "sectionList", u"Evening"_s);
        user.Choose(3, "categoryList", u"Students"_s);
        user.Choose(3, "categoryList", QString());
        QVERIFY(!user.Delete(3).isVisible() && !user.List(3, "courseList").isVisible());
        user.Choose(2, "gradeList", u"Withdrawn"_s);
        Child<QRadioButton>(user.Box(2), "orientYesRadio").click();
        Type(user.Spin(2, "otherSpin"), u"7"_s);
        Choose(Child<CDropDown>(sheet, "periodList"), 1);
        Child<QRadioButton>(sheet, "incentiveNoRadio").click();
        QCOMPARE(desk.Ok(sheet), QString());
    }));
    QCOMPARE(desk.Rows({u"enrollments"_s, u"classes"_s}),
        (QStringList{u"enrollments: 7|3990000000|4020000000|1|0"_s,
            u"classes: 7|4|Staff|Wellness|Morning|1|1|2|3"_s,
            u"classes: 7|5|Staff|Wellness|Evening|4|1|0|7"_s}));
}

void MemberPagesTest::deletesAClassAtOnceOrNotAtAll()
{
    CMemberDesk desk;
    CTestCentre::Run("UPDATE defaults SET grade_status = 3, re_eval_bonuses = 8, other_bonuses = 9,"
                     " flags = 0x20");
    desk.m_doc.OnNewDocument();
    AddClass(7, 4, "'staff', '', ''"); // the same index, which stays taken; shown as the first
    auto const& messages = desk.m_messages;
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        CEnrollUser const user(sheet);
        user.Delete(1).click(); // answered with No
        QCOMPARE(messages.Messages().size(), 1);
        RunOnMembers("CREATE TRIGGER no_deletion BEFORE DELETE ON classes "
                     "BEGIN SELECT RAISE(ABORT, 'refused'); END");
        desk.m_messages.AnswerNext({true, true});
        user.Delete(1).click(); // fails
        QCOMPARE(messages.Messages().size(), 4);
        QVERIFY(user.Delete(1).isVisible());
        QCOMPARE(CDAOCls().FindClasses(7), 2);
        RunOnMembers("DROP TRIGGER no_deletion");

        Type(user.Spin(1, "otherSpin"), u"77"_s);
        desk.m_messages.AnswerNext({true, false});
        user.Delete(1).click();
        QCOMPARE(messages.Messages().size(), 6);
        QCOMPARE(messages.Texts()[4],
            u"Are you sure you want to delete\nthe class: Staff Wellness Morning?"_s);
        QCOMPARE(CDAOCls().FindClasses(7), 1);
        QVERIFY(!user.Delete(1).isVisible());
        QCOMPARE(sheet.focusWidget(), &user.List(1, "categoryList"));
        QCOMPARE(user.List(1, "categoryList").currentText(), QString());

        user.Choose(1, "categoryList", u"Staff"_s); // the same names, but no longer stored
        user.Delete(1).click();
        QCOMPARE(messages.Messages().size(), 6);
        desk.m_messages.AnswerNext({true, false});
        user.Delete(2).click();
        QCOMPARE(CDAOCls().FindClasses(7), 0);
        QCOMPARE(desk.Ok(sheet), QString()); // without a question about the deletions
    }));
    QCOMPARE(messages.Messages().size(), 8);
    QCOMPARE(
        desk.Rows({u"classes"_s}), QStringList{u"classes: 7|5|Staff|Wellness|Morning|3|1|8|9"_s});
    QVERIFY(desk.Rows({u"workouts"_s})[0].startsWith(u"workouts: 7|1|99|"_s)); // kept

    desk.m_messages.AnswerNext({true, true});
    desk.Edit(7, [&](QDialog& sheet) {
        CEnrollUser(sheet).Delete(1).click();
        ClickCancel(sheet); // does not bring the class back
    });
    QCOMPARE(desk.Rows({u"classes"_s}), QStringList());
}

void MemberPagesTest::classesAreStoredAsTheyAreShown()
{
    CMemberDesk desk;
    RunOnMembers("UPDATE classes SET category = 'staff', course = '', section = ''");
    AddClass(7, 5, "'Stud', 'Yoga', CAST(x'44ff' AS TEXT)"); // of which a byte cannot be shown
    AddClass(7, 6, "'', 'Odd', ''");
    QVERIFY(desk.Edit(7, [](QDialog& sheet) {
        for (int const page : {1, 0, 1}) {
            ShowPage(sheet, page);
        }
        ClickOk(sheet);
    }));
    QCOMPARE(desk.Rows({u"classes"_s}),
        (QStringList{u"classes: 7|4|Staff|Wellness|Morning|1|1|2|3"_s,
            u"classes: 7|5|Students|Yoga|D\u00ff|1|1|2|3"_s}));
}

static CTestEntryOf<MemberPagesTest> const g_entry;
#include "MemberPagesTest.moc"
