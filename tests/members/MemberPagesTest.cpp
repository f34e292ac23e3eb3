#include "doc/CorvanaDoc.h"
#include "members/ClassSlotBox.h"
#include "members/MemberEnrollPg.h"
#include "members/MemberGoalsPg.h"
#include "members/MemberMedHistPg.h"
#include "members/MemberProfilePg.h"
#include "platform/qt/DropDown.h"
#include "platform/qt/OneLineList.h"
#include "platform/qt/PropertySheet.h"
#include "platform/qt/SpinField.h"
#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/Convert.h"

#include <QCheckBox>
#include <QRadioButton>

#include <array>

using namespace Qt::StringLiterals;

namespace
{

CEFOleDateTime const kNow(2026, 11, 24, 15, 30, 0);

/// A page of the member editor in a sheet of its own, and who uses it.
template <typename Page>
class CPageUser
{
public:
    template <typename... Args>
    explicit CPageUser(Args&... args)
        : m_page(*new Page(args...))
    {
        m_sheet.AddPage(&m_page, u"Page"_s);
    }

    CPropertySheet m_sheet{u"Member"_s};
    CMessageRecorder m_messages;
    Page& m_page;

    void Show()
    {
        m_sheet.show();
        QVERIFY(QTest::qWaitForWindowActive(&m_sheet));
    }
    void Enter(char const* field, QString const& text)
    {
        Type(Child<QWidget>(m_sheet, field), text);
    }
    void Check(char const* radio) { Child<QRadioButton>(m_sheet, radio).click(); }

    /// OK: empty when it was accepted, else the text of the message and the field in focus.
    QString Ok()
    {
        auto const before = m_messages.Texts().size();
        m_sheet.setResult(QDialog::Rejected);
        ClickOk(m_sheet);
        if (m_sheet.result() == QDialog::Accepted) {
            return {};
        }
        auto const texts = m_messages.Texts().sliced(before);
        return texts.join(u';') + u" @"_s + m_sheet.focusWidget()->objectName();
    }
};

/// Each box shows its own bit alone and takes it alone; their texts from the lowest bit on.
template <typename Page>
void CheckBits(QStringList const& texts)
{
    std::uint32_t const all = (1U << texts.size()) - 1;
    for (qsizetype bit = 0; bit < texts.size(); ++bit) {
        CPageUser<Page> user;
        user.m_page.SetMask(1U << bit);
        user.Show();
        QStringList checked;
        auto const boxes = user.m_page.template findChildren<QCheckBox*>();
        for (auto* const box : boxes) {
            checked += box->isChecked() ? QStringList(box->text().remove(u'&')) : QStringList();
            box->click();
        }
        QCOMPARE(checked, QStringList{texts[bit]});
        QCOMPARE(user.Ok(), QString());
        QCOMPARE(user.m_page.Mask(), all & ~(1U << bit));
    }
    Page unopened;
    unopened.SetMask(0xFFFFFFFF);
    QCOMPARE(unopened.Mask(), all);
    QCOMPARE(unopened.MaskIn(0x80000000), 0x80000000 | all); // a bit without a box is kept
}

using CProfileUser = CPageUser<CMemberProfilePg>;

CClassSlot Slot(std::string const& category, std::string const& course, std::string const& section,
    std::uint8_t classIndex = 0)
{
    return {category, course, section, 1, true, 2, 3, classIndex};
}

/// The page of member 5, who has Staff/Wellness/Morning stored with index 4, in slot 1.
class CEnrollUser : public CPageUser<CMemberEnrollPg>
{
public:
    explicit CEnrollUser(CCorvanaDoc& doc)
        : CPageUser(doc)
    {
        m_page.m_lMemberID = 5;
        m_page.m_lstSlots = {Slot("Staff", "Wellness", "Morning", 4), CClassSlot(), CClassSlot()};
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
};

auto const kSameClass = u"Error: duplicate category, course, and section @categoryList"_s;

} // namespace

/// The pages of the member editor, each by itself.
class MemberPagesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void goalsAndConditionsAreTheirBits();
    void profileChecksInOrder();
    void profileTakesWhatIsTypedAndChosen();
    void profileKeepsWhatFieldsCannotShow();
    void bonusesAreCheckedFirstAndDatesByDay();
    void slotsHoldDifferentClasses();
    void listsNarrowTheClass();
    void deletesAClassAtOnceOrNotAtAll();
    void enrollmentKeepsWhatFieldsCannotShow();

private:
    CTestCentre const m_centre;
    CTestApp m_app;
    CCorvanaDoc m_doc{m_app};
};

