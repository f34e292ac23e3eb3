#include "platform/qt/DateField.h"
#include "tests/QtTests.h"
#include "tests/doc/TestMembers.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/MessageRecorder.h"
#include "ui/Convert.h"
#include "ui/DateDlg.h"
#include "ui/MemberIDDlg.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

class PromptsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void memberIDsAreChecked_data();
    void memberIDsAreChecked();
    void tellsWhenMembersCannotBeRead();
    void datesAreTakenUpToToday();
    void formsAreFitForEveryone();
};

void PromptsTest::memberIDsAreChecked_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("mustExist");
    QTest::addColumn<QString>("message");
    auto const range = u"Enter an integer between 1 and 999999999."_s;
    auto const nobody = u"Sorry, there is no member in the database\nthat matches ID %1."_s;
    QTest::newRow("a member") << u"12"_s << true << QString();
    QTest::newRow("any number") << u"999999999"_s << false << QString();
    QTest::newRow("nobody") << u"13"_s << true << nobody.arg(13);
    QTest::newRow("a workout number is no ID") << u"512"_s << true << nobody.arg(512);
    QTest::newRow("too great") << u"1000000000"_s << true << range;
    QTest::newRow("0") << u"0"_s << true << range;
    QTest::newRow("emptied") << u"\b"_s << true << u"Enter an integer."_s;
    QTest::newRow("other keys go nowhere") << u"-1a2"_s << true << QString();
}

void PromptsTest::memberIDsAreChecked()
{
    QFETCH(QString const, text);
    QFETCH(bool const, mustExist);
    QFETCH(QString const, message);
    CTestCentre const centre;
    AddMember(12);
    CTestCentre::Run("UPDATE members SET workout_number = 512", DataFile::member);
    CMessageRecorder const messages;
    CMemberIDDlg dialog;
    dialog.m_bMustExist = mustExist;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto& edit = Child<QLineEdit>(dialog, "memberIDEdit");
    QVERIFY(edit.hasFocus());
    QCOMPARE(edit.selectedText(), u"0"_s); // which typing replaces
    QTest::keyClicks(&edit, text);
    QTest::keyClick(&edit, Qt::Key_Return); // OK is the default button
    QCOMPARE(dialog.result() == QDialog::Accepted, message.isEmpty());
    QCOMPARE(messages.Texts(), message.isEmpty() ? QStringList() : QStringList{message});
    if (message.isEmpty()) {
        QCOMPARE(dialog.m_lMemberID, edit.text().toInt());
    } else {
        QVERIFY(!messages.Messages()[0].m_bQuestion);
        QVERIFY(dialog.isVisible() && edit.hasFocus());
        QCOMPARE(edit.selectedText(), edit.text());
        QCOMPARE(dialog.m_lMemberID, 0);
    }
}

void PromptsTest::tellsWhenMembersCannotBeRead()
{
    CTestCentre const centre;
    std::filesystem::remove(centre.Folder() / "member.mdb");
    CMessageRecorder const messages;
    CMemberIDDlg dialog;
    dialog.m_bMustExist = true;
    dialog.show();
    Type(Child<QLineEdit>(dialog, "memberIDEdit"), u"12"_s);
    ClickOk(dialog);
    QVERIFY(dialog.isVisible());
    QCOMPARE(messages.Texts(), QStringList{u"Error: member ID 12 could not be looked up."_s});
    QVERIFY(messages.Messages()[0].m_strDetail.contains(u"member.mdb"_s));
}

void PromptsTest::datesAreTakenUpToToday()
{
    CEFOleDateTime const now(2026, 11, 16, 23, 59, 58);
    CEFOleDateTime::SetClock(now);
    CMessageRecorder const messages;
    {
        CDateDlg dialog;
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto& edit = Child<CDateField>(dialog, "dateEdit");
        Type(edit, u"today"_s);
        QTest::keyClick(&edit, Qt::Key_Tab);
        QTRY_COMPARE(messages.Texts(), QStringList{u"Enter a date, such as 11/24/2026."_s});
        ClickCancel(dialog);
    }
    for (auto const& [days, noFuture, accepted] : {std::tuple(0, true, true), {1, true, false},
             {1, false, true}, {-1, true, true}, {-365 * 500, true, true}}) {
        CDateDlg dialog;
        QVERIFY(dialog.m_bNoFuture);
        dialog.m_bNoFuture = noFuture;
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto& edit = Child<CDateField>(dialog, "dateEdit");
        auto const day = edit.Date().addDays(days);
        Type(edit, day.toString(u"M/d/yyyy"_s));
        Child<QDialogButtonBox>(dialog, "buttonBox").button(QDialogButtonBox::Ok)->setFocus();
        ClickOk(dialog);
        QCOMPARE(dialog.isVisible(), !accepted);
        QCOMPARE(messages.Texts().size(), 1); // a day to come is refused in silence
        QCOMPARE(edit.hasFocus(), !accepted);
        QVERIFY(dialog.m_dtDate == (accepted && days != 0 ? FromQt(day.startOfDay()) : now));
    }
    CEFOleDateTime::SetClock(std::nullopt);
}

void PromptsTest::formsAreFitForEveryone()
{
    auto const check = [] {
        CMemberIDDlg member;
        member.m_lMemberID = 999999999;
        member.show();
        QCOMPARE(FaultsOf(member), QStringList());
        CDateDlg date;
        date.show();
        QCOMPARE(FaultsOf(date), QStringList());
    };
    check();
    CLargeFont const large;
    check();
}

static CTestEntryOf<PromptsTest> const g_entry;
#include "PromptsTest.moc"
