#include "platform/db/FileUse.h"
#include "tests/QtTests.h"
#include "tests/doc/TestDesk.h"

#include <QApplication>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace
{

auto const kDone
    = u"Database compaction is complete. When you click \"OK,\"\nCorvana will exit, and "
      "you will need to manually\nrestart the Corvana software to continue operations."_s;

/// A centre with a check-in and a job, an application that looks at what stands in front of it.
class CCompactionDesk
{
public:
    class CApp : public CTestApp
    {
    public:
        void StopReportServer() override
        {
            CTestApp::StopReportServer();
            m_lstCalls += Child<QLabel>(*QApplication::activeModalWidget(), "waitText").text();
        }
    };

    CTestCentre const m_centre;
    CMessageRecorder m_messages;
    CApp m_app;
    CCorvanaDoc m_doc{m_app};

    CCompactionDesk()
    {
        CTestCentre::Run("INSERT INTO check_ins (member_id, workout_number, first_name, last_name, "
                         "check_in) VALUES (1, 1, 'Ann', 'Lee', 4000000000)",
            DataFile::checkIn);
        CTestCentre::Run("INSERT INTO reports (type, parameter, date_from, date_to, category, "
                         "course, section) VALUES (1, 0, 0, 0, '', '', '')",
            DataFile::report);
    }

    /// Check-ins, jobs.
    static std::pair<int, int> Waiting()
    {
        return {CDAOChkIn().FindChkIns(), CDAOReport().FindReports()};
    }
    QString OldFiles() const
    {
        QString names;
        for (auto const* const name : {"checkin", "report", "center", "member"}) {
            if (exists(m_centre.Folder() / (std::string(name) + ".old"))) {
                names += QLatin1StringView(name) + u' ';
            }
        }
        return names;
    }
};

} // namespace

class CompactDatabaseTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void emptiesCompactsAndEndsAfterTheWarning();
    void tellsWhichFileIsLeftAndCompactsTheOthers();
};

void CompactDatabaseTest::emptiesCompactsAndEndsAfterTheWarning()
{
    CCompactionDesk desk;
    desk.m_doc.CompactDatabase();
    QCOMPARE(CCompactionDesk::Waiting(), std::pair(1, 1)); // Cancel changes nothing
    QCOMPARE(desk.OldFiles(), QString());
    QVERIFY(desk.m_app.m_lstCalls.isEmpty());
    QCOMPARE(desk.m_messages.Texts(),
        {u"You have selected to compact your database. Before proceeding,\nensure that:\n\n"
         "\t1. There are no members checked into your facility;\n\n"
         "\t2. There are no reports pending to be printed; and\n\n"
         "\t3. All other Corvana software, including Corvana Touchscreen\n"
         "\trunning on all check-in stations and any Report Server running on\n"
         "\tanother computer, is stopped.\n\n"
         "Proceeding without complying with these pre-requisites could\n"
         "result in loss or corruption of data."_s});
    QCOMPARE(desk.m_messages.Messages()[0].m_question, CQuestion::destroyingOkCancel);

    desk.m_messages.AnswerNext({true});
    desk.m_doc.CompactDatabase();
    QCOMPARE(desk.m_messages.Texts().sliced(2), {kDone});
    QCOMPARE(desk.m_app.m_lstCalls,
        (QStringList{u"StopReportServer"_s, u"Compacting database, please wait..."_s, u"Exit"_s}));
    QCOMPARE(desk.OldFiles(), u"checkin report center member "_s);
    QCOMPARE(CCompactionDesk::Waiting(), std::pair(0, 0));
    QCOMPARE(CDAOCenter().OpenSet(true), 1);
}

void CompactDatabaseTest::tellsWhichFileIsLeftAndCompactsTheOthers()
{
    CCompactionDesk desk;
    CFileUse other; // as another program's
    QVERIFY(other.Acquire(desk.m_centre.Folder() / "report.mdb", {}));
    desk.m_messages.AnswerNext({true});
    desk.m_doc.CompactDatabase();
    QCOMPARE(desk.m_messages.Texts().sliced(1),
        (QStringList{u"Error: could not compact report.mdb."_s, kDone}));
    auto const& detail = desk.m_messages.Messages()[1].m_strDetail;
    QVERIFY2(detail.contains(u"report.mdb\" is in use"_s), qPrintable(detail));
    QCOMPARE(desk.OldFiles(), u"checkin center member "_s);
    QCOMPARE(desk.m_app.m_lstCalls.constLast(), u"Exit"_s);
}

static CTestEntryOf<CompactDatabaseTest> const g_entry;
#include "CompactDatabaseTest.moc"
