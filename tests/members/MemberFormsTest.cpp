#include "doc/CorvanaDoc.h"
#include "members/MemberEnrollPg.h"
#include "members/MemberGoalsPg.h"
#include "members/MemberMedHistPg.h"
#include "members/MemberProfilePg.h"
#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestCentre.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/MessageRecorder.h"

#include <QTabWidget>

#include <memory>

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

private:
    CTestCentre const m_centre;
    CMessageRecorder m_messages;
    CTestApp m_app;
    CCorvanaDoc m_doc{m_app};
};

void MemberFormsTest::pagesSuitKeyboardReaderAndFont_data()
{
    QTest::addColumn<bool>("isLarge");
    QTest::newRow("usual font") << false;
    QTest::newRow("large font") << true;
}

void MemberFormsTest::pagesSuitKeyboardReaderAndFont()
{
    QFETCH(bool const, isLarge);
    auto const large = isLarge ? std::make_unique<CLargeFont>() : nullptr;
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

CORVANA_TEST(MemberFormsTest);
#include "MemberFormsTest.moc"
