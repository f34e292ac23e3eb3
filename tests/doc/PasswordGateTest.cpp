#include "doc/CorvanaDoc.h"
#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestCentre.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/MessageRecorder.h"

#include <QAccessible>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace
{

QLineEdit& Field(QDialog& dialog)
{
    return Child<QLineEdit>(dialog, "passwordEdit");
}

CDialogUser::Step Enter(QString const& text)
{
    return [text](QDialog& dialog) {
        Type(Field(dialog), text);
        ClickOk(dialog);
    };
}

} // namespace

class PasswordGateTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void opensForTheRightPasswordAlone();
    void neverShowsTheText();

private:
    CTestCentre m_centre;
    CTestApp m_app;
};

void PasswordGateTest::opensForTheRightPasswordAlone()
{
    CCorvanaDoc doc(m_app);
    QVERIFY(doc.m_setCenter.SetPassword("Open sesame"));
    auto const wrong = u"Sorry, you have entered an incorrect password"_s;
    auto const cancel = [](QDialog& dialog) { ClickCancel(dialog); };
    auto const tryAgain = [](QDialog& dialog) {
        QCOMPARE(Field(dialog).text(), u"nearly right"_s);
        QTRY_VERIFY(Field(dialog).hasFocus());
        QCOMPARE(Field(dialog).selectedText(), u"nearly right"_s);
        ClickCancel(dialog);
    };
    struct Case
    {
        QList<CDialogUser::Step> steps;
        QList<bool> retries;
        qsizetype messages = 0;
        bool opens = false;
    };
    for (auto const& [steps, retries, count, opens] : {
             Case{{Enter(u"Open sesame"_s)}, {}, 0, true},
             Case{{cancel}, {}, 0, false},
             Case{{Enter(u"open sesame"_s), Enter(u""_s), Enter(u"Open sesame"_s)}, {true, true}, 2,
                 true},
             Case{{Enter(u"a"_s), Enter(u"b"_s), Enter(u"c"_s)}, {true, true, false}, 3, false},
             Case{{Enter(u"nearly right"_s), tryAgain}, {true}, 1, false},
         }) {
        CMessageRecorder messages;
        messages.AnswerNext(retries);
        CDialogUser const user(steps);
        QCOMPARE(doc.VerifyPassword(), opens);
        QCOMPARE(user.Faults(), QStringList());
        QCOMPARE(messages.Texts(), QStringList(count, wrong));
        for (auto const& message : messages.Messages()) {
            QVERIFY(message.m_bQuestion && message.m_question == CQuestion::retryCancel);
            QVERIFY(message.m_icon == CMessageIcon::none);
        }
    }
    CTestCentre::Run("UPDATE center SET password_hash = 'damaged'");
    CMessageRecorder const messages;
    CDialogUser const user({Enter(u"Open sesame"_s)});
    QVERIFY(!doc.VerifyPassword());
    QCOMPARE(messages.Texts(), QStringList{wrong});
}

void PasswordGateTest::neverShowsTheText()
{
    CCorvanaDoc doc(m_app);
    auto const look = [](QDialog& dialog) {
        Type(Field(dialog), u"secret"_s);
        auto* const access = QAccessible::queryAccessibleInterface(&Field(dialog));
        QVERIFY(!access->text(QAccessible::Value).contains(u"secret"_s));
        QVERIFY(access->state().passwordEdit);
        auto* const text = access->textInterface();
        QVERIFY(!text->text(0, text->characterCount()).contains(u"secret"_s));
        QCOMPARE(FaultsOf(dialog), QStringList());
        ClickCancel(dialog);
    };
    CDialogUser const user({look, look});
    QVERIFY(!doc.VerifyPassword());
    CLargeFont const large;
    QVERIFY(!doc.VerifyPassword());
    QCOMPARE(user.Faults(), QStringList());
}

static CTestEntryOf<PasswordGateTest> const g_entry;
#include "PasswordGateTest.moc"
