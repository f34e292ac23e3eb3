#include "ui/Messages.h"

#include "tests/QtTests.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/WaitCursor.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

/// Waits for a message box and calls action with it, once.
class CBoxAnswerer : public QObject
{
public:
    explicit CBoxAnswerer(std::function<void(QMessageBox&)> action)
        : m_fnAction(std::move(action))
    {
        startTimer(5);
    }

protected:
    void timerEvent(QTimerEvent* event) override
    {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box != nullptr && box->isVisible()) {
            killTimer(event->timerId());
            m_fnAction(*box);
            if (box->isVisible()) { // a check in the action failed before it answered
                box->reject();
            }
        }
    }

private:
    std::function<void(QMessageBox&)> const m_fnAction;
};

bool IsWaiting()
{
    auto const* const cursor = QGuiApplication::overrideCursor();
    return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
}

} // namespace

class MessagesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void showsWhatItIsTold();
    void returnsTheAnswer();
    void putsTheWaitCursorAway();
    void refusesWithFocusAndSelection();
};

void MessagesTest::showsWhatItIsTold()
{
    CBoxAnswerer const answerer([](QMessageBox& box) {
        QCOMPARE(box.windowTitle(), u"Corvana"_s);
        QCOMPARE(box.text(), u"Error: <b>no</b> markup"_s);
        QCOMPARE(box.textFormat(), Qt::PlainText);
        QCOMPARE(box.informativeText(), u"Disk is full."_s);
        QCOMPARE(box.icon(), QMessageBox::Warning);
        QCOMPARE(box.buttons().size(), 1);
        box.button(QMessageBox::Ok)->click();
    });
    Tell(nullptr, u"Error: <b>no</b> markup"_s, CMessageIcon::exclamation, u"Disk is full."_s);
    CBoxAnswerer const next([](QMessageBox& box) {
        QCOMPARE(box.icon(), QMessageBox::NoIcon);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    Tell(nullptr, u"Sorry"_s);
}

void MessagesTest::returnsTheAnswer()
{
    struct Case
    {
        CQuestion question;
        QMessageBox::StandardButton yes, no;
        bool isReturnYes = true; ///< which of them is the default
    };
    for (auto const& [question, yes, no, isReturnYes] :
        {Case{CQuestion::yesNo, QMessageBox::Yes, QMessageBox::No},
            Case{CQuestion::destroying, QMessageBox::Yes, QMessageBox::No, false},
            Case{CQuestion::okCancel, QMessageBox::Ok, QMessageBox::Cancel},
            Case{CQuestion::retryCancel, QMessageBox::Retry, QMessageBox::Cancel}}) {
        auto const answer = [](CQuestion asked, std::function<void(QMessageBox&)> const& action) {
            CBoxAnswerer const answerer([&](QMessageBox& box) {
                QCOMPARE(box.buttons().size(), 2);
                action(box);
            });
            return Ask(nullptr, u"Are you sure?"_s, asked);
        };
        QVERIFY(answer(question, [yes](QMessageBox& box) { box.button(yes)->click(); }));
        QVERIFY(!answer(question, [no](QMessageBox& box) { box.button(no)->click(); }));
        auto const press
            = [](Qt::Key key) { return [key](QMessageBox& box) { QTest::keyClick(&box, key); }; };
        QVERIFY(!answer(question, press(Qt::Key_Escape)));
        QCOMPARE(answer(question, press(Qt::Key_Return)), isReturnYes);
    }
}

void MessagesTest::putsTheWaitCursorAway()
{
    CMessageRecorder messages;
    bool waitingWhileShown = true;
    messages.m_fnWhileShown = [&] {
        waitingWhileShown = IsWaiting();
        CWaitCursor const nested; // what a handler behind the box may start and end
    };
    {
        CWaitCursor const outer;
        {
            CWaitCursor const inner;
            Ask(nullptr, u"Go on?"_s);
            QVERIFY(!waitingWhileShown);
        }
        QVERIFY(IsWaiting());
    }
    QVERIFY(!IsWaiting());
    Tell(nullptr, u"Done"_s);
    QVERIFY(!IsWaiting());
}

void MessagesTest::refusesWithFocusAndSelection()
{
    QWidget window;
    auto* const line = new QLineEdit(u"abc"_s, &window);
    auto* const spin = new QSpinBox(&window);
    spin->setValue(42);
    auto* const combo = new QComboBox(&window);
    combo->setEditable(true);
    combo->setEditText(u"xyz"_s);
    auto* const fixed = new QComboBox(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    CMessageRecorder messages;
    QVERIFY(!Refuse(spin, u"Enter an integer."_s));
    QVERIFY(spin->hasFocus());
    QCOMPARE(spin->findChild<QLineEdit*>()->selectedText(), u"42"_s);
    QVERIFY(!Refuse(line, {}));
    QVERIFY(line->hasFocus());
    QCOMPARE(line->selectedText(), u"abc"_s);
    Refuse(combo, {});
    QCOMPARE(combo->lineEdit()->selectedText(), u"xyz"_s);
    Refuse(fixed, {});
    QVERIFY(fixed->hasFocus());
    QCOMPARE(messages.Texts(), QStringList{u"Enter an integer."_s});
}

static CTestEntryOf<MessagesTest> const g_entry;
#include "MessagesTest.moc"