void MemberPagesTest::initTestCase()
{
    CEFOleDateTime::SetClock(kNow);
    CTestCentre::Run("INSERT INTO sections (number, course, name) VALUES (5, 9, 'Evening')");
    CTestCentre::Run("UPDATE defaults SET grade_status = 3, re_eval_bonuses = 8, other_bonuses = 9,"
                     " flags = 0x20");
    for (int const id : {5, 7, 8}) {
        AddMember(id);
    }
    RunOnMembers("UPDATE members SET workout_number = 80 WHERE member_id = 8");
    QVERIFY(m_doc.OnNewDocument());
}

void MemberPagesTest::goalsAndConditionsAreTheirBits()
{
    CheckBits<CMemberGoalsPg>({u"Increase Strength"_s, u"Improve Flexibility"_s, u"Gain Weight"_s,
        u"Firm Up/Lose Inches"_s, u"Lose Weight"_s, u"Improve Cardiovascular Fitness"_s,
        u"Reduce Stress/Feel More Relaxed"_s, u"Feel Better/Have More Energy"_s});
    CheckBits<CMemberMedHistPg>(
        {u"Disabilities/Limitations"_s, u"Cur. Shoulder Prob."_s, u"Shoulder Surgery"_s,
            u"Shoulder Injury"_s, u"Current Knee Prob."_s, u"Knee Surgery"_s, u"Knee Injury"_s,
            u"Current Back Prob."_s, u"Back Surgery"_s, u"Back Injury"_s, u"Back Problems"_s,
            u"Blood Pressure/Heart Medication"_s, u"Stroke"_s, u"Diagnosed Heart Problem"_s,
            u"Diabetes Type II"_s, u"Diabetes Type I"_s, u"High Blood Pressure"_s,
            u"History of Family Heart Problems"_s, u"Little Exercise in Past 6 Months"_s,
            u"20 or More lbs Overweight"_s, u"Smoke or Chew Tobacco"_s});
}

void MemberPagesTest::profileChecksInOrder()
{
    CProfileUser user;
    user.m_page.m_lMemberID = user.m_page.m_lWorkoutNum = 7;
    user.m_page.m_dtBirthday = CEFOleDateTime(2026, 11, 25);
    user.Show();
    user.Enter("workoutNumEdit", u"0"_s);
    auto const range = u"Enter an integer between 1 and 999999999. @%1"_s;
    auto const taken = u"Error: %1 is already\nin use for an existing member @%2"_s;
    auto const birthday = u"Error: invalid birthday @birthdayEdit"_s;
    for (auto const& [field, text, refusal] :
        {std::tuple("memberIDEdit", u""_s, u"Enter an integer. @memberIDEdit"_s),
            {"memberIDEdit", u"1000000000"_s, range.arg(u"memberIDEdit"_s)},
            {"memberIDEdit", u"8"_s, range.arg(u"workoutNumEdit"_s)},
            {"workoutNumEdit", u"80"_s, u"Error: enter first name @firstNameEdit"_s},
            {"firstNameEdit", u"Bo"_s, u"Error: enter last name @lastNameEdit"_s},
            {"lastNameEdit", u"Baker"_s, taken.arg(u"Member ID 8"_s, u"memberIDEdit"_s)},
            {"memberIDEdit", u"7"_s, taken.arg(u"Workout ID 80"_s, u"workoutNumEdit"_s)},
            {"workoutNumEdit", u"7"_s, birthday}, // both are the member's own
            {"memberIDEdit", u"999999999"_s, birthday},
            {"workoutNumEdit", u"8"_s, birthday}}) { // a member ID only
        user.Enter(field, text);
        QCOMPARE(user.Ok(), refusal);
        QCOMPARE(user.m_page.m_lMemberID, 7); // a refused page changes nothing
        QCOMPARE(user.m_page.m_strFirstName, std::string());
    }
    user.Enter("birthdayEdit", u"2/29/00"_s);
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(user.m_page.m_lMemberID, 999999999);
    QCOMPARE(user.m_page.m_lWorkoutNum, 8);
    QCOMPARE(user.m_page.m_dtBirthday, CEFOleDateTime(2000, 2, 29));
}

