#include "store/services/ReportQueue.h"

#include "tests/store/StoreFixture.h"

#include <algorithm>
#include <functional>
#include <map>

namespace
{

class ReportClaimTest : public CStoreTest
{
protected:
    static void Add(int jobs)
    {
        for (int i = 0; i < jobs; ++i) { // as the console does
            EXPECT_TRUE(AddRow<CDAOReport>([](CDAOReport& set) { set.m_nRptType = 1; }));
        }
    }
    /// The job that is claimed, 0 when there is none.
    std::int64_t Claim(std::string const& token)
    {
        std::optional<CQueuedReport> claimed;
        EXPECT_TRUE(m_queue.Claim(token, claimed));
        return claimed ? claimed->id : 0;
    }
    bool Fail(std::int64_t id, std::string const& token, std::string const& reason = "No ink.")
    {
        bool held = false;
        EXPECT_TRUE(m_queue.Failed(id, token, reason, held));
        return held;
    }
    using Ending = CDbStatus (CReportQueue::*)(std::int64_t, std::string const&, bool&);
    bool End(Ending ending, std::int64_t id, std::string const& token)
    {
        bool held = false;
        EXPECT_TRUE((m_queue.*ending)(id, token, held));
        return held;
    }
    CQueuedReport At(std::int64_t id)
    {
        std::optional<CQueuedReport> job;
        EXPECT_TRUE(m_queue.Find(id, job));
        return job.value_or(CQueuedReport());
    }
    /// How many wait, are in hand, done and failed.
    std::string Counts()
    {
        CQueueCounts counts;
        EXPECT_TRUE(m_queue.Count(counts));
        return std::to_string(counts.waiting) + ' ' + std::to_string(counts.inHand) + ' '
            + std::to_string(counts.done) + ' ' + std::to_string(counts.failed);
    }

    std::int64_t m_nNow = 1'800'000'000;
    CReportQueue m_queue{[this] { return m_nNow; }};
};

} // namespace

TEST_F(ReportClaimTest, AFileOfTheFirstVersionKeepsItsJobs)
{
    auto old = DataFileSchema(DataFile::report);
    old.steps.resize(1);
    auto const path = m_folder / "report.mdb";
    std::filesystem::remove(path);
    ASSERT_TRUE(CreateDatabase(path, old));
    std::unique_ptr<CDatabase> database;
    ASSERT_TRUE(OpenDatabase(path, old, database));
    std::int64_t changed = 0;
    EXPECT_TRUE(
        database->Execute("INSERT INTO reports (type, parameter, date_from, date_to, category,"
                          " course, section) VALUES (7, 12, 1, 2, '101', 'All', '')",
            {}, changed));
    database.reset();
    CDAOReport set;
    ASSERT_EQ(set.FindReports(), 1);
    EXPECT_EQ(set.m_nRptParam, 12);
    EXPECT_TRUE(std::filesystem::exists(m_folder / "report.v1.bak"));
    EXPECT_EQ(Counts(), "1 0 0 0");
    EXPECT_EQ(Claim("a"), 1);
    EXPECT_EQ(At(1).job.m_strCourse, "All");
    std::vector<std::string> findings;
    EXPECT_TRUE(Database(DataFile::report).Check(findings));
    EXPECT_EQ(findings, std::vector<std::string>());
}

