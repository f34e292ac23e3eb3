#include "platform/db/FileUse.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"

using namespace Qt::StringLiterals;

class CorvanaDocTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void loadsTheConfiguration();
    void saysWhatCannotBeLoaded();
    void tellsOnceWhichFilesCannotBeOpened();
    void takesTheDefaultClassAsFarAsItGoes();
};

void CorvanaDocTest::loadsTheConfiguration()
{
    CTestDesk desk;
    CTestCentre::Run("INSERT INTO lift_stations (name, least_lift, greatest_lift) "
                     "VALUES ('Leg Curl', 10, 250)");
    auto& doc = desk.m_doc;
    QVERIFY(doc.OnNewDocument());
    QVERIFY(desk.m_messages.Texts().isEmpty());
    QVERIFY(desk.m_app.m_lstCalls.isEmpty()); // the option of the report server is off
    // The sets are closed, and their values still there.
    QCOMPARE(doc.m_setCenter.m_strCenterName, "Riverside Fitness Center");
    QCOMPARE(doc.m_setTouch.m_clrFrame, 0x784A16U);
    QCOMPARE(doc.m_setDef.m_nDefGradeStat, 1);
    QVERIFY(doc.m_setCenter.IsEOF() && doc.m_setTouch.IsEOF() && doc.m_setDef.IsEOF());
    QVERIFY(doc.m_setBon.IsEOF() && doc.m_setCat.IsEOF() && doc.m_setCour.IsEOF());
    QVERIFY(doc.m_setSec.IsEOF());
    QCOMPARE(doc.m_lstStnNames, (std::vector<std::string>{"Leg Press", "Chest Press", "Rowing"}));
    QCOMPARE(doc.m_lstStnAbbrs, (std::vector<std::string>{"LP", "CP", "RW"}));
    QCOMPARE(doc.m_circuit.m_nNumStations, 1);
}

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
        QCOMPARE(message.m_icon, CMessageIcon::exclamation);
        QVERIFY(message.m_strDetail.isEmpty()); // it is no failure to read
    }
    CDatabaseSession::Get().ShutDown();
    auto const file = desk.m_centre.Folder() / "center.mdb";
    std::filesystem::remove(file);
    QVERIFY(!desk.m_doc.OnNewDocument());
    QVERIFY(desk.m_messages.Messages().constLast().m_strDetail.contains(u"center.mdb"_s));
    QVERIFY(!std::filesystem::exists(file));
    QCOMPARE(desk.m_messages.Messages().size(), 7);
    QVERIFY(desk.m_app.m_lstCalls.isEmpty());
    QVERIFY(desk.m_doc.m_setCenter.IsEOF() != 0);
}

void CorvanaDocTest::tellsOnceWhichFilesCannotBeOpened()
{
    CTestDesk const desk;
    CDatabaseSession::Get().ShutDown();
    auto const file = [&](char const* name) { return desk.m_centre.Folder() / name; };
    auto const start = [&](bool hasMembers) {
        CTestApp app;
        CCorvanaDoc doc(app);
        QVERIFY(doc.OnNewDocument());
        QCOMPARE(doc.HasMembers(), hasMembers);
        CDatabaseSession::Get().ShutDown();
    };
    start(true);
    QVERIFY(desk.m_messages.Texts().isEmpty());

    std::filesystem::remove(file("member.mdb"));
    std::filesystem::resize_file(file("report.mdb"), 5000);
    start(false);
    QCOMPARE(desk.m_messages.Texts(), {u"Error: could not open report.mdb, member.mdb."_s});
    auto const& message = desk.m_messages.Messages().constLast();
    QCOMPARE(message.m_icon, CMessageIcon::exclamation);
    for (auto const& words :
        {u"report.mdb\" is cut short"_s, u"member.mdb\" does not exist"_s, u"last backup"_s}) {
        QVERIFY2(message.m_strDetail.contains(words), qPrintable(message.m_strDetail));
    }
    QVERIFY(!std::filesystem::exists(file("member.mdb")));

    QVERIFY(CreateDatabase(file("member.mdb"), DataFileSchema(DataFile::member)));
    std::filesystem::remove(file("report.mdb"));
    QVERIFY(CreateDatabase(file("report.mdb"), DataFileSchema(DataFile::report)));
    CFileUse other;
    QVERIFY(other.Acquire(file("member.mdb"), {}) && other.TryExclusive());
    start(false);
    QCOMPARE(desk.m_messages.Texts().constLast(), u"Error: could not open member.mdb."_s);
    auto const& detail = desk.m_messages.Messages().constLast().m_strDetail;
    QVERIFY(detail.contains(u"maintained"_s) && !detail.contains(u"backup"_s));
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

static CTestEntryOf<CorvanaDocTest> const g_entry;
#include "CorvanaDocTest.moc"
