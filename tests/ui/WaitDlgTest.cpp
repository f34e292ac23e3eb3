#include "ui/WaitDlg.h"
#include "tests/QtTests.h"
#include "ui/ControlID.h"
#include "ui/ProgressDlg.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include <stdexcept>
#include <thread>

using namespace Qt::StringLiterals;

namespace
{

QProgressBar const& BarOf(CProgressDlg const& progress)
{
    return *progress.findChild<QProgressBar*>();
}

/// Steps, each long enough after the one before for the bar to be brought up to date.
void StepSlowly(CProgressDlg& progress, int steps)
{
    for (int step = 0; step < steps; ++step) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        progress.Step();
    }
}

/// Keeps count of how often a widget is painted.
class CPaintCounter : public QObject
{
public:
    int m_nPaints = 0;

    bool eventFilter(QObject* object, QEvent* event) override
    {
        m_nPaints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(object, event);
    }
};

} // namespace

class WaitDlgTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void isOnTheScreenAtOnce();
    void countsIn16Bits();
    void isNotPaintedAtEveryStep();
    void letsNoClickThrough();
    void isGoneOnEveryPath();

private:
    void ClickMainWindow();

    std::unique_ptr<QMainWindow> m_window;
    QPushButton* m_pButton = nullptr;
    int m_nClicks = 0;
};

void WaitDlgTest::init()
{
    m_window = std::make_unique<QMainWindow>();
    m_pButton = new QPushButton(u"Member"_s);
    m_window->setCentralWidget(m_pButton);
    m_window->setGeometry(100, 100, 400, 300);
    m_nClicks = 0;
    connect(m_pButton, &QPushButton::clicked, this, [this] { ++m_nClicks; });
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void WaitDlgTest::ClickMainWindow()
{
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, QPoint(200, 150));
}

void WaitDlgTest::isOnTheScreenAtOnce()
{
    auto const offset = [](QWidget const& window, QWidget const& owner) {
        return (window.frameGeometry().center() - owner.frameGeometry().center()).manhattanLength();
    };
    {
        CWaitDlg const wait(u"Printing, please wait..."_s);
        QVERIFY(wait.isVisible());
        QVERIFY(wait.windowHandle()->isExposed());
        QVERIFY(wait.windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(!wait.windowTitle().isEmpty());
        QVERIFY(offset(wait, *m_window) <= 2); // the main window owns what nobody else does
        auto const& text = *wait.findChild<QLabel*>();
        QCOMPARE(text.text(), u"Printing, please wait..."_s);
        QCOMPARE(ControlID(&text), 1302);
    }
    QDialog dialog(m_window.get());
    dialog.setGeometry(420, 320, 200, 200);
    dialog.show();
    CProgressDlg const progress(&dialog, u"Loading members, please wait..."_s, 10);
    QVERIFY(offset(progress, dialog) <= 2);
    QCOMPARE(ControlID(progress.findChild<QLabel*>()), 1267);
    QCOMPARE(ControlID(&BarOf(progress)), 1265);
}

void WaitDlgTest::countsIn16Bits()
{
    // A maximum of 0 would be a busy bar to Qt: the range is 1 and the bar never moves.
    for (auto const& [count, maximum, afterOneStep] :
        {std::tuple(65535, 65535, 1), {65537, 1, 1}, {65536, 1, 0}, {0, 1, 0}}) {
        CProgressDlg progress(nullptr, u"Loading members, please wait..."_s, count);
        auto const& bar = BarOf(progress);
        QCOMPARE(bar.maximum(), maximum);
        QCOMPARE(bar.value(), 0);
        StepSlowly(progress, 1);
        QCOMPARE(bar.value(), afterOneStep);
    }
    CProgressDlg progress(nullptr, u"Loading members, please wait..."_s, 65536 + 2);
    StepSlowly(progress, 2);
    QCOMPARE(BarOf(progress).value(), 2);
    StepSlowly(progress, 1);
    QCOMPARE(BarOf(progress).value(), 1); // starts over
}

void WaitDlgTest::isNotPaintedAtEveryStep()
{
    constexpr int kSteps = 100'000;
    CPaintCounter paints;
    QElapsedTimer clock;
    {
        CProgressDlg progress(nullptr, u"Loading members, please wait..."_s, kSteps);
        progress.findChild<QProgressBar*>()->installEventFilter(&paints);
        clock.start();
        for (int step = 0; step < kSteps; ++step) {
            progress.Step();
        }
    }
    // To repaint at every step would take over ten seconds.
    QVERIFY(paints.m_nPaints <= clock.elapsed() * 60 / 1000 + 2);
}

void WaitDlgTest::letsNoClickThrough()
{
    ClickMainWindow();
    QCOMPARE(m_nClicks, 1); // the click as such arrives
    {
        CWaitDlg const wait(u"Printing, please wait..."_s);
        ClickMainWindow();
        QTest::keyClick(m_window->windowHandle(), Qt::Key_Space);
    }
    {
        CProgressDlg progress(nullptr, u"Loading members, please wait..."_s, 10);
        StepSlowly(progress, 1);
        ClickMainWindow();
        QTest::keyClick(&progress, Qt::Key_Escape);
        QVERIFY(!progress.close());
        StepSlowly(progress, 1);
        ClickMainWindow();
        QVERIFY(progress.isVisible());
    }
    QTest::qWait(0);
    QCOMPARE(m_nClicks, 1);
    ClickMainWindow();
    QCOMPARE(m_nClicks, 2);
}

void WaitDlgTest::isGoneOnEveryPath()
{
    try {
        CWaitDlg const wait(u"Printing, please wait..."_s);
        throw std::runtime_error("printer on fire");
    } catch (std::runtime_error const&) {
    }
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    QVERIFY(m_window->findChildren<QDialog*>().isEmpty());
    ClickMainWindow();
    QCOMPARE(m_nClicks, 1);
}

static CTestEntryOf<WaitDlgTest> const g_entry;
#include "WaitDlgTest.moc"
