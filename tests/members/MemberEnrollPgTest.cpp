#include "members/MemberEnrollPg.h"

#include "doc/CorvanaDoc.h"
#include "members/ClassSlotBox.h"
#include "platform/qt/DropDown.h"
#include "platform/qt/SpinField.h"
#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/members/PageUser.h"
#include "ui/Convert.h"

#include <QAbstractItemView>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace
{

auto const kNoClass
    = u"Error: select at least one category, course, and/or section @categoryList"_s;
auto const kSameClass = u"Error: duplicate category, course, and section @categoryList"_s;

CClassSlot Slot(std::string const& category, std::string const& course, std::string const& section,
    std::uint8_t classIndex = 0)
{
    return {.category = category,
        .course = course,
        .section = section,
        .gradeStat = 1,
        .orientBonus = true,
        .reEvalBonuses = 2,
        .otherBonuses = 3,
        .classIndex = classIndex};
}

QString Text(CClassSlot const& slot)
{
    return u"%1/%2/%3 %4 %5 %6 %7 #%8"_s
        .arg(ToQt(slot.category), ToQt(slot.course), ToQt(slot.section))
        .arg(slot.gradeStat)
        .arg(slot.orientBonus ? 1 : 0)
        .arg(slot.reEvalBonuses)
        .arg(slot.otherBonuses)
        .arg(slot.classIndex);
}

void Choose(CDropDown& list, QString const& text)
{
    list.showPopup();
    list.view()->setCurrentIndex(list.model()->index(list.findText(text), 0));
    QTest::keyClick(list.view(), Qt::Key_Return);
    QCoreApplication::processEvents(); // the list tells that it closed once its choice stands
}

/// The page of member 5, who has Staff/Wellness/Morning stored with index 4, in slot 1.
class CEnrollUser : public CPageUser<CMemberEnrollPg>
{
public:
    explicit CEnrollUser(CCorvanaDoc& doc)
        : CPageUser(doc)
    {
        m_page.m_lMemberID = 5;
        m_page.m_dtEnroll = CEFOleDateTime(2026, 1, 5, 9, 0, 0);
        m_page.m_dtExpire = CEFOleDateTime(2027, 1, 5, 8, 0, 0);
        m_page.m_lstSlots = {Slot("Staff", "Wellness", "Morning", 4), CClassSlot(), CClassSlot()};
    }

    CClassSlotBox& Box(int number) const
    {
        return Child<CClassSlotBox>(m_sheet, qPrintable(u"class%1Box"_s.arg(number)));
    }
    CDropDown& List(int box, char const* name) const { return Child<CDropDown>(Box(box), name); }
    QPushButton& Delete(int box) const { return Child<QPushButton>(Box(box), "deleteButton"); }
};

} // namespace

class MemberEnrollPgTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void bonusesAreCheckedFirstAndDatesByDay();
    void slotsHoldDifferentClasses_data();
    void slotsHoldDifferentClasses();
    void listsNarrowTheClass();
    void deletesAClassAtOnceOrNotAtAll();
    void whatIsShownIsStored();

private:
    std::unique_ptr<CTestCentre> m_centre;
    CTestApp m_app;
    std::unique_ptr<CCorvanaDoc> m_doc;
};

void MemberEnrollPgTest::init()
{
    m_centre = std::make_unique<CTestCentre>();
    CTestCentre::Run("INSERT INTO sections (number, course, name) VALUES (5, 9, 'Evening')");
    CTestCentre::Run("UPDATE defaults SET grade_status = 3, re_eval_bonuses = 8, other_bonuses = 9,"
                     " flags = 0x20");
    AddMember(5);
    AddClass(5, 4, "'Staff', 'Wellness', 'Morning'");
    m_doc = std::make_unique<CCorvanaDoc>(m_app);
    QVERIFY(m_doc->OnNewDocument());
}

void MemberEnrollPgTest::cleanup()
{
    m_doc.reset();
    m_centre.reset();
}