void MemberPagesTest::profileTakesWhatIsTypedAndChosen()
{
    using CPage = CMemberProfilePg;
    using CLimit = std::tuple<char const*, std::string CPage::*, int>;
    std::array const texts = {CLimit{"firstNameEdit", &CPage::m_strFirstName, 12},
        CLimit{"middleInitEdit", &CPage::m_strMiddleInit, 1},
        CLimit{"lastNameEdit", &CPage::m_strLastName, 20},
        CLimit{"addressEdit", &CPage::m_strAddress, 28},
        CLimit{"phoneEdit", &CPage::m_strPhone, 14}, CLimit{"cityEdit", &CPage::m_strCity, 16},
        CLimit{"zipEdit", &CPage::m_strZip, 10}, CLimit{"emailEdit", &CPage::m_strEmail, 32},
        CLimit{"emergNameEdit", &CPage::m_strEmergName, 32},
        CLimit{"emergPhoneEdit", &CPage::m_strEmergPhone, 14},
        CLimit{"physicianEdit", &CPage::m_strPhysician, 32},
        CLimit{"messageEdit", &CPage::m_strMessage, 200}};
    CProfileUser user;
    user.m_page.m_lMemberID = user.m_page.m_lWorkoutNum = 7;
    user.m_page.m_strState = "il";
    QCOMPARE(user.m_page.m_dtBirthday, CEFOleDateTime(2026, 11, 24));
    user.m_page.m_dtBirthday = CEFOleDateTime::Invalid(); // is left alone
    user.m_page.m_bMale = user.m_page.m_bEmployee = true;
    user.Show();
    char letter = 'a';
    for (auto const& [name, value, limit] : texts) {
        user.Enter(name, QString(limit + 1, QLatin1Char(letter++)));
    }
    auto& states = Child<COneLineList>(user.m_sheet, "stateList");
    QCOMPARE(states.SelectedText(), u"IL"_s);
    QTest::keyClicks(&states, u"TX"_s);
    for (auto const* const radio :
        {"femaleRadio", "currentRadio", "employeeNoRadio", "releaseYesRadio"}) {
        user.Check(radio);
    }
    QCOMPARE(user.Ok(), QString());
    letter = 'a';
    for (auto const& [name, value, limit] : texts) {
        QCOMPARE(user.m_page.*value, std::string(static_cast<std::size_t>(limit), letter++));
    }
    QCOMPARE(user.m_page.m_strState, "TX");
    QCOMPARE(user.m_page.m_dtBirthday, CEFOleDateTime::Invalid());
    QVERIFY(!user.m_page.m_bMale && user.m_page.m_bCurrent);
    QVERIFY(!user.m_page.m_bEmployee && user.m_page.m_bRelease);
}

void MemberPagesTest::profileKeepsWhatFieldsCannotShow()
{
    CProfileUser user;
    auto const message = std::string(250, 'm') + "\r\n\xff";
    user.m_page.m_lMemberID = user.m_page.m_lWorkoutNum = 7;
    user.m_page.m_strFirstName = user.m_page.m_strLastName = "Wilhelmina-Josephine";
    user.m_page.m_strMiddleInit = "\xc3\x84\xcc\x81";
    user.m_page.m_strPhone = "555\n0142\xff";
    user.m_page.m_strState = "Ontario";
    user.m_page.m_dtBirthday = kNow; // the latest there can be
    user.m_page.m_strMessage = message;
    user.m_page.m_bMale = user.m_page.m_bRelease = true;
    user.Show();
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(user.m_page.m_strFirstName, "Wilhelmina-Josephine");
    QCOMPARE(user.m_page.m_strMiddleInit, "\xc3\x84\xcc\x81");
    QCOMPARE(user.m_page.m_strPhone, "555\n0142\xff");
    QCOMPARE(user.m_page.m_strState, ""); // the one field whose choice alone counts
    QCOMPARE(user.m_page.m_dtBirthday, kNow);
    QCOMPARE(user.m_page.m_strMessage, message);
    QVERIFY(user.m_page.m_bMale && user.m_page.m_bRelease);
    QVERIFY(!user.m_page.m_bCurrent && !user.m_page.m_bEmployee);
}

