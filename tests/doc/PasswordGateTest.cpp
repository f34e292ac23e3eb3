#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QAccessible>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace
{

QLineEdit& Field(QDialog const& dialog)
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
};

void PasswordGateTest::opensForTheRightPasswordAlone()
{
    CTestDesk desk;
    QVERIFY(desk.m_doc.m_setCenter.SetPassword("Open sesame"));
    // Whether it opens, after how many questions whether to retry, of which those are answered.
    auto const gate = [&](QList<CDialogUser::Step> const& steps, QList<bool> const& retries = {}) {
        auto const before = desk.m_messages.Messages().size();
        desk.m_messages.AnswerNext(retries);
        bool const opens = CTestDesk::Use(steps, [&] { return desk.m_doc.VerifyPassword(); });
        return std::pair(opens, desk.m_messages.Messages().size() - before);
    };
    auto const right = Enter(u"Open sesame"_s);
    auto const tryAgain = [](QDialog& dialog) {
        QTRY_VERIFY(Field(dialog).hasFocus());
        QCOMPARE(Field(dialog).selectedText(), u"nearly right"_s);
        ClickCancel(dialog);
    };
    using Result = std::pair<bool, qsizetype>;
    QCOMPARE(gate({right}), Result(true, 0));
    QCOMPARE(gate({ClickCancel}), Result(false, 0));
    QCOMPARE(gate({Enter(u"open sesame"_s), Enter({}), right}, {true, true}), Result(true, 2));
    QCOMPARE(gate({Enter(u"a"_s), Enter(u"b"_s)}, {true, false}), Result(false, 2));
    QCOMPARE(gate({Enter(u"nearly right"_s), tryAgain}, {true}), Result(false, 1));
    CTestCentre::Run("UPDATE center SET password_hash = 'damaged'");
    QCOMPARE(gate({right}), Result(false, 1));
    for (auto const& message : desk.m_messages.Messages()) {
        QCOMPARE(message.m_strText, u"Sorry, you have entered an incorrect password"_s);
        QVERIFY(message.m_bQuestion && message.m_question == CQuestion::retryCancel);
        QVERIFY(message.m_icon == CMessageIcon::none);
    }
}

void PasswordGateTest::neverShowsTheText()
{
    CTestDesk desk;
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
    CLargeFont const large;
    QVERIFY(!CTestDesk::Use({look}, [&] { return desk.m_doc.VerifyPassword(); }));
}

static CTestEntryOf<PasswordGateTest> const g_entry;
#include "PasswordGateTest.moc"
