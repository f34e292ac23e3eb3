#include "doc/ClassDlg.h"
#include "doc/MemberClassDlg.h"
#include "doc/UpdateClassDlg.h"
#include "platform/qt/DropDown.h"
#include "platform/qt/SpinField.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace
{

/// Has a category without courses, and defaults that are no zeros.
class CClassDesk : public CTestDesk
{
public:
    CClassDesk()
    {
        CTestCentre::Run("INSERT INTO categories (number, name) VALUES (5, 'Guests')");
        CTestCentre::Run("UPDATE defaults SET grade_status = 2, re_eval_bonuses = 3, "
                         "other_bonuses = 4, flags = 0x20");
        QVERIFY(m_doc.OnNewDocument());
        AddMember(12);
    }
};

/// Goes down the closed list by key.
void StepDown(QDialog const& dialog, char const* list, int steps = 1)
{
    for (int i = 0; i < steps; ++i) {
        QTest::keyClick(&Child<CDropDown>(dialog, list), Qt::Key_Down);
    }
}

auto const kNoClass = u"Error: select a category, course, and/or section @categoryList"_s;

} // namespace

class ClassDialogsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void classIsTakenOrRefused();
    void updateIsTakenOrRefused();
    void formsAreFitForEveryone();
};

void ClassDialogsTest::classIsTakenOrRefused()
{
    CClassDesk desk;
    CClassDlg dialog(desk.m_doc);
    auto const taken = [&] {
        return dialog.m_strCategory + "|" + dialog.m_strCourse + "|" + dialog.m_strSection;
    };
    dialog.m_strSection = "left over";
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    dialog.findChild<QPushButton*>()->setFocus();
    QCOMPARE(desk.Ok(dialog), kNoClass);
    QCOMPARE(taken(), "||left over");

    StepDown(dialog, "categoryList"); // Staff
    QCOMPARE(desk.Ok(dialog), QString());
    QCOMPARE(taken(), "Staff|Wellness|Morning");
    dialog.show(); // a fresh choice again
    QCOMPARE(Child<CDropDown>(dialog, "categoryList").currentText(), QString());
    StepDown(dialog, "categoryList", 3); // Guests
    QCOMPARE(desk.Ok(dialog), QString());
    QCOMPARE(taken(), "Guests||");
}

void ClassDialogsTest::updateIsTakenOrRefused()
{
    CClassDesk desk;
    CUpdateClassDlg dialog(desk.m_doc);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto& reEval = Child<CSpinField>(dialog, "reEvalSpin");
    auto& other = Child<CSpinField>(dialog, "otherSpin");
    QVERIFY(Child<QRadioButton>(dialog, "orientYesButton").isChecked());
    QCOMPARE(reEval.text() + u' ' + other.text(), u"3 4"_s);
    QCOMPARE(Child<CDropDown>(dialog, "gradeList").currentText(), u"Satisfactory"_s);
    QVERIFY(Child<QRadioButton>(dialog, "transferButton").isChecked());
    for (auto const& [first, second, refusal] :
        {std::tuple(u"100"_s, u"100"_s, u"Enter an integer between 0 and 99. @reEvalSpin"_s),
            {u"1"_s, u""_s, u"Enter an integer. @otherSpin"_s}, {u"99"_s, u"0"_s, kNoClass}}) {
        Type(reEval, first);
        Type(other, second);
        QCOMPARE(desk.Ok(dialog), refusal);
        QCOMPARE(dialog.m_class.reEvalBonuses, 3);
    }
    StepDown(dialog, "categoryList");
    Child<QRadioButton>(dialog, "orientNoButton").click();
    StepDown(dialog, "gradeList", 2);
    Child<QRadioButton>(dialog, "deleteButton").click();
    QCOMPARE(desk.Ok(dialog), QString());
    QVERIFY(!dialog.m_bTransfer);
    CClassSlot const taken
        = {"Staff", "Wellness", "Morning", CDAODef::gsWithdrawn, false, 99, 0, 0};
    QVERIFY(dialog.m_class == taken);
}

void ClassDialogsTest::formsAreFitForEveryone()
{
    CClassDesk desk;
    AddClass(12, 2, "'A category with a long name', 'A course with a long name', 'and more'");
    std::unique_ptr<CLargeFont> large;
    for (int i = 0; i < 2; ++i) {
        CClassDlg classDlg(desk.m_doc);
        CUpdateClassDlg updateDlg(desk.m_doc);
        CMemberClassDlg memberDlg(desk.m_doc);
        memberDlg.m_lMemberID = 12;
        for (auto const& [dialog, list] :
            {std::pair<QDialog*, char const*>(&classDlg, "categoryList"),
                {&updateDlg, "categoryList"}, {&memberDlg, "classList"}}) {
            dialog->show();
            auto const size = dialog->size();
            QCOMPARE(FaultsOf(*dialog), QStringList());
            StepDown(*dialog, list);
            QCoreApplication::processEvents();
            QCOMPARE(FaultsOf(*dialog), QStringList());
            QCOMPARE(dialog->size(), size); // it does not jump when lists come and go
        }
        large = std::make_unique<CLargeFont>();
    }
}

static CTestEntryOf<ClassDialogsTest> const g_entry;
#include "ClassDialogsTest.moc"
