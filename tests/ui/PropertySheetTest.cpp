#include "platform/qt/PropertySheet.h"

#include "tests/QtTests.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/FieldExchange.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabBar>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace
{

/// A page of one number from 1 to 99.
class CNumberPage : public CPropertyPage
{
public:
    CNumberPage() { (new QFormLayout(this))->addRow(u"Number:"_s, &m_field); }

    std::int32_t m_nNumber = 5;
    int m_nShown = 0;
    QLineEdit m_field;

protected:
    void ShowFields() override
    {
        ++m_nShown;
        m_field.setText(QString::number(m_nNumber));
    }
    bool TakeFields() override { return TakeNumber(m_field, {1, 99}, m_nNumber); }
};

/// Two such pages, shown.
class CNumberSheet : public CPropertySheet
{
public:
    CNumberSheet()
        : CPropertySheet(u"Numbers"_s)
    {
        AddPage(m_first, u"First"_s);
        AddPage(m_second, u"Second"_s);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }

    CNumberPage* const m_first = new CNumberPage;
    CNumberPage* const m_second = new CNumberPage;
};

} // namespace

class PropertySheetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pagesAreTakenWhenLeftAndWithOk();
    void formCheckFindsFaults();
};

void PropertySheetTest::pagesAreTakenWhenLeftAndWithOk()
{
    CMessageRecorder messages;
    CNumberSheet sheet;
    auto& tabs = Child<QTabWidget>(sheet, "tabs");
    auto& field = sheet.m_first->m_field;
    int tries = 0;
    sheet.SetFinish([&] { return ++tries == 2; });
    QVERIFY(field.hasFocus());
    Type(field, u"100"_s);
    messages.m_fnWhileShown = [&] { QCOMPARE(tabs.currentIndex(), 0); };
    QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(1).center());
    QCOMPARE(messages.Texts(), QStringList{u"Enter an integer between 1 and 99."_s});
    QVERIFY(sheet.m_first->isVisible() && field.hasFocus());
    QCOMPARE(field.selectedText(), u"100"_s);
    ClickOk(sheet);
    QVERIFY(messages.Texts().size() == 2 && tries == 0);
    QCOMPARE(sheet.m_first->m_nNumber, 5);
    QCOMPARE(sheet.m_second->m_nShown, 0);

    sheet.m_second->m_nNumber = 77; // it would be refused, but is not opened yet
    QTest::keyClicks(&field, u"3"_s);
    ClickOk(sheet);
    QVERIFY(sheet.isVisible() && tries == 1); // what is to be done last was not
    QTest::keyClicks(&field, u"4"_s); // behind the 3
    QTest::keyClick(&field, Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(tabs.currentIndex(), 1);
    QCOMPARE(sheet.m_first->m_nNumber, 34);
    QCOMPARE(sheet.m_second->m_field.text(), u"77"_s);
    Type(sheet.m_second->m_field, u"8"_s);
    tabs.setCurrentIndex(0);
    QCOMPARE(sheet.m_second->m_nNumber, 8);
    sheet.ShowPage(sheet.m_second);
    QCOMPARE(sheet.m_first->m_nShown + sheet.m_second->m_nShown, 2);
    QCOMPARE(FaultsOf(sheet), QStringList());
    ClickOk(sheet);
    QCOMPARE(sheet.result(), int(QDialog::Accepted));

    sheet.show();
    Type(field, {});
    ClickCancel(sheet); // takes nothing
    QVERIFY(!sheet.isVisible() && messages.Texts().size() == 2);
}

void PropertySheetTest::formCheckFindsFaults()
{
    QWidget form;
    QLabel label(u"&Name"_s, &form), again(u"&Name"_s, &form), cut(u"A text that is cut"_s, &form);
    QLabel nowhere(u"&To"_s, &form);
    QLineEdit lower(&form), upper(&form);
    QPushButton const silent(&form);
    label.setBuddy(&lower);
    again.setBuddy(&lower);
    nowhere.setBuddy(&cut);
    lower.move(0, 100);
    cut.setFixedWidth(10);
    form.show();
    QCOMPARE(FaultsOf(form),
        (QStringList{u"the window has no title"_s, u"Alt+N stands in '&Name' and in '&Name'"_s,
            u"'&To' leads nowhere"_s, u"QLabel is cut"_s, u"QLineEdit has no label"_s,
            u"QPushButton has no text"_s, u"Tab jumps from QLineEdit to QLineEdit"_s}));
}

static CTestEntryOf<PropertySheetTest> const g_entry;
#include "PropertySheetTest.moc"
