#include "members/ClassSlotBox.h"
#include "members/MemberEnrollPg.h"
#include "platform/qt/DropDown.h"
#include "platform/qt/OneLineList.h"
#include "platform/qt/SpinField.h"
#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"

#include <QCheckBox>
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
    void enrollmentChecksInOrder();
    void slotsHoldDifferentClasses();
    void deletesAClassAtOnceOrNotAtAll();
    void classesAreStoredAsTheyAreShown();
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
    QStringList taken;
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        Type(Edit(sheet, "memberIDEdit"), u"999999999"_s); // everything follows
        for (auto const& [field, limit] : {std::pair("firstNameEdit", 12), {"middleInitEdit", 1},
                 {"lastNameEdit", 20}, {"addressEdit", 28}, {"cityEdit", 16}, {"zipEdit", 10},
                 {"phoneEdit", 14}, {"emailEdit", 32}, {"emergNameEdit", 32},
                 {"emergPhoneEdit", 14}, {"physicianEdit", 32}, {"messageEdit", 200}}) {
            auto const typed = QString(limit + 1, QChar(u'a' + int(taken.size())));
            Type(Child<QWidget>(sheet, field), typed);
            taken += typed.first(limit);
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
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        CEnrollUser const user(sheet);
        QVERIFY(user.Delete(1).isVisible() && user.Delete(1).isEnabled());
        QVERIFY(!user.Delete(2).isVisible() && !user.Delete(2).isEnabled());
        QVERIFY(!user.List(2, "courseList").isVisible());
        user.Choose(2, "categoryList", u"Staff"_s);
        QVERIFY(user.Delete(2).isVisible() && user.Delete(2).isEnabled());
        QCOMPARE(user.List(2, "courseList").currentText(), u"Wellness"_s);
        user.Choose(2, "sectionList", u"Morning"_s); // as in the first
        auto& expire = Child<QWidget>(sheet, "expireEdit");
        Type(expire, u"6/6/26"_s); // the day before
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
        (QStringList{u"enrollments: 7|%1|%2|1|0"_s.arg(atNine).arg(day.Seconds()),
            u"classes: 7|4|Staff|Wellness|Morning|1|1|99|99"_s,
            u"classes: 7|5|Staff|Wellness|Evening|4|1|99|7"_s}));
}

void MemberPagesTest::slotsHoldDifferentClasses()
{
    CClassSlot const none;
    CClassSlot const pe{"Students", "PE 101", ""};
    CClassSlot const peInPart{"students", "", ""}; // shown as the one above
    CClassSlot const gone{"Guests", "Yoga", ""}; // not of the catalogue
    CClassSlot const goneToo{"guests", "Yoga", ""};
    auto const noClass
        = u"Error: select at least one category, course, and/or section @categoryList"_s;
    CMemberDesk desk;
    using CSlots = CMemberEnrollPg::CSlots;
    for (auto const& [classes, refusal] : {std::pair(CSlots{none, none, none}, noClass),
             {{gone, none, none}, noClass}, {{none, none, pe}, QString()},
             {{pe, peInPart, none}, kSameClass}, {{pe, none, pe}, kSameClass},
             {{none, pe, pe}, kSameClass}, {{pe, gone, goneToo}, QString()}}) {
        desk.Edit(7, [&](QDialog& sheet) {
            sheet.findChild<CMemberEnrollPg*>()->m_lstSlots = classes;
            CEnrollUser const user(sheet);
            QCOMPARE(desk.Ok(sheet), refusal);
            QVERIFY(refusal.isEmpty() || sheet.focusWidget() == &user.List(1, "categoryList"));
            sheet.reject();
        });
    }
}

void MemberPagesTest::deletesAClassAtOnceOrNotAtAll()
{
    CMemberDesk desk;
    CTestCentre::Run("UPDATE defaults SET grade_status = 3, re_eval_bonuses = 8, other_bonuses = 9,"
                     " flags = 0x20");
    desk.m_doc.OnNewDocument();
    AddClass(7, 4, "'staff', '', ''"); // the same index, which stays taken; shown as the first
    auto& messages = desk.m_messages;
    // What is said when the user asks to delete the class of a box, and answers like that.
    auto const toDelete = [&](CEnrollUser const& user, int box, QList<bool> const& answers) {
        auto const before = messages.Messages().size();
        messages.AnswerNext(answers);
        user.Delete(box).click();
        [&] { QVERIFY(desk.m_doc.m_setCls.IsEOF() != 0); }();
        return messages.Texts().sliced(before);
    };
    QStringList const questions{
        u"Are you sure you want to delete\nthe class: Staff Wellness Morning?"_s,
        u"Do you want to permanently delete the member's\nworkout, evaluation, and body "
        "composition data\nthat have been recorded for the class?"_s};
    QVERIFY(desk.Edit(7, [&](QDialog& sheet) {
        CEnrollUser const user(sheet);
        QCOMPARE(toDelete(user, 1, {}), questions.first(1));
        RunOnMembers("CREATE TRIGGER no_deletion BEFORE DELETE ON classes "
                     "BEGIN SELECT RAISE(ABORT, 'refused'); END");
        QCOMPARE(toDelete(user, 1, {true, true}),
            questions
                + QStringList{u"Error: the class was not deleted.\n"
                              "The member's data are as they were before."_s});
        QVERIFY(!messages.Messages().constLast().m_strDetail.isEmpty());
        QVERIFY(user.Delete(1).isVisible());
        QCOMPARE(CDAOCls().FindClasses(7), 2);
        RunOnMembers("DROP TRIGGER no_deletion");

        Type(user.Spin(1, "otherSpin"), u"77"_s);
        QCOMPARE(toDelete(user, 1, {true, false}), questions);
        QCOMPARE(CDAOCls().FindClasses(7), 1);
        QVERIFY(!user.Delete(1).isVisible());
        QCOMPARE(sheet.focusWidget(), &user.List(1, "categoryList"));
        QCOMPARE(user.List(1, "categoryList").currentText(), QString());
        user.Choose(1, "categoryList", u"Staff"_s); // the same names, but no longer stored
        QCOMPARE(toDelete(user, 1, {}), QStringList());
        QCOMPARE(toDelete(user, 2, {true, false}).size(), 2);
        QCOMPARE(CDAOCls().FindClasses(7), 0);
        QCOMPARE(desk.Ok(sheet), QString()); // without a question about the deletions
    }));
    for (auto const& message : messages.Messages()) {
        QVERIFY(!message.m_bQuestion || message.m_question == CQuestion::destroying);
    }
    QCOMPARE(
        desk.Rows({u"classes"_s}), QStringList{u"classes: 7|5|Staff|Wellness|Morning|3|1|8|9"_s});
    QVERIFY(desk.Rows({u"workouts"_s})[0].startsWith(u"workouts: 7|1|99|"_s)); // kept

    RunOnMembers("UPDATE workouts SET class_index = 5");
    desk.Edit(7, [&](QDialog& sheet) {
        QCOMPARE(toDelete(CEnrollUser(sheet), 1, {true, true}), questions);
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
