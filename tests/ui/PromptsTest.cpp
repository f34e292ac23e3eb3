#include "platform/qt/DateField.h"
#include "tests/QtTests.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/Convert.h"
#include "ui/DateDlg.h"
#include "ui/FileDialogs.h"
#include "ui/MemberIDDlg.h"
#include "ui/WaitCursor.h"

#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

class PromptsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void messagesShowWhatTheyAreTold();
    void questionsReturnTheAnswer();
    void messagesPutTheWaitCursorAway();
    void memberIDsAreChecked();
    void datesAreTakenUpToToday();
    void filesAreAskedForInADialog();
    void formCheckFindsFaults();

private:
    CLargeFont const m_large; // the forms are fit for everyone then too
};

void PromptsTest::messagesShowWhatTheyAreTold()
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

void PromptsTest::questionsReturnTheAnswer()
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

void PromptsTest::messagesPutTheWaitCursorAway()
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

void PromptsTest::memberIDsAreChecked()
{
    CTestCentre const centre;
    AddMember(12);
    RunOnMembers("UPDATE members SET workout_number = 512");
    CMessageRecorder const messages;
    CMemberIDDlg dialog;
    dialog.m_bMustExist = true;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QCOMPARE(FaultsOf(dialog), QStringList());
    auto& edit = Child<QLineEdit>(dialog, "memberIDEdit");
    QCOMPARE(edit.selectedText(), u"0"_s); // which typing replaces
    for (auto const& [text, message] :
        {std::pair(u"512"_s, // a workout number is no ID
             u"Sorry, there is no member in the database\nthat matches ID 512."_s),
            {u"0"_s, u"Enter an integer between 1 and 999999999."_s}}) {
        QTest::keyClicks(&edit, text);
        QTest::keyClick(&edit, Qt::Key_Return); // OK is the default button
        QCOMPARE(messages.Texts().constLast(), message);
        QVERIFY(dialog.isVisible() && edit.hasFocus());
        QCOMPARE(edit.selectedText(), edit.text());
        QCOMPARE(dialog.m_lMemberID, 0);
    }
    QTest::keyClicks(&edit, u"-1a2"_s); // other keys than digits go nowhere
    ClickOk(dialog);
    QVERIFY(!dialog.isVisible() && dialog.m_lMemberID == 12);

    CDatabaseSession::Get().ShutDown();
    std::filesystem::remove(centre.Folder() / "member.mdb");
    dialog.show();
    ClickOk(dialog);
    QCOMPARE(messages.Texts().constLast(), u"Error: member ID 12 could not be looked up."_s);
    QVERIFY(messages.Messages().constLast().m_strDetail.contains(u"member.mdb"_s));
    dialog.m_bMustExist = false;
    Type(edit, u"999999999"_s);
    ClickOk(dialog);
    QCOMPARE(dialog.m_lMemberID, 999999999);
}

void PromptsTest::datesAreTakenUpToToday()
{
    CEFOleDateTime const now(2026, 11, 16, 23, 59, 58);
    CEFOleDateTime::SetClock(now);
    CMessageRecorder const messages;
    for (auto const& [days, noFuture, accepted] :
        {std::tuple(0, true, true), {1, true, false}, {1, false, true}, {-365 * 500, true, true}}) {
        CDateDlg dialog;
        QVERIFY(std::exchange(dialog.m_bNoFuture, noFuture));
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(FaultsOf(dialog), QStringList());
        auto& edit = Child<CDateField>(dialog, "dateEdit");
        auto const day = edit.Date().addDays(days);
        QCOMPARE(edit.selectedText(), edit.text()); // typing replaces it at once
        Type(edit, day.toString(u"M/d/yyyy"_s));
        Child<QDialogButtonBox>(dialog, "buttonBox").button(QDialogButtonBox::Ok)->setFocus();
        ClickOk(dialog);
        QCOMPARE(dialog.isVisible(), !accepted);
        QCOMPARE(edit.hasFocus(), !accepted);
        QVERIFY(dialog.m_dtDate == (accepted && days != 0 ? FromQt(day.startOfDay()) : now));
    }
    QCOMPARE(messages.Texts(), QStringList()); // a day to come is refused in silence
    CEFOleDateTime::SetClock(std::nullopt);
}

void PromptsTest::filesAreAskedForInADialog()
{
    CDialogUser const user({}); // cancels it
    CFileQuestion const question{u"Restore"_s, u"/no/such"_s, u"Data Files (*.dat)"_s, false};
    QCOMPARE(AskForFile(nullptr, question), QString());
    QCOMPARE(user.Faults(), QStringList{u"Restore stayed open"_s});
}

void PromptsTest::formCheckFindsFaults()
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

static CTestEntryOf<PromptsTest> const g_entry;
#include "PromptsTest.moc"
