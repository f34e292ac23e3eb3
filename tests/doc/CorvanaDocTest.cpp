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
    void refusesAnEmptyTable_data();
    void refusesAnEmptyTable();
    void stopsAtTheFirstFailure();
    void saysWhyAFileCannotBeRead();
    void takesTheDefaultClassAsFarAsItGoes_data();
    void takesTheDefaultClassAsFarAsItGoes();
    void startsTheReportServerIfWanted_data();
    void startsTheReportServerIfWanted();
    void queuesReportsThatAskNothing_data();
    void queuesReportsThatAskNothing();
    void tellsWhenAReportIsNotQueued();
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

void CorvanaDocTest::refusesAnEmptyTable_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("message");
    auto const unread = [](QString const& what) {
        return u"Error: could not retrieve data from %1 recordset."_s.arg(what);
    };
    QTest::newRow("center") << u"center"_s << unread(u"center"_s);
    QTest::newRow("touch screen") << u"touch"_s << unread(u"touch screen"_s);
    QTest::newRow("defaults") << u"defaults"_s << unread(u"defaults"_s);
    QTest::newRow("bonus") << u"bonuses"_s << unread(u"bonus"_s);
    QTest::newRow("station") << u"stations"_s << unread(u"station"_s);
    QTest::newRow("category") << u"categories"_s << u"Error: could not set default class."_s;
}

void CorvanaDocTest::refusesAnEmptyTable()
{
    QFETCH(QString const, table);
    QFETCH(QString const, message);
    CTestCentre const centre;
    CTestCentre::Run("DELETE FROM " + table.toStdString());
    CMessageRecorder const messages;
    CTestApp app;
    app.m_options = {CAppOption::reportServer};
    CCorvanaDoc doc(app);
    QVERIFY(!doc.OnNewDocument());
    QCOMPARE(messages.Texts(), QStringList{message});
    QCOMPARE(messages.Messages()[0].m_icon, CMessageIcon::exclamation);
    QVERIFY(messages.Messages()[0].m_strDetail.isEmpty()); // an empty table is no failure to read
    QVERIFY(app.m_lstCalls.isEmpty());
    QVERIFY(doc.m_setCenter.IsEOF() != 0);
}

void CorvanaDocTest::stopsAtTheFirstFailure()
{
    CTestCentre const centre;
    CTestCentre::Run("DELETE FROM bonuses");
    CTestCentre::Run("DELETE FROM touch");
    CTestCentre::Run("DELETE FROM categories");
    CMessageRecorder const messages;
    CTestApp app;
    CCorvanaDoc doc(app);
    QVERIFY(!doc.OnNewDocument());
    QCOMPARE(messages.Texts(),
        QStringList{u"Error: could not retrieve data from touch screen recordset."_s});
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

void CorvanaDocTest::takesTheDefaultClassAsFarAsItGoes_data()
{
    QTest::addColumn<QString>("remove");
    QTest::addColumn<QString>("expected");
    QTest::newRow("all parts") << u"center WHERE 0"_s << u"Staff|Wellness|Morning"_s;
    QTest::newRow("no section") << u"sections"_s << u"Staff|Wellness|"_s;
    QTest::newRow("no course, though another category has one")
        << u"courses WHERE number = 9"_s << u"Staff||"_s;
    QTest::newRow("first category gone")
        << u"categories WHERE number = 7"_s << u"Students|PE 101|"_s;
}

void CorvanaDocTest::takesTheDefaultClassAsFarAsItGoes()
{
    QFETCH(QString const, remove);
    QFETCH(QString const, expected);
    CTestCentre const centre;
    CTestCentre::Run("DELETE FROM " + remove.toStdString());
    CTestApp app;
    CCorvanaDoc doc(app);
    doc.m_strDefSection = "left over";
    QVERIFY(doc.SetDefaultClass());
    QCOMPARE(QString::fromStdString(
                 doc.m_strDefCategory + "|" + doc.m_strDefCourse + "|" + doc.m_strDefSection),
        expected);
}

void CorvanaDocTest::startsTheReportServerIfWanted_data()
{
    QTest::addColumn<bool>("starts");
    QTest::newRow("starts") << true;
    QTest::newRow("does not start") << false;
}

void CorvanaDocTest::startsTheReportServerIfWanted()
{
    QFETCH(bool const, starts);
    auto const error = u"Error: the report server application failed to initialize on this PC."_s;
    CTestCentre const centre;
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
    QCOMPARE(
        messages.Texts().constLast(), starts ? u"Report Server is running on this PC."_s : error);
    QCOMPARE(messages.Messages().constLast().m_icon, CMessageIcon::none);
}

void CorvanaDocTest::queuesReportsThatAskNothing_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("Member Count") << 1;
    QTest::newRow("Category \"Unknown\" Workouts") << 13;
}

void CorvanaDocTest::queuesReportsThatAskNothing()
{
    QFETCH(int const, type);
    CTestCentre const centre;
    CMessageRecorder const messages;
    CTestApp app;
    CTestViews views;
    CCorvanaDoc doc(app);
    doc.SetViews(&views);
    QVERIFY(doc.QueueReport(type));
    QVERIFY(messages.Texts().isEmpty());
    QCOMPARE(views.m_lstResults.size(), 1);
    QVERIFY(views.m_lstResults[0].contains(QLatin1StringView(QTest::currentDataTag())));

    CDAOReport queue;
    QCOMPARE(queue.FindReports(), 1);
    QCOMPARE(queue.m_nRptType, type);
    QCOMPARE(queue.m_nRptParam, 0);
    QVERIFY(queue.m_dtRptFrom.IsZero() && queue.m_dtRptTo.IsZero());
    QVERIFY(queue.m_strRptCategory.empty());
}

void CorvanaDocTest::tellsWhenAReportIsNotQueued()
{
    CTestCentre const centre;
    std::filesystem::remove(centre.Folder() / "report.mdb");
    CMessageRecorder const messages;
    CTestApp app;
    CTestViews views;
    CCorvanaDoc doc(app);
    doc.SetViews(&views);
    QVERIFY(!doc.QueueReport(1));
    QCOMPARE(messages.Texts(),
        QStringList{u"Error: the report \"Member Count\" could not be queued."_s});
    QVERIFY(messages.Messages()[0].m_strDetail.contains(u"report.mdb"_s));
    QVERIFY(views.m_lstResults.isEmpty());
}

CORVANA_TEST(CorvanaDocTest);
#include "CorvanaDocTest.moc"
