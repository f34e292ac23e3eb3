#include "doc/CorvanaDoc.h"

#include "tests/QtTests.h"
#include "tests/doc/TestApp.h"
#include "tests/doc/TestCentre.h"
#include "tests/ui/MessageRecorder.h"

#include <QTest>

using namespace Qt::StringLiterals;

class CorvanaDocTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void loadsTheConfiguration();
    void stopsAtTheFirstEmptyTable();
    void saysWhyAFileCannotBeRead();
    void takesTheDefaultClassAsFarAsItGoes();
    void startsTheReportServerIfWanted();
};

void CorvanaDocTest::loadsTheConfiguration()
{
    CTestCentre const centre;
    CTestCentre::Run("INSERT INTO lift_stations (name, least_lift, greatest_lift) "
                     "VALUES ('Leg Curl', 10, 250)");
    CMessageRecorder const messages;
    CTestApp app;
    CCorvanaDoc doc(app);
    QVERIFY(doc.OnNewDocument());
    QVERIFY(messages.Texts().isEmpty());
    QCOMPARE(doc.m_circuit.m_nNumStations, 1);

    // The sets are closed, and their values still there.
    QCOMPARE(doc.m_setCenter.m_strCenterName, "Riverside Fitness Center");
    QCOMPARE(doc.m_setTouch.m_clrFrame, 0x784A16U);
    QCOMPARE(doc.m_setDef.m_nDefGradeStat, 1);
    for (CDAOEFSet* const set : {static_cast<CDAOEFSet*>(&doc.m_setCenter),
             static_cast<CDAOEFSet*>(&doc.m_setTouch), static_cast<CDAOEFSet*>(&doc.m_setDef),
             static_cast<CDAOEFSet*>(&doc.m_setBon), static_cast<CDAOEFSet*>(&doc.m_setCat)}) {
        QVERIFY(set->IsEOF() != 0);
    }
    QCOMPARE(doc.m_lstStnNames, (std::vector<std::string>{"Leg Press", "Chest Press", "Rowing"}));
    QCOMPARE(doc.m_lstStnAbbrs, (std::vector<std::string>{"LP", "CP", "RW"}));
    QVERIFY(app.m_lstCalls.isEmpty()); // the option is off
}

void CorvanaDocTest::stopsAtTheFirstEmptyTable()
{
    CTestCentre const centre;
    auto const unread = u"Error: could not retrieve data from %1 recordset."_s;
    for (auto const& [table, message] :
        {std::pair("categories", u"Error: could not set default class."_s),
            {"stations", unread.arg(u"station"_s)}, {"bonuses", unread.arg(u"bonus"_s)},
            {"defaults", unread.arg(u"defaults"_s)}, {"touch", unread.arg(u"touch screen"_s)},
            {"center", unread.arg(u"center"_s)}}) {
        CTestCentre::Run(std::string("DELETE FROM ").append(table)); // those behind it stay empty
        CMessageRecorder const messages;
        CTestApp app;
        app.m_options = {CAppOption::reportServer};
        CCorvanaDoc doc(app);
        QVERIFY(!doc.OnNewDocument());
        QCOMPARE(messages.Texts(), QStringList{message});
        QCOMPARE(messages.Messages()[0].m_icon, CMessageIcon::exclamation);
        QVERIFY(messages.Messages()[0].m_strDetail.isEmpty()); // it is no failure to read
        QVERIFY(app.m_lstCalls.isEmpty());
        QVERIFY(doc.m_setCenter.IsEOF() != 0);
    }
}

void CorvanaDocTest::saysWhyAFileCannotBeRead()
{
    CTestCentre const centre;
    CDatabaseSession::Get().ShutDown();
    std::filesystem::remove(centre.Folder() / "center.mdb");
    CMessageRecorder const messages;
    CTestApp app;
    CCorvanaDoc doc(app);
    QVERIFY(!doc.OnNewDocument());
    QCOMPARE(
        messages.Texts(), QStringList{u"Error: could not retrieve data from center recordset."_s});
    QVERIFY(messages.Messages()[0].m_strDetail.contains(u"center.mdb"_s));
    QVERIFY(!std::filesystem::exists(centre.Folder() / "center.mdb"));
}

void CorvanaDocTest::takesTheDefaultClassAsFarAsItGoes()
{
    for (auto const& [remove, expected] :
        {std::pair("center WHERE 0", "Staff|Wellness|Morning"), {"sections", "Staff|Wellness|"},
            {"courses WHERE number = 9", "Staff||"}, // though another category has one
            {"categories WHERE number = 7", "Students|PE 101|"}}) {
        CTestCentre const centre;
        CTestCentre::Run(std::string("DELETE FROM ").append(remove));
        CTestApp app;
        CCorvanaDoc doc(app);
        doc.m_strDefSection = "left over";
        QVERIFY(doc.SetDefaultClass());
        QCOMPARE(doc.m_strDefCategory + "|" + doc.m_strDefCourse + "|" + doc.m_strDefSection,
            std::string(expected));
    }
}

void CorvanaDocTest::startsTheReportServerIfWanted()
{
    auto const error = u"Error: the report server application failed to initialize on this PC."_s;
    CTestCentre const centre;
    for (bool const starts : {true, false}) {
        CMessageRecorder messages;
        CTestApp app;
        app.m_options = {CAppOption::reportServer};
        app.m_bReportServerStarts = starts;
        CCorvanaDoc doc(app);
        QVERIFY(doc.OnNewDocument());
        QCOMPARE(app.m_lstCalls, QStringList{u"StartReportServer"_s});
        QCOMPARE(messages.Texts(), starts ? QStringList() : QStringList{error});
        QVERIFY(starts || messages.Messages()[0].m_icon == CMessageIcon::exclamation);

        doc.StartReportServer(); // the command says how it went in any case
        QCOMPARE(messages.Texts().constLast(),
            starts ? u"Report Server is running on this PC."_s : error);
        QCOMPARE(messages.Messages().constLast().m_icon, CMessageIcon::none);
    }
}

static CTestEntryOf<CorvanaDocTest> const g_entry;
#include "CorvanaDocTest.moc"
