#include "ui/Messages.h"

#include "tests/QtTests.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/WaitCursor.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

class MessagesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void showsWhatItIsTold();
    void returnsTheAnswer();
    void putsTheWaitCursorAway();
};

void MessagesTest::showsWhatItIsTold()
{
    auto const numbers = u"1234, "_s.repeated(1000); // too many for the screen
    CDialogUser const user({[](QDialog& dialog) {
                                auto const& box = dynamic_cast<QMessageBox&>(dialog);
                                QCOMPARE(box.textFormat(), Qt::PlainText);
                                QCOMPARE(box.informativeText(), u"Disk is full."_s);
                                QCOMPARE(box.icon(), QMessageBox::Warning);
                                QTest::keyClick(&dialog, Qt::Key_Return);
                            },
        [&](QDialog& dialog) {
            QCOMPARE(dynamic_cast<QMessageBox&>(dialog).detailedText(), numbers);
            QVERIFY(dialog.height() < 500);
            QTest::keyClick(&dialog, Qt::Key_Escape);
        }});
    Tell(nullptr, u"Error: <b>no</b> markup"_s, CMessageIcon::exclamation, u"Disk is full."_s);
    Tell(nullptr, u"Error"_s, CMessageIcon::none, numbers);
    QCOMPARE(user.Faults(), QStringList());
}

void MessagesTest::returnsTheAnswer()
{
    using CBox = QMessageBox;
    auto const click = [](CBox::StandardButton which, CBox::StandardButtons buttons) {
        return [=](QDialog& dialog) {
            auto& box = dynamic_cast<CBox&>(dialog);
            QCOMPARE(box.standardButtons(), buttons);
            QCOMPARE(box.icon(), CBox::NoIcon);
            box.button(which)->click();
        };
    };
    auto const press
        = [](Qt::Key key) { return [key](QDialog& box) { QTest::keyClick(&box, key); }; };
    for (auto const& [question, yes, no, isReturnYes] :
        {std::tuple(CQuestion::yesNo, CBox::Yes, CBox::No, true),
            {CQuestion::destroying, CBox::Yes, CBox::No, false},
            {CQuestion::okCancel, CBox::Ok, CBox::Cancel, true},
            {CQuestion::destroyingOkCancel, CBox::Ok, CBox::Cancel, false},
            {CQuestion::retryCancel, CBox::Retry, CBox::Cancel, true}}) {
        CDialogUser const user({click(yes, yes | no), click(no, yes | no), press(Qt::Key_Escape),
            press(Qt::Key_Return)});
        for (bool const answer : {true, false, false, isReturnYes}) {
            QCOMPARE(Ask(nullptr, u"Are you sure?"_s, question), answer);
        }
        QCOMPARE(user.Faults(), QStringList());
    }
}

void MessagesTest::putsTheWaitCursorAway()
{
    auto const isWaiting = [] {
        auto const* const cursor = QGuiApplication::overrideCursor();
        return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
    };
    CMessageRecorder messages;
    messages.m_fnWhileShown = [&] {
        QVERIFY(!isWaiting());
        CWaitCursor const nested; // what a handler behind the box may start and end
    };
    {
        CWaitCursor const outer;
        {
            CWaitCursor const inner;
            Ask(nullptr, u"Go on?"_s);
        }
        QVERIFY(isWaiting());
    }
    QVERIFY(!isWaiting() && messages.Texts().size() == 1);
}

static CTestEntryOf<MessagesTest> const g_entry;
#include "MessagesTest.moc"