void MemberEnrollPgTest::bonusesAreCheckedFirstAndDatesByDay()
{
    CEnrollUser user(*m_doc);
    user.Show();
    user.Enter("expireEdit", u"1/4/26"_s); // the day before; refused only after the bonuses
    for (int box = 1; box <= 3; ++box) {
        for (auto const* const name : {"reEvalSpin", "otherSpin"}) {
            auto& spin = Child<CSpinField>(user.Box(box), name);
            Type(spin, u"100"_s);
            QCOMPARE(user.Ok(),
                u"Enter an integer between 0 and 99. @%1"_s.arg(QLatin1StringView(name)));
            QVERIFY(spin.hasFocus());
            Type(spin, u"98"_s);
            QTest::keyClick(&spin, Qt::Key_Up);
            QTest::keyClick(&spin, Qt::Key_Up);
            QCOMPARE(spin.text(), u"99"_s);
        }
    }
    QCOMPARE(user.Ok(), u"Error: expiration date cannot precede enrollment date @expireEdit"_s);
    QCOMPARE(ToQt(user.m_page.m_dtExpire).date(), QDate(2027, 1, 5));
    user.Enter("expireEdit", u"01.05.2026"_s); // the same day, though earlier than the stored hour
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(user.m_page.m_dtEnroll, CEFOleDateTime(2026, 1, 5, 9, 0, 0));
    QCOMPARE(user.m_page.m_dtExpire, CEFOleDateTime(2026, 1, 5));
}

void MemberEnrollPgTest::slotsHoldDifferentClasses_data()
{
    QTest::addColumn<CMemberEnrollPg::CSlots>("classes");
    QTest::addColumn<QString>("refusal");
    CClassSlot const none;
    auto const pe = Slot("Students", "PE 101", "");
    auto const morning = Slot("Staff", "Wellness", "Morning");
    auto const evening = Slot("Staff", "Wellness", "Evening");
    auto const gone = Slot("Guests", "Yoga", "");
    using CSlots = CMemberEnrollPg::CSlots;
    QTest::newRow("none") << CSlots{none, none, none} << kNoClass;
    QTest::newRow("only one that the catalogue lacks") << CSlots{gone, none, none} << kNoClass;
    QTest::newRow("only the third") << CSlots{none, none, pe} << QString();
    QTest::newRow("1 and 2 equal") << CSlots{pe, pe, none} << kSameClass;
    QTest::newRow("1 and 3 equal") << CSlots{pe, none, pe} << kSameClass;
    QTest::newRow("2 and 3 equal") << CSlots{none, pe, pe} << kSameClass;
    QTest::newRow("other section") << CSlots{morning, evening, pe} << QString();
    QTest::newRow("equal as they are shown")
        << CSlots{pe, Slot("students", "", ""), none} << kSameClass;
    QTest::newRow("other case, and not of the catalogue")
        << CSlots{pe, gone, Slot("guests", "Yoga", "")} << QString();
}

void MemberEnrollPgTest::slotsHoldDifferentClasses()
{
    QFETCH(CMemberEnrollPg::CSlots const, classes);
    QFETCH(QString const, refusal);
    CEnrollUser user(*m_doc);
    user.m_page.m_lstSlots = classes;
    user.Show();
    QCOMPARE(user.Ok(), refusal);
    if (!refusal.isEmpty()) {
        QVERIFY(user.List(1, "categoryList").hasFocus());
    }
}

void MemberEnrollPgTest::listsNarrowTheClass()
{
    CEnrollUser user(*m_doc);
    user.Show();
    QVERIFY(user.Delete(1).isVisible() && user.Delete(1).isEnabled());
    QVERIFY(!user.Delete(2).isVisible() && !user.Delete(2).isEnabled());
    QVERIFY(!user.List(2, "courseList").isVisible());

    Choose(user.List(2, "categoryList"), u"Staff"_s);
    QVERIFY(user.Delete(2).isVisible() && user.Delete(2).isEnabled());
    QCOMPARE(user.List(2, "courseList").currentText(), u"Wellness"_s);
    QCOMPARE(user.Ok(), kSameClass);
    Choose(user.List(2, "sectionList"), u"Evening"_s);
    Choose(user.List(3, "categoryList"), u"Students"_s);
    Choose(user.List(3, "categoryList"), QString());
    QVERIFY(!user.Delete(3).isVisible() && !user.List(3, "courseList").isVisible());
    Choose(user.List(2, "gradeList"), u"Withdrawn"_s);
    Child<QRadioButton>(user.Box(2), "orientYesRadio").click();
    Type(Child<CSpinField>(user.Box(2), "otherSpin"), u"7"_s);
    Choose(user.Field<CDropDown>("periodList"), u"1 Year"_s);
    user.Check("incentiveYesRadio");
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(Text(user.m_page.m_lstSlots[0]), u"Staff/Wellness/Morning 1 1 2 3 #4"_s);
    QCOMPARE(Text(user.m_page.m_lstSlots[1]), u"Staff/Wellness/Evening 4 1 0 7 #0"_s);
    QVERIFY(user.m_page.m_lstSlots[2].IsEmpty());
    QCOMPARE(user.m_page.m_nEnrollPer, 3);
    QVERIFY(user.m_page.m_bIncentive);
}