TEST_F(ReportClaimTest, OneClaimHoldsAJobAndOthersChangeNothing)
{
    EXPECT_EQ(Claim("a"), 0);
    Add(3);
    EXPECT_EQ(Claim("a"), 1);
    EXPECT_EQ(Claim("b"), 2);
    EXPECT_EQ(Counts(), "3 2 0 0");
    bool held = true;
    for (auto const ending : {&CReportQueue::Renew, &CReportQueue::Done, &CReportQueue::GiveBack}) {
        EXPECT_FALSE(End(ending, 1, "b"));
        EXPECT_FALSE(End(ending, 3, "")) << "claimed by nobody";
    }
    EXPECT_FALSE(Fail(1, "b"));
    EXPECT_TRUE(m_queue.SetOutput(1, "b", "/theirs", held));
    EXPECT_FALSE(held);
    EXPECT_TRUE(m_queue.Remove(1, held));
    EXPECT_FALSE(held) << "it is in hand";
    EXPECT_TRUE(m_queue.Again(1, held));
    EXPECT_FALSE(held);

    EXPECT_TRUE(m_queue.SetOutput(1, "a", "/mine", held));
    EXPECT_TRUE(held);
    EXPECT_TRUE(End(&CReportQueue::Done, 1, "a"));
    EXPECT_FALSE(End(&CReportQueue::Done, 1, "a"));
    EXPECT_FALSE(Fail(1, "a"));
    EXPECT_EQ(At(1).output, "/mine");
    EXPECT_EQ(At(1).finished, m_nNow);
    EXPECT_EQ(CDAOReport().FindReports(), 2);
    EXPECT_EQ(Counts(), "2 1 1 0");

    // A new copy gets a name of its own.
    EXPECT_TRUE(m_queue.Again(1, held));
    EXPECT_TRUE(held);
    EXPECT_EQ(At(1).output, "");
    EXPECT_EQ(Claim("c"), 1);
    EXPECT_EQ(At(1).attempts, 1);
}

TEST_F(ReportClaimTest, ADeadServersJobComesBackWhenItsLeaseEnds)
{
    Add(2);
    EXPECT_EQ(Claim("a"), 1);
    m_nNow += CReportQueue::kLease - 1;
    EXPECT_TRUE(End(&CReportQueue::Renew, 1, "a"));
    m_nNow += CReportQueue::kLease - 1;
    EXPECT_EQ(Claim("b"), 2) << "still leased";
    ++m_nNow;
    EXPECT_EQ(Claim("c"), 1);
    EXPECT_FALSE(End(&CReportQueue::Renew, 1, "a"));
    EXPECT_EQ(At(1).attempts, 2);
    // A clock that was put back does not make a lease of years.
    m_nNow -= 100'000;
    EXPECT_EQ(Claim("d"), 1);
    m_nNow += CReportQueue::kLease;
    EXPECT_EQ(Claim("e"), 2) << "three servers died of the first";
    EXPECT_EQ(At(1).state, CQueuedReport::failed);
    EXPECT_NE(At(1).reason.find("ended"), std::string::npos);
    EXPECT_FALSE(End(&CReportQueue::Done, 1, "d"));
    EXPECT_EQ(Counts(), "1 1 0 1");
}

TEST_F(ReportClaimTest, AFailureIsTriedAgainTwiceWhileOthersGoOn)
{
    Add(2);
    EXPECT_EQ(Claim("a"), 1);
    EXPECT_TRUE(End(&CReportQueue::GiveBack, 1, "a"));
    EXPECT_EQ(At(1).attempts, 0) << "not counted";
    for (auto const pause : CReportQueue::kPauses) {
        EXPECT_EQ(Claim("a"), 1);
        EXPECT_TRUE(Fail(1, "a"));
        EXPECT_EQ(Claim("b"), 2);
        EXPECT_TRUE(End(&CReportQueue::GiveBack, 2, "b"));
        m_nNow += pause - 1;
        EXPECT_EQ(Claim("b"), 2);
        EXPECT_TRUE(End(&CReportQueue::GiveBack, 2, "b"));
        ++m_nNow;
    }
    EXPECT_EQ(Claim("a"), 1);
    EXPECT_TRUE(Fail(1, "a", "Gone."));
    EXPECT_EQ(At(1).state, CQueuedReport::failed);
    EXPECT_EQ(At(1).reason, "Gone.");
    EXPECT_EQ(At(1).attempts, 3);
    m_nNow += 1000;
    EXPECT_EQ(Claim("a"), 2);
    // The user need not wait.
    EXPECT_TRUE(Fail(2, "a"));
    EXPECT_EQ(Claim("a"), 0);
    bool changed = false;
    EXPECT_TRUE(m_queue.Again(2, changed));
    EXPECT_EQ(Claim("a"), 2);
    EXPECT_TRUE(m_queue.Remove(1, changed));
    EXPECT_TRUE(changed);
    EXPECT_EQ(Counts(), "1 1 0 0");
}

