#include "doc/UpdateClassDlg.h"
#include "platform/qt/DropDown.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/UserSteps.h"

#include <QRadioButton>

using namespace Qt::StringLiterals;

class ClassDialogsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void updateIsTakenOrRefused();
};

void ClassDialogsTest::updateIsTakenOrRefused()
{
    CLargeFont const large;
    CTestDesk desk;
    CTestCentre::Run("UPDATE defaults SET grade_status = 2, re_eval_bonuses = 3, "
                     "other_bonuses = 4, flags = 0x20");
    QVERIFY(desk.m_doc.OnNewDocument());
    CUpdateClassDlg dialog(desk.m_doc);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QCOMPARE(FaultsOf(dialog), QStringList());
    QVERIFY(Child<QRadioButton>(dialog, "orientYesButton").isChecked());
    QCOMPARE(Texts(dialog, u"reEvalSpin otherSpin"_s), u"3|4"_s);
    QCOMPARE(Child<CDropDown>(dialog, "gradeList").currentText(), u"Satisfactory"_s);
    QVERIFY(Child<QRadioButton>(dialog, "transferButton").isChecked());
    desk.Refuses(dialog,
        {{u"reEvalSpin=100 otherSpin=100"_s, u"Enter an integer between 0 and 99. @reEvalSpin"_s},
            {u"reEvalSpin=1 otherSpin="_s, u"Enter an integer. @otherSpin"_s},
            {u"reEvalSpin=99 otherSpin=0"_s,
                u"Error: select a category, course, and/or section @categoryList"_s}});
    QCOMPARE(dialog.m_class.reEvalBonuses, 3);
    auto const size = dialog.size();
    Do(dialog, u"categoryList=1"_s);
    QCOMPARE(FaultsOf(dialog), QStringList());
    QCOMPARE(dialog.size(), size); // it does not jump when lists come and go
    Do(dialog, u"orientNoButton gradeList=Withdrawn deleteButton"_s);
    QCOMPARE(desk.Ok(dialog), QString());
    QVERIFY(!dialog.m_bTransfer);
    CClassSlot const taken
        = {"Staff", "Wellness", "Morning", CDAODef::gsWithdrawn, false, 99, 0, 0};
    QVERIFY(dialog.m_class == taken);
}

static CTestEntryOf<ClassDialogsTest> const g_entry;
#include "ClassDialogsTest.moc"
