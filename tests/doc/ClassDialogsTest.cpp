#include "doc/ClassDlg.h"
#include "doc/CorvanaDoc.h"
#include "doc/MemberClassDlg.h"
#include "doc/UpdateClassDlg.h"
#include "platform/qt/DropDown.h"
#include "platform/qt/SpinField.h"
#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/MessageRecorder.h"

#include <QLineEdit>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace
{

/// Goes down the closed list by key.
void StepDown(QDialog const& dialog, char const* list, int steps = 1)
{
    for (int i = 0; i < steps; ++i) {
        QTest::keyClick(&Child<CDropDown>(dialog, list), Qt::Key_Down);
    }
}

} // namespace

class ClassDialogsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void classIsTakenOrRefused();
    void memberClassIsTaken();
    void updateIsTakenOrRefused();
    void formsAreFitForEveryone();

private:
    std::unique_ptr<CTestCentre> m_pCentre;
    std::unique_ptr<CMessageRecorder> m_pMessages;
    CTestApp m_app;
    std::unique_ptr<CCorvanaDoc> m_pDoc;
};

void ClassDialogsTest::init()
{
    m_pCentre = std::make_unique<CTestCentre>();
    m_pMessages = std::make_unique<CMessageRecorder>();
    CTestCentre::Run("INSERT INTO categories (number, name) VALUES (5, 'Guests')");
    CTestCentre::Run("UPDATE defaults SET grade_status = 2, re_eval_bonuses = 3, "
                     "other_bonuses = 4, flags = 0x20");
    m_pDoc = std::make_unique<CCorvanaDoc>(m_app);
    QVERIFY(m_pDoc->OnNewDocument());
}

void ClassDialogsTest::cleanup()
{
    m_pDoc.reset();
    m_pMessages.reset();
    m_pCentre.reset();
}

void ClassDialogsTest::classIsTakenOrRefused()
{
    CClassDlg dialog(*m_pDoc);
    auto const taken = [&] {
        return dialog.m_strCategory + "|" + dialog.m_strCourse + "|" + dialog.m_strSection;
    };
    dialog.m_strSection = "left over";
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto const size = dialog.size();
    Child<QDialogButtonBox>(dialog, "buttonBox").button(QDialogButtonBox::Ok)->setFocus();
    ClickOk(dialog);
    QVERIFY(dialog.isVisible());
    QCOMPARE(
        m_pMessages->Texts(), QStringList{u"Error: select a category, course, and/or section"_s});
    QVERIFY(Child<CDropDown>(dialog, "categoryList").hasFocus());
    QCOMPARE(taken(), std::string("||left over"));

    StepDown(dialog, "categoryList"); // Staff
    ClickOk(dialog);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(taken(), std::string("Staff|Wellness|Morning"));
    dialog.show(); // a fresh choice again
    QCOMPARE(Child<CDropDown>(dialog, "categoryList").currentText(), QString());
    StepDown(dialog, "categoryList", 3); // Guests
    QCOMPARE(dialog.size(), size); // it does not jump when lists come and go
    ClickOk(dialog);
    QCOMPARE(taken(), std::string("Guests||"));
}

void ClassDialogsTest::memberClassIsTaken()
{
    AddMember(12);
    CMemberClassDlg dialog(*m_pDoc);
    dialog.m_lMemberID = 12;
    dialog.m_bWithUnknown = true;
    dialog.m_bWithAll = true;
    auto const all = std::string("All Categories/Courses/Sections");
    for (int const count : {0, 3}) { // without classes it keeps what was asked for
        dialog.show();
        QCOMPARE(Child<CDropDown>(dialog, "classList").count(), count);
        ClickOk(dialog);
        QCOMPARE(dialog.m_nClassIndex, 101);
        QCOMPARE(dialog.m_strClass, all);
        if (count == 0) {
            AddClass(12, 2, "'Staff', 'Wellness', 'Morning'");
        }
    }
    dialog.show();
    StepDown(dialog, "classList");
    ClickOk(dialog);
    QCOMPARE(dialog.m_nClassIndex, 2);
    QCOMPARE(dialog.m_strClass, std::string("Staff Wellness Morning"));
}

void ClassDialogsTest::updateIsTakenOrRefused()
{
    CUpdateClassDlg dialog(*m_pDoc);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto& reEval = Child<CSpinField>(dialog, "reEvalSpin");
    auto& other = Child<CSpinField>(dialog, "otherSpin");
    QVERIFY(Child<QRadioButton>(dialog, "orientYesButton").isChecked());
    QCOMPARE(reEval.text() + u' ' + other.text(), u"3 4"_s);
    QCOMPARE(Child<CDropDown>(dialog, "gradeList").currentText(), u"Satisfactory"_s);
    QVERIFY(Child<QRadioButton>(dialog, "transferButton").isChecked());
    auto const range = u"Enter an integer between 0 and 99."_s;
    for (auto const& [first, second, message, focus] :
        {std::tuple(u"100"_s, u"100"_s, range, u"reEvalSpin"_s),
            {u"1"_s, u""_s, u"Enter an integer."_s, u"otherSpin"_s},
            {u"99"_s, u"0"_s, u"Error: select a category, course, and/or section"_s,
                u"categoryList"_s}}) {
        Type(reEval, first);
        Type(other, second);
        ClickOk(dialog);
        QVERIFY(dialog.isVisible());
        QCOMPARE(m_pMessages->Texts().constLast(), message);
        QCOMPARE(dialog.focusWidget()->objectName(), focus);
        QCOMPARE(dialog.m_class.reEvalBonuses, 3);
    }
    StepDown(dialog, "categoryList");
    Child<QRadioButton>(dialog, "orientNoButton").click();
    StepDown(dialog, "gradeList", 2);
    Child<QRadioButton>(dialog, "deleteButton").click();
    ClickOk(dialog);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(!dialog.m_bTransfer);
    CClassSlot const taken
        = {"Staff", "Wellness", "Morning", CDAODef::gsWithdrawn, false, 99, 0, 0};
    QVERIFY(dialog.m_class == taken);
}

void ClassDialogsTest::formsAreFitForEveryone()
{
    auto const check = [this] {
        CClassDlg classDlg(*m_pDoc);
        CUpdateClassDlg updateDlg(*m_pDoc);
        for (auto* const dialog : std::initializer_list<QDialog*>{&classDlg, &updateDlg}) {
            dialog->show();
            auto const size = dialog->size();
            QCOMPARE(FaultsOf(*dialog), QStringList());
            StepDown(*dialog, "categoryList");
            QCoreApplication::processEvents();
            QVERIFY(Child<CDropDown>(*dialog, "sectionList").isVisible());
            QCOMPARE(FaultsOf(*dialog), QStringList());
            QCOMPARE(dialog->size(), size);
        }
        CMemberClassDlg memberDlg(*m_pDoc);
        memberDlg.m_lMemberID = 12;
        memberDlg.show();
        QCOMPARE(FaultsOf(memberDlg), QStringList());
    };
    AddMember(12);
    AddClass(12, 2, "'A category with a long name', 'A course with a long name', 'and more'");
    check();
    CLargeFont const large;
    check();
}

static CTestEntryOf<ClassDialogsTest> const g_entry;
#include "ClassDialogsTest.moc"
