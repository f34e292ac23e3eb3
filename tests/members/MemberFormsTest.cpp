#include "doc/CorvanaDoc.h"
#include "members/MemberEnrollPg.h"
#include "members/MemberGoalsPg.h"
#include "members/MemberMedHistPg.h"
#include "members/MemberProfilePg.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestCentre.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/MessageRecorder.h"

#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace
{

/// All pages in one sheet, as the member editor shows them.
struct CForms
{
    explicit CForms(CCorvanaDoc& doc)
        : m_enroll(*new CMemberEnrollPg(doc))
    {
        m_profile.m_lMemberID = m_profile.m_lWorkoutNum = 5;
        m_profile.m_strFirstName = "Ann";
        m_profile.m_strLastName = "Archer";
        m_enroll.m_lstSlots[0].category = "Staff";
        m_sheet.AddPage(&m_profile, u"Profile"_s);
        m_sheet.AddPage(&m_enroll, u"Enrollment"_s);
        m_sheet.AddPage(&m_goals, u"Fitness Goals"_s);
        m_sheet.AddPage(&m_medHist, u"Medical History"_s);
    }

    CPropertySheet m_sheet{u"Member ID 5"_s};
    CMemberProfilePg& m_profile = *new CMemberProfilePg;
    CMemberEnrollPg& m_enroll;
    CMemberGoalsPg& m_goals = *new CMemberGoalsPg;
    CMemberMedHistPg& m_medHist = *new CMemberMedHistPg;
};

} // namespace

class MemberFormsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pagesSuitKeyboardReaderAndFont_data();
    void pagesSuitKeyboardReaderAndFont();
    void unopenedPagesKeepTheirValues();

private:
    CTestCentre const m_centre;
    CMessageRecorder m_messages;
    CTestApp m_app;
    CCorvanaDoc m_doc{m_app};
};

void MemberFormsTest::pagesSuitKeyboardReaderAndFont_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("usual font") << 1.0;
    QTest::newRow("large font") << 1.25;
}

void MemberFormsTest::pagesSuitKeyboardReaderAndFont()
{
    QFETCH(double const, scale);
    auto const usual = QApplication::font();
    auto font = usual;
    font.setPointSizeF(usual.pointSizeF() * scale);
    QApplication::setFont(font);
    auto const restore = qScopeGuard([&] { QApplication::setFont(usual); });

    CForms forms(m_doc);
    forms.m_sheet.show();
    QVERIFY(QTest::qWaitForWindowActive(&forms.m_sheet));
    auto& tabs = Child<QTabWidget>(forms.m_sheet, "tabs");
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        QCOMPARE(tabs.currentIndex(), page);
        QCoreApplication::processEvents();
        QCOMPARE(FaultsOf(forms.m_sheet).join(u"; "_s), QString());
    }
    QVERIFY(m_messages.Texts().isEmpty());
}

void MemberFormsTest::unopenedPagesKeepTheirValues()
{
    CForms forms(m_doc);
    forms.m_enroll.m_lstSlots[0].category = ""; // would be refused
    forms.m_enroll.m_lstSlots[2].otherBonuses = 500;
    forms.m_enroll.m_nEnrollPer = 9;
    forms.m_goals.SetMask(0x81);
    forms.m_medHist.SetMask(0x100001);
    forms.m_sheet.show();
    ClickOk(forms.m_sheet);
    QCOMPARE(forms.m_sheet.result(), int(QDialog::Accepted));
    QCOMPARE(forms.m_enroll.m_lstSlots[2].otherBonuses, 500);
    QCOMPARE(forms.m_enroll.m_nEnrollPer, 9);
    QCOMPARE(forms.m_goals.Mask(), 0x81U);
    QCOMPARE(forms.m_medHist.Mask(), 0x100001U);
}

QTEST_MAIN(MemberFormsTest)
#include "MemberFormsTest.moc"
