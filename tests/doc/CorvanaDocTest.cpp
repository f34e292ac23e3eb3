#include "platform/db/FileUse.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QAccessible>
#include <QLineEdit>

#include <filesystem>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

class CorvanaDocTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void saysWhatCannotBeLoaded();
    void compactsAfterTheWarningAndEnds();
    void takesTheDefaultClassAsFarAsItGoes();
    void opensTheGateForTheRightPasswordAlone();
};

void CorvanaDocTest::saysWhatCannotBeLoaded()
{
    CTestDesk desk;
    desk.m_app.m_options = {CAppOption::reportServer};
    auto const unread = u"Error: could not retrieve data from %1 recordset."_s;
    for (auto const& [table, text] :
        {std::pair("categories", u"Error: could not set default class."_s),
            {"stations", unread.arg(u"station"_s)}, {"bonuses", unread.arg(u"bonus"_s)},
            {"defaults", unread.arg(u"defaults"_s)}, {"touch", unread.arg(u"touch screen"_s)},
            {"center", unread.arg(u"center"_s)}}) {
        CTestCentre::Run(std::string("DELETE FROM ").append(table)); // those behind it stay empty
        QVERIFY(!desk.m_doc.OnNewDocument());
        auto const& message = desk.m_messages.Messages().constLast();
        QCOMPARE(message.m_strText, text);
        QVERIFY(message.m_strDetail.isEmpty()); // it is no failure to read
    }
    CDatabaseSession::Get().ShutDown();
    auto const file = desk.m_centre.Folder() / "center.mdb";
    std::filesystem::remove(file);
    QVERIFY(!desk.m_doc.OnNewDocument());
    QVERIFY(desk.m_messages.Messages().constLast().m_strDetail.contains(u"center.mdb"_s));
    QVERIFY(!std::filesystem::exists(file) && desk.m_app.m_lstCalls.isEmpty());
}

void CorvanaDocTest::compactsAfterTheWarningAndEnds()
{
    CTestDesk desk;
    CTestCentre::Run(
        "INSERT INTO check_ins VALUES (1, 12, 12, 'Ann', 'Lee', 4000000000)", DataFile::checkIn);
    CTestCentre::Run("INSERT INTO reports (type, parameter, date_from, date_to, category, course,"
                     " section) VALUES (1, 0, 0, 0, '', '', '')",
        DataFile::report);
    auto const waiting = [&] {
        return std::pair(desk.m_doc.m_setChkIn.FindChkIns(), desk.m_doc.m_setReport.FindReports());
    };
    desk.m_doc.CompactDatabase();
    QCOMPARE(waiting(), std::pair(1, 1)); // Cancel changes nothing
    QCOMPARE(desk.m_messages.Messages()[0].m_question, CQuestion::destroyingOkCancel);

    CFileUse other; // as another program's
    QVERIFY(other.Acquire(CDatabaseSession::Get().PathOf(DataFile::center), {}));
    desk.m_messages.AnswerNext({true});
    desk.m_doc.CompactDatabase();
    QCOMPARE(desk.m_messages.Texts()[2], u"Error: could not compact center.mdb."_s);
    QVERIFY(desk.m_messages.Messages()[2].m_strDetail.contains(u"center.mdb\" is in use"_s));
    QVERIFY(desk.m_messages.Texts().constLast().startsWith(u"Database compaction is complete."_s));
    QCOMPARE(desk.m_app.m_lstCalls, (QStringList{u"StopReportServer"_s, u"Exit"_s}));
    QVERIFY(std::filesystem::exists(desk.m_centre.Folder() / "member.old"));
    QCOMPARE(waiting(), std::pair(0, 0));
}

void CorvanaDocTest::takesTheDefaultClassAsFarAsItGoes()
{
    CTestDesk desk;
    auto& doc = desk.m_doc;
    for (auto const& [remove, expected] : // each leaves what those before it did
        {std::pair("center WHERE 0", "Staff|Wellness|Morning"), {"sections", "Staff|Wellness|"},
            {"courses WHERE number = 9", "Staff||"}, // though another category has one
            {"categories WHERE number = 7", "Students|PE 101|"}}) {
        CTestCentre::Run(std::string("DELETE FROM ").append(remove));
        QVERIFY(doc.SetDefaultClass());
        QCOMPARE(
            doc.m_strDefCategory + "|" + doc.m_strDefCourse + "|" + doc.m_strDefSection, expected);
    }
}

void CorvanaDocTest::opensTheGateForTheRightPasswordAlone()
{
    CTestDesk desk;
    QVERIFY(desk.m_doc.m_setCenter.SetPassword("OpenSesame"));
    CLargeFont const large;
    auto const right = Steps(u"passwordEdit=OpenSesame OK"_s);
    auto const wrong = Steps(u"passwordEdit=opensesame OK"_s);
    auto const tryAgain = [](QDialog& dialog) {
        auto& field = Child<QLineEdit>(dialog, "passwordEdit");
        QTRY_VERIFY(field.hasFocus());
        QCOMPARE(field.selectedText(), u"opensesame"_s);
        auto* const access = QAccessible::queryAccessibleInterface(&field);
        QVERIFY(!access->text(QAccessible::Value).contains(u"opensesame"_s));
        QVERIFY(access->state().passwordEdit);
        QCOMPARE(FaultsOf(dialog), QStringList());
        ClickCancel(dialog);
    };
    // After questions whether to retry, of which those are answered.
    using CSteps = QList<CDialogUser::Step>;
    for (auto const& [steps, retries, opens, questions] :
        {std::tuple(CSteps{right}, QList<bool>(), true, 0), {{ClickCancel}, {}, false, 0},
            {{wrong}, {false}, false, 1},
            {{wrong, Steps(u"passwordEdit= OK"_s), right}, {true, true}, true, 2},
            {{wrong, tryAgain}, {true}, false, 1}}) {
        auto const before = desk.m_messages.Texts().size();
        desk.m_messages.AnswerNext(retries);
        QCOMPARE(CTestDesk::Use(steps, [&] { return desk.m_doc.VerifyPassword(); }), opens);
        QCOMPARE(desk.m_messages.Texts().sliced(before),
            QStringList(questions, u"Sorry, you have entered an incorrect password"_s));
    }
    QCOMPARE(desk.m_messages.Messages().constLast().m_question, CQuestion::retryCancel);
}

static CTestEntryOf<CorvanaDocTest> const g_entry;
#include "CorvanaDocTest.moc"