void MemberPagesTest::bonusesAreCheckedFirstAndDatesByDay()
{
    CEnrollUser user(m_doc);
    user.m_page.m_dtEnroll = CEFOleDateTime(2026, 1, 5, 9, 0, 0);
    user.m_page.m_dtExpire = CEFOleDateTime(2027, 1, 5, 8, 0, 0);
    user.Show();
    user.Enter("expireEdit", u"1/4/26"_s); // the day before; refused only after the bonuses
    for (int box = 1; box <= 3; ++box) {
        for (auto const* const name : {"reEvalSpin", "otherSpin"}) {
            Type(user.Spin(box, name), u"100"_s);
            QCOMPARE(user.Ok(),
                u"Enter an integer between 0 and 99. @%1"_s.arg(QLatin1StringView(name)));
            QVERIFY(user.Spin(box, name).hasFocus());
            Type(user.Spin(box, name), u"99"_s);
        }
    }
    QCOMPARE(user.Ok(), u"Error: expiration date cannot precede enrollment date @expireEdit"_s);
    QCOMPARE(user.m_page.m_dtExpire, CEFOleDateTime(2027, 1, 5, 8, 0, 0));
    user.Enter("expireEdit", u"01.05.2026"_s); // the same day, though earlier than the stored hour
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(user.m_page.m_dtEnroll, CEFOleDateTime(2026, 1, 5, 9, 0, 0));
    QCOMPARE(user.m_page.m_dtExpire, CEFOleDateTime(2026, 1, 5));
}

void MemberPagesTest::slotsHoldDifferentClasses()
{
    CClassSlot const none;
    auto const pe = Slot("Students", "PE 101", "");
    auto const morning = Slot("Staff", "Wellness", "Morning");
    auto const evening = Slot("Staff", "Wellness", "Evening");
    auto const gone = Slot("Guests", "Yoga", ""); // not of the catalogue
    auto const noClass
        = u"Error: select at least one category, course, and/or section @categoryList"_s;
    using CSlots = CMemberEnrollPg::CSlots;
    for (auto const& [classes, refusal] : {std::pair(CSlots{none, none, none}, noClass),
             {{gone, none, none}, noClass}, {{none, none, pe}, QString()},
             {{pe, pe, none}, kSameClass}, {{pe, none, pe}, kSameClass},
             {{none, pe, pe}, kSameClass}, {{morning, evening, pe}, QString()},
             {{pe, Slot("students", "", ""), none}, kSameClass}, // as they are shown
             {{pe, gone, Slot("guests", "Yoga", "")}, QString()}}) {
        CEnrollUser user(m_doc);
        user.m_page.m_lstSlots = classes;
        user.Show();
        QCOMPARE(user.Ok(), refusal);
        QVERIFY(refusal.isEmpty() || user.List(1, "categoryList").hasFocus());
    }
}

void MemberPagesTest::listsNarrowTheClass()
{
    CEnrollUser user(m_doc);
    user.Show();
    QVERIFY(user.Delete(1).isVisible() && user.Delete(1).isEnabled());
    QVERIFY(!user.Delete(2).isVisible() && !user.Delete(2).isEnabled());
    QVERIFY(!user.List(2, "courseList").isVisible());

    user.Choose(2, "categoryList", u"Staff"_s);
    QVERIFY(user.Delete(2).isVisible() && user.Delete(2).isEnabled());
    QCOMPARE(user.List(2, "courseList").currentText(), u"Wellness"_s);
    QCOMPARE(user.Ok(), kSameClass);
    user.Choose(2, "sectionList", u"Evening"_s);
    user.Choose(3, "categoryList", u"Students"_s);
    user.Choose(3, "categoryList", QString());
    QVERIFY(!user.Delete(3).isVisible() && !user.List(3, "courseList").isVisible());
    user.Choose(2, "gradeList", u"Withdrawn"_s);
    Child<QRadioButton>(user.Box(2), "orientYesRadio").click();
    Type(user.Spin(2, "otherSpin"), u"7"_s);
    Choose(Child<CDropDown>(user.m_sheet, "periodList"), 3); // one year
    user.Check("incentiveYesRadio");
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(user.m_page.m_lstSlots,
        (CMemberEnrollPg::CSlots{Slot("Staff", "Wellness", "Morning", 4),
            CClassSlot{"Staff", "Wellness", "Evening", 4, true, 0, 7, 0}, CClassSlot()}));
    QCOMPARE(user.m_page.m_nEnrollPer, 3);
    QVERIFY(user.m_page.m_bIncentive);
}

