#include "platform/qt/PropertySheet.h"

#include "tests/QtTests.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/FieldExchange.h"
#include "ui/Messages.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace
{

/// A page of one number from 1 to 9.
class CNumberPage : public CPropertyPage
{
public:
    explicit CNumberPage(QString const& name)
        : m_pField(new QLineEdit)
    {
        setObjectName(name);
        (new QFormLayout(this))->addRow(u"Number:"_s, m_pField);
    }

    std::int32_t m_nNumber = 5;
    int m_nShown = 0;

    QLineEdit& Field() const { return *m_pField; }

protected:
    void ShowFields() override
    {
        ++m_nShown;
        m_pField->setText(QString::number(m_nNumber));
    }
    bool TakeFields() override { return TakeNumber(*m_pField, {1, 9}, m_nNumber); }

private:
    QLineEdit* const m_pField;
};

} // namespace

class PropertySheetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void pagesAreShownWhenOpened();
    void pagesAreNotCut();
    void aPageWithAFaultIsNotLeft();
    void okChecksThePageInFrontAndCancelNone();
    void aFailedFinishKeepsTheSheetOpen();
    void formCheckFindsFaults();

private:
    std::unique_ptr<CPropertySheet> m_sheet;
    CNumberPage* m_first = nullptr;
    CNumberPage* m_second = nullptr;
    QTabWidget* m_tabs = nullptr;
    std::unique_ptr<CMessageRecorder> m_messages;
};

void PropertySheetTest::init()
{
    m_messages = std::make_unique<CMessageRecorder>();
    m_sheet = std::make_unique<CPropertySheet>(u"Numbers"_s);
    m_first = new CNumberPage(u"first"_s);
    m_second = new CNumberPage(u"second"_s);
    m_sheet->AddPage(m_first, u"First"_s);
    m_sheet->AddPage(m_second, u"Second"_s);
    m_tabs = m_sheet->findChild<QTabWidget*>();
    m_sheet->show();
    QVERIFY(QTest::qWaitForWindowActive(m_sheet.get()));
}

void PropertySheetTest::cleanup()
{
    m_sheet.reset();
    m_messages.reset();
}

void PropertySheetTest::pagesAreShownWhenOpened()
{
    QVERIFY(m_first->Field().hasFocus());
    QCOMPARE(m_first->m_nShown, 1);
    QCOMPARE(m_second->m_nShown, 0);
    m_second->m_nNumber = 7;
    QTest::keyClick(&m_first->Field(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(m_tabs->currentIndex(), 1);
    QCOMPARE(m_second->Field().text(), u"7"_s);
    Type(m_second->Field(), u"8"_s);
    m_tabs->setCurrentIndex(0);
    m_tabs->setCurrentIndex(1);
    QCOMPARE(m_second->m_nShown, 1);
    QCOMPARE(m_second->Field().text(), u"8"_s);
    QCOMPARE(m_second->m_nNumber, 8);
    QCOMPARE(FaultsOf(*m_sheet).join(u"; "_s), QString());
}

void PropertySheetTest::pagesAreNotCut()
{
    CPropertySheet sheet(u"Wide"_s);
    auto* const page = new CNumberPage(u"wide"_s);
    auto const width = sheet.screen()->availableSize().width() * 3 / 4;
    page->Field().setMinimumWidth(width - 100);
    sheet.AddPage(page, u"Wide"_s);
    sheet.show();
    QVERIFY(page->sizeHint().width() <= page->parentWidget()->width());
}

void PropertySheetTest::aPageWithAFaultIsNotLeft()
{
    Type(m_first->Field(), u"10"_s);
    m_messages->m_fnWhileShown = [&] { QCOMPARE(m_tabs->currentIndex(), 0); };
    QTest::mouseClick(m_tabs->tabBar(), Qt::LeftButton, {}, m_tabs->tabBar()->tabRect(1).center());
    QCOMPARE(m_messages->Texts(), QStringList{u"Enter an integer between 1 and 9."_s});
    QCOMPARE(m_tabs->currentIndex(), 0);
    QVERIFY(m_first->isVisible());
    QVERIFY(m_first->Field().hasFocus());
    QCOMPARE(m_first->Field().selectedText(), u"10"_s);
    QCOMPARE(m_first->m_nNumber, 5);
    QCOMPARE(m_second->m_nShown, 0);
}

void PropertySheetTest::okChecksThePageInFrontAndCancelNone()
{
    m_tabs->setCurrentIndex(1);
    Type(m_second->Field(), u""_s);
    ClickOk(*m_sheet);
    QVERIFY(m_sheet->isVisible());
    QCOMPARE(m_messages->Texts(), QStringList{u"Enter an integer."_s});
    QVERIFY(m_second->Field().hasFocus());
    ClickCancel(*m_sheet);
    QVERIFY(!m_sheet->isVisible());
    QCOMPARE(m_second->m_nNumber, 5);
    QCOMPARE(m_messages->Texts().size(), 1);
}

void PropertySheetTest::aFailedFinishKeepsTheSheetOpen()
{
    m_second->m_nNumber = 77; // it would be refused, but is not opened
    int tries = 0;
    m_sheet->SetFinish([&] { return ++tries == 2; });
    Type(m_first->Field(), u"4"_s);
    ClickOk(*m_sheet);
    QVERIFY(m_sheet->isVisible());
    QCOMPARE(m_first->Field().text(), u"4"_s);
    ClickOk(*m_sheet);
    QCOMPARE(m_sheet->result(), int(QDialog::Accepted));
    QCOMPARE(tries, 2);
    QCOMPARE(m_first->m_nNumber, 4);
    QCOMPARE(m_second->m_nNumber, 77);
}

void PropertySheetTest::formCheckFindsFaults()
{
    QWidget form;
    auto* const layout = new QGridLayout(&form);
    auto* const lower = new QLineEdit;
    auto* const upper = new QLineEdit;
    for (auto const row : {0, 1}) {
        auto* const label = new QLabel(u"&Name"_s);
        label->setBuddy(lower);
        layout->addWidget(label, row, 0);
    }
    auto* const cut = new QLabel(u"A text that is cut"_s);
    cut->setFixedWidth(10);
    layout->addWidget(cut, 2, 0);
    layout->addWidget(lower, 1, 1);
    layout->addWidget(upper, 0, 1);
    form.show();
    auto const faults = FaultsOf(form);
    QCOMPARE(faults.size(), 5);
    QCOMPARE(faults[0], u"the window has no title"_s);
    QCOMPARE(faults[1], u"QLineEdit has no label"_s);
    QCOMPARE(faults[2], u"Alt+N stands in '&Name' and in '&Name'"_s);
    QCOMPARE(faults[3], u"Tab jumps from QLineEdit to QLineEdit"_s);
    QCOMPARE(faults[4], u"QLabel is cut"_s);
}

static CTestEntryOf<PropertySheetTest> const g_entry;
#include "PropertySheetTest.moc"