void MemberEnrollPgTest::deletesAClassAtOnceOrNotAtAll()
{
    AddClass(5, 4, "'staff', '', ''"); // the same index, which stays taken
    CEnrollUser user(*m_doc);
    user.m_page.m_lstSlots[2] = Slot("staff", "", "", 4); // of which more is shown than stored
    user.Show();
    auto const questions = [&] { return user.m_messages.Texts().size(); };
    user.Delete(1).click(); // answered with No
    QCOMPARE(questions(), 1);
    CTestCentre::Run("CREATE TRIGGER no_deletion BEFORE DELETE ON classes "
                     "BEGIN SELECT RAISE(ABORT, 'refused'); END",
        DataFile::member);
    user.m_messages.AnswerNext({true, true});
    user.Delete(1).click(); // fails
    QCOMPARE(questions(), 4);
    QVERIFY(user.Delete(1).isVisible());
    QVERIFY(user.m_page.m_lstDeleted.empty());
    QCOMPARE(CDAOCls().FindClasses(5), 2);
    CTestCentre::Run("DROP TRIGGER no_deletion", DataFile::member);

    Type(Child<CSpinField>(user.Box(1), "otherSpin"), u"77"_s);
    user.m_messages.AnswerNext({true, false});
    user.Delete(1).click();
    QCOMPARE(questions(), 6);
    QCOMPARE(user.m_messages.Texts()[4],
        u"Are you sure you want to delete\nthe class: Staff Wellness Morning?"_s);
    QCOMPARE(CDAOCls().FindClasses(5), 1);
    QVERIFY(!user.Delete(1).isVisible());
    QVERIFY(user.m_sheet.focusWidget() == &user.List(1, "categoryList"));
    QCOMPARE(user.List(1, "categoryList").currentText(), QString());
    QCOMPARE(Child<CSpinField>(user.Box(1), "reEvalSpin").text(), u"8"_s);
    QCOMPARE(Text(user.m_page.m_lstSlots[0]), u"// 3 1 8 9 #5"_s);
    QCOMPARE(user.m_page.m_lstDeleted.size(), 1U);
    QCOMPARE(Text(user.m_page.m_lstDeleted[0]), u"Staff/Wellness/Morning 1 1 2 3 #4"_s);

    Choose(user.List(1, "categoryList"), u"Staff"_s); // the same names, but no longer stored
    user.Delete(1).click();
    QCOMPARE(questions(), 6);
    user.m_messages.AnswerNext({true, false});
    user.Delete(3).click();
    QCOMPARE(CDAOCls().FindClasses(5), 0);
    QCOMPARE(user.Ok(), QString());
    QCOMPARE(Text(user.m_page.m_lstSlots[0]), u"Staff/Wellness/Morning 3 1 8 9 #5"_s);
}

void MemberEnrollPgTest::whatIsShownIsStored()
{
    CEnrollUser user(*m_doc);
    user.m_page.m_dtExpire = CEFOleDateTime::Invalid(); // what no field can show stays
    user.m_page.m_nEnrollPer = 9;
    user.m_page.m_lstSlots[0] = Slot("staff", "", "");
    user.m_page.m_lstSlots[0].gradeStat = 77;
    user.m_page.m_lstSlots[1] = Slot("Stud", "Yoga", "D\xff");
    user.m_page.m_lstSlots[2] = Slot("", "Odd", "");
    user.Show();
    QCOMPARE(user.List(1, "gradeList").currentText(), QString());
    for (int i = 0; i < 2; ++i) { // also when it is taken a second time
        QCOMPARE(user.Ok(), QString());
        QCOMPARE(user.m_page.m_dtExpire, CEFOleDateTime::Invalid());
        QCOMPARE(user.m_page.m_nEnrollPer, 9);
        QCOMPARE(Text(user.m_page.m_lstSlots[0]), u"Staff/Wellness/Morning 77 1 2 3 #0"_s);
        QCOMPARE(user.m_page.m_lstSlots[1].category, "Students");
        QCOMPARE(user.m_page.m_lstSlots[1].section, "D\xff");
        QCOMPARE(user.m_page.m_lstSlots[2].course, "");
        user.Show();
    }
}

CORVANA_TEST(MemberEnrollPgTest);
#include "MemberEnrollPgTest.moc"
