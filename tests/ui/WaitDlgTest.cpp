#include "ui/WaitDlg.h"

#include "tests/QtTests.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "ui/ProgressDlg.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include <chrono>
#include <memory>
#include <thread>
#include <tuple>

using namespace Qt::StringLiterals;

namespace
{

/// Takes a step, long enough after the one before for the bar to be brought up to date.
void StepSlowly(CProgressDlg& progress)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    progress.Step();
}

} // namespace

class WaitDlgTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void isOnTheScreenAtOnce();
    void countsIn16Bits();
    void isNotPaintedAtEveryStep();
    void letsNoClickThroughButThatOfItsStopButton();

private:
    std::unique_ptr<QMainWindow> m_window;
};

void WaitDlgTest::init()
{
    m_window = std::make_unique<QMainWindow>();
    m_window->setCentralWidget(new QPushButton(u"Member"_s));
    m_window->setGeometry(100, 100, 400, 300);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void WaitDlgTest::isOnTheScreenAtOnce()
{
    QDialog dialog(m_window.get());
    dialog.setGeometry(420, 320, 200, 200);
    dialog.show();
    CWaitDlg const wait(u"Printing, please wait..."_s);
    CProgressDlg const progress(&dialog, u"Loading members, please wait..."_s, 10);
    QVERIFY(wait.windowHandle()->isExposed() && !wait.windowTitle().isEmpty());
    for (auto const& [window, owner] : {std::pair<QWidget const*, QWidget const*>(
                                            &wait, m_window.get()), // owns what nobody else does
             {&progress, &dialog}}) {
        auto const offset = window->frameGeometry().center() - owner->frameGeometry().center();
        QVERIFY(offset.manhattanLength() <= 2);
    }
}

void WaitDlgTest::countsIn16Bits()
{
    // A maximum of 0 would be a busy bar to Qt: the range is 1 and the bar never moves.
    for (auto const& [count, maximum, afterOne, afterTwo, afterThree] :
        {std::tuple(65535, 65535, 1, 2, 3), {65538, 2, 1, 2, 1}, {65536, 1, 0, 0, 0}}) {
        CProgressDlg progress(nullptr, u"Loading members, please wait..."_s, count);
        auto const& bar = Child<QProgressBar>(progress, "progressBar");
        QCOMPARE(bar.maximum(), maximum);
        for (int const after : {afterOne, afterTwo, afterThree}) {
            StepSlowly(progress);
            QCOMPARE(bar.value(), after);
        }
    }
}

void WaitDlgTest::isNotPaintedAtEveryStep()
{
    constexpr int kSteps = 100'000;
    CProgressDlg progress(nullptr, u"Loading members, please wait..."_s, kSteps);
    QSignalSpy const changes(
        &Child<QProgressBar>(progress, "progressBar"), &QProgressBar::valueChanged);
    QElapsedTimer clock;
    clock.start();
    for (int step = 0; step < kSteps; ++step) {
        progress.Step();
    }
    // To repaint at every step would take over ten seconds.
    QVERIFY(changes.size() <= clock.elapsed() * 60 / 1000 + 1);
}

void WaitDlgTest::letsNoClickThroughButThatOfItsStopButton()
{
    QSignalSpy const clicks(m_window->findChild<QPushButton*>(), &QPushButton::clicked);
    auto const use = [&] {
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, QPoint(200, 150));
        QTest::keyClick(m_window->windowHandle(), Qt::Key_Space);
    };
    use();
    QCOMPARE(clicks.size(), 2); // without a wait window both arrive
    {
        CWaitDlg const wait(u"Printing, please wait..."_s);
        use();
    }
    {
        CProgressDlg progress(nullptr, u"Loading members, please wait..."_s, 10);
        use();
        QTest::keyClick(&progress, Qt::Key_Escape);
        QVERIFY(!progress.close());
        StepSlowly(progress);
        QVERIFY(progress.isVisible());
    }
    // By the mouse, or a key. Enter may be the one of the question before.
    for (auto const& [key, isStopped] : {std::pair(Qt::Key(), true), {Qt::Key_Escape, true},
             {Qt::Key_Space, true}, {Qt::Key_Return, false}}) {
        CProgressDlg progress(m_window.get(), u"Updating, please wait..."_s, 10, CStoppable::yes);
        auto& stop = Child<QPushButton>(progress, "stopButton");
        QCOMPARE(FaultsOf(progress), QStringList());
        QTest::mouseClick(progress.windowHandle(), Qt::LeftButton, {}, QPoint(2, 2));
        use();
        QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
        progress.close();
        StepSlowly(progress);
        QVERIFY(!progress.IsStopped());
        auto const place = stop.mapTo(&progress, stop.rect().center());
        key == Qt::Key() ? QTest::mouseClick(progress.windowHandle(), Qt::LeftButton, {}, place)
                         : QTest::keyClick(progress.windowHandle(), key);
        StepSlowly(progress);
        QCOMPARE(progress.IsStopped() && !stop.isEnabled(), isStopped);
    }
    QTest::qWait(0);
    QCOMPARE(clicks.size(), 2);
    use();
    QCOMPARE(clicks.size(), 4);
}

static CTestEntryOf<WaitDlgTest> const g_entry;
#include "WaitDlgTest.moc"