void MemberPagesTest::deletesAClassAtOnceOrNotAtAll()
{
    AddClass(5, 4, "'Staff', 'Wellness', 'Morning'");
    AddClass(5, 4, "'staff', '', ''"); // the same index, which stays taken
    CEnrollUser user(m_doc);
    auto const& slots = user.m_page.m_lstSlots;
    user.m_page.m_lstSlots[2] = Slot("staff", "", "", 4); // of which more is shown than stored
    user.Show();
    auto const questions = [&] { return user.m_messages.Texts().size(); };
    user.Delete(1).click(); // answered with No
    QCOMPARE(questions(), 1);
    RunOnMembers("CREATE TRIGGER no_deletion BEFORE DELETE ON classes "
                 "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    user.m_messages.AnswerNext({true, true});
    user.Delete(1).click(); // fails
    QCOMPARE(questions(), 4);
    QVERIFY(user.Delete(1).isVisible());
    QVERIFY(user.m_page.m_lstDeleted.empty());
    QCOMPARE(CDAOCls().FindClasses(5), 2);
    RunOnMembers("DROP TRIGGER no_deletion");

    Type(user.Spin(1, "otherSpin"), u"77"_s);
    user.m_messages.AnswerNext({true, false});
    user.Delete(1).click();
    QCOMPARE(questions(), 6);
    QCOMPARE(user.m_messages.Texts()[4],
        u"Are you sure you want to delete\nthe class: Staff Wellness Morning?"_s);
    QCOMPARE(CDAOCls().FindClasses(5), 1);
    QVERIFY(!user.Delete(1).isVisible());
    QVERIFY(user.m_sheet.focusWidget() == &user.List(1, "categoryList"));
    QCOMPARE(user.List(1, "categoryList").currentText(), QString());
    QCOMPARE(user.Spin(1, "reEvalSpin").text(), u"8"_s);
    QCOMPARE(slots[0], (CClassSlot{"", "", "", 3, true, 8, 9, 5}));
    QCOMPARE(user.m_page.m_lstDeleted, (std::vector{Slot("Staff", "Wellness", "Morning", 4)}));

    user.Choose(1, "categoryList", u"Staff"_s); // the same names, but no longer stored
    user.Delete(1).click();
    QCOMPARE(questions(), 6);
    user.m_messages.AnswerNext({true, false});
    user.Delete(3).click();
    QCOMPARE(CDAOCls().FindClasses(5), 0);
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(slots[0], (CClassSlot{"Staff", "Wellness", "Morning", 3, true, 8, 9, 5}));
}

void MemberPagesTest::enrollmentKeepsWhatFieldsCannotShow()
{
    CEnrollUser user(m_doc);
    user.m_page.m_dtExpire = CEFOleDateTime::Invalid();
    user.m_page.m_nEnrollPer = 9;
    user.m_page.m_lstSlots
        = {Slot("staff", "", ""), Slot("Stud", "Yoga", "D\xff"), Slot("", "Odd", "")};
    user.m_page.m_lstSlots[0].gradeStat = 77;
    user.Show();
    QCOMPARE(user.List(1, "gradeList").currentText(), QString());
    for (int i = 0; i < 2; ++i) { // also when it is taken a second time
        QCOMPARE(user.Ok(), QString());
        QCOMPARE(user.m_page.m_dtExpire, CEFOleDateTime::Invalid());
        QCOMPARE(user.m_page.m_nEnrollPer, 9);
        auto const& [staff, students, odd] = user.m_page.m_lstSlots;
        QCOMPARE(staff, (CClassSlot{"Staff", "Wellness", "Morning", 77, true, 2, 3, 0}));
        QCOMPARE(students.category, "Students");
        QCOMPARE(students.section, "D\xff");
        QCOMPARE(odd.course, "");
        user.Show();
    }
}

CORVANA_TEST(MemberPagesTest);
#include "MemberPagesTest.moc"