TEST_F(ReportClaimTest, DoneJobsGoAfterAWeekOrBeyondTwoHundredAndFailedOnesStay)
{
    auto const add = [](std::string const& state, int jobs, std::int64_t finished) {
        Run(DataFile::report,
            "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT ?1) INSERT INTO "
            "reports (type, parameter, date_from, date_to, category, course, section, state, "
            "finished) SELECT 1, i, 0, 0, '', '', '', "
                + state + ", ?2 + i FROM n",
            {std::int64_t(jobs), finished});
    };
    add("0", 300, 0);
    add("2", 300, 0);
    add("1", 3, m_nNow - CReportQueue::kKeepDone - 2);
    EXPECT_TRUE(m_queue.Thin());
    EXPECT_EQ(Counts(), "300 0 2 300");
    add("1", 250, m_nNow - 1000);
    EXPECT_TRUE(m_queue.Thin());
    EXPECT_EQ(Counts(), "300 0 200 300");
    EXPECT_EQ(Number(DataFile::report, "SELECT min(parameter) FROM reports WHERE state = 1"), 51);
    std::vector<CQueuedReport> jobs;
    EXPECT_TRUE(m_queue.List(jobs));
    ASSERT_EQ(jobs.size(), 800U);
    EXPECT_EQ(jobs[0].id, 1);
    EXPECT_EQ(jobs[300].state, CQueuedReport::failed);
    EXPECT_EQ(jobs[600].job.m_nParam, 250) << "the newest first";
}

TEST_F(ReportClaimTest, WhatNoConsoleWritesBlocksNobody)
{
    struct Case
    {
        std::string column;
        std::string value; ///< in SQL
        std::int64_t claimed; ///< of the first and the second of two jobs
    };
    std::string const least = "-9223372036854775808";
    std::string const most = "9223372036854775807";
    std::vector<Case> cases = {{"state", "7", 2}, {"state", least, 2}, {"attempts", most, 2}};
    for (auto const* const column : {"type", "parameter", "date_from", "date_to", "attempts",
             "lease_end", "not_before", "finished"}) {
        for (auto const& value : {least, std::string("-1"), most}) {
            if (column != std::string("attempts") || value != most) {
                cases.push_back({column, value, 1});
            }
        }
    }
    for (auto const* const column : {"category", "course", "reason", "output", "claim"}) {
        cases.push_back({column, "replace(hex(zeroblob(500000)), '0', 'x')", 1});
        cases.push_back({column, "CAST(x'6100FFFE0A' AS TEXT)", 1});
    }
    for (auto const& c : cases) {
        auto const what = c.column + ' ' + c.value;
        Run(DataFile::report, "DELETE FROM reports");
        Run(DataFile::report, "DELETE FROM sqlite_sequence");
        Add(2);
        Run(DataFile::report, "UPDATE reports SET " + c.column + " = " + c.value + " WHERE id = 1");
        EXPECT_EQ(Claim("a"), c.claimed) << what;
        std::vector<CQueuedReport> jobs;
        EXPECT_TRUE(m_queue.List(jobs));
        EXPECT_EQ(jobs.size(), 2U) << what;
        for (auto const& job : jobs) {
            EXPECT_TRUE(job.job.m_nType >= -1 && job.job.m_nType <= 13) << what;
            EXPECT_LE(job.job.m_strCategory.size() + job.reason.size() + job.output.size(), 6000U);
        }
        EXPECT_TRUE(End(&CReportQueue::Done, c.claimed, "a")) << what;
    }
}

TEST_F(ReportClaimTest, ServersInTwoProcessesMakeEachJobOnce)
{
    Add(60);
    auto const serve = [this](CPeer const& self) {
        auto const token = CReportQueue::NewToken();
        for (auto id = Claim(token); id != 0; id = Claim(token)) {
            EXPECT_TRUE(End(&CReportQueue::Done, id, token));
            self.Tell(id);
        }
    };
    auto const first = StartPeer(serve);
    auto const second = StartPeer(serve);
    std::map<std::int64_t, int> made;
    for (auto const* const peer : {&first, &second}) {
        for (auto id = peer->Next(); id; id = peer->Next()) {
            ++made[*id];
        }
    }
    EXPECT_EQ(made.size(), 60U);
    EXPECT_TRUE(std::ranges::all_of(made, [](auto const& job) { return job.second == 1; }));
    EXPECT_EQ(Counts(), "0 0 60 0");
}
