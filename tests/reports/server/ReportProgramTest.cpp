#include "tests/reports/server/ProgramFixture.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <iterator>
#include <map>
#include <random>
#include <sstream>
#include <thread>

namespace
{

class ReportProgramTest : public CProgramTest
{
protected:
    /// By hand more than in each build: tests/reports/server/ReportProgramTest.cpp is the only
    /// place that reads these.
    static int Times(char const* variable, int usual)
    {
        char const* const text = std::getenv(variable);
        return text == nullptr ? usual : static_cast<int>(std::strtol(text, nullptr, 10));
    }
    /// How many jobs the queue has in each state: waiting, done, failed.
    static std::string States()
    {
        return std::to_string(Count("reports WHERE state = 0", DataFile::report)) + ' '
            + std::to_string(Count("reports WHERE state = 1", DataFile::report)) + ' '
            + std::to_string(Count("reports WHERE state = 2", DataFile::report));
    }
    /// The files are just those that the jobs name, one each.
    void ExpectOneFileEach() const
    {
        CRowBlock rows;
        ASSERT_TRUE(Database(DataFile::report)
                        .Query("SELECT output FROM reports WHERE state = 1", {}, rows));
        Rows outputs;
        for (std::size_t row = 0; row < rows.Rows(); ++row) {
            auto const path = std::filesystem::path(rows.Row(row).Text(rows.Row(row).Cell(0)));
            EXPECT_EQ(path.parent_path(), m_out);
            outputs.push_back(path.filename());
        }
        std::ranges::sort(outputs);
        EXPECT_EQ(Files(), outputs);
    }
    /// What comes by itself when its time comes, comes now.
    static void PassTime()
    {
        Run(DataFile::report,
            "UPDATE reports SET lease_end = 0, not_before = 0, attempts = min(attempts, 1)");
    }
    static std::vector<pid_t> ChildrenOf(pid_t process)
    {
        auto const id = std::to_string(process);
        std::istringstream text(ReadFile("/proc/" + id + "/task/" + id + "/children"));
        return {std::istream_iterator<pid_t>(text), {}};
    }
};

} // namespace

TEST_F(ReportProgramTest, TwoServersMakeEachJobOnce)
{
    int const jobs = Times("REPORT_JOBS", 40);
    Queue(CDAOReport::rtMemberCount, jobs);
    auto const begin = std::chrono::steady_clock::now();
    auto const first = Start({"--once", "--folder", m_out}, "first");
    auto const second = Start({"--once", "--folder", m_out}, "second");
    EXPECT_EQ(Wait(first), 0) << Said("first2");
    EXPECT_EQ(Wait(second), 0) << Said("second2");
    std::chrono::duration<double> const time = std::chrono::steady_clock::now() - begin;
    RecordProperty("MillisecondsPerJob", std::to_string(1000 * time.count() / jobs));
    std::istringstream lines(Said("first") + Said("second"));
    std::map<std::string, int> made;
    for (std::string line; std::getline(lines, line);) {
        made[line] += line.ends_with(", Member Count: made") ? 1 : 0;
    }
    std::erase_if(made, [](auto const& line) { return line.second == 0; });
    EXPECT_EQ(made.size(), std::size_t(jobs));
    EXPECT_TRUE(std::ranges::all_of(made, [](auto const& line) { return line.second == 1; }));
    EXPECT_EQ(Files().size(), std::size_t(jobs));
    EXPECT_EQ(Said("first2") + Said("second2"), "");
}

TEST_F(ReportProgramTest, KilledAtAnyMomentItLosesNoJobAndMakesNoneTwice)
{
    int const kills = Times("REPORT_KILLS", 25);
    std::mt19937 random(std::random_device{}());
    std::uniform_int_distribution<int> wait(0, 90);
    int const jobs = std::max(10, kills / 4);
    Queue(CDAOReport::rtMemberCount, jobs);
    for (int i = 0; i < kills; ++i) {
        auto const process = Start({"--once", "--folder", m_out});
        std::this_thread::sleep_for(std::chrono::milliseconds(wait(random)));
        auto const children = i % 2 == 0 ? std::vector<pid_t>() : ChildrenOf(process);
        for (auto const child : children) {
            ::kill(child, SIGKILL);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(children.empty() ? 0 : wait(random)));
        ::kill(process, SIGKILL);
        Wait(process);
        PassTime();
    }
    for (int i = 0; i < 3 && Once() != 0; ++i) {
        PassTime();
    }
    EXPECT_EQ(States(), "0 " + std::to_string(jobs) + " 0");
    ExpectOneFileEach();
}

TEST_F(ReportProgramTest, AFileThatAKilledServerMadeIsNotMadeAgain)
{
    Queue(CDAOReport::rtMemberCount, 2);
    auto const path = m_out / "Member Count 2026-01-02 03-04-05 1.pdf";
    WriteFile(path, "%PDF-made before%%EOF\n");
    std::filesystem::permissions(path, std::filesystem::perms(0600));
    Run(DataFile::report, "UPDATE reports SET attempts = 1, claim = 'x', output = ? WHERE id = 1",
        {path.string()});
    // Of the second one there is the half that its process left.
    auto const half = m_out / "Member Count 2026-01-02 03-04-05 2.pdf";
    WriteFile(half.string() + ".part", "%PDF-half");
    Run(DataFile::report, "UPDATE reports SET attempts = 1, output = ? WHERE id = 2",
        {half.string()});
    EXPECT_EQ(Once(), 0) << Said("said2");
    EXPECT_EQ(ReadFile(path), "%PDF-made before%%EOF\n");
    EXPECT_EQ(Files(), (Rows{path.filename(), half.filename()}));
}

TEST_F(ReportProgramTest, AJobThatFailsIsSetAsideAfterThreeAttemptsAndBlocksNobody)
{
    AddMember(12, "Secretperson");
    Queue(CDAOReport::rtMemberProfile, 1, "11"); // nobody
    Queue(4711);
    Queue(CDAOReport::rtMemberProfile, 1, "12");
    for (int attempt = 1; attempt <= 3; ++attempt) {
        EXPECT_EQ(Once(), 1);
        auto const said = Said();
        auto const* const what = attempt < 3 ? "to be tried again: " : "set aside: ";
        EXPECT_NE(said.find(std::string("job 1, Member Profile: ") + what), std::string::npos);
        EXPECT_NE(said.find(std::string("job 2, Report: ") + what), std::string::npos) << said;
        EXPECT_EQ(said.find("Secretperson"), std::string::npos);
        EXPECT_EQ(Said("said2"), "");
        EXPECT_EQ(States(), attempt < 3 ? "2 1 0" : "0 1 2");
        EXPECT_EQ(Once(), attempt < 3 ? 1 : 0) << "its time has not come";
        Run(DataFile::report, "UPDATE reports SET not_before = 0");
    }
    EXPECT_EQ(Files().size(), 1U);
    EXPECT_EQ(Files()[0].find("Secretperson"), std::string::npos);
    // Only if the settings say so.
    std::filesystem::create_directories(m_folder / "config/Halvetta");
    WriteFile(m_folder / "config/Halvetta/Corvana.conf", "[reports]\nnames=1\n");
    Queue(CDAOReport::rtMemberProfile, 1, "12");
    EXPECT_EQ(Once(), 0);
    EXPECT_EQ((Said() + Said("said2")).find("Secretperson"), std::string::npos);
    EXPECT_EQ(Files().size(), 2U);
    EXPECT_NE(Files()[1].find("Secretperson"), std::string::npos);
}

TEST_F(ReportProgramTest, WhatKeepsAllReportsFromBeingMadeCountsForNone)
{
    Queue(CDAOReport::rtMemberCount, 2);
    auto const expect = [&](Words const& arguments, std::string const& reason) {
        EXPECT_EQ(Do(arguments), 1);
        EXPECT_NE(Said("said2").find(reason), std::string::npos) << Said("said2");
        EXPECT_EQ(
            Count("reports WHERE state = 0 AND attempts = 0 AND claim = ''", DataFile::report), 2)
            << reason;
    };
    expect({"--once", "--folder", m_folder / "gone"}, "is not there");
    expect({"--once", "--printer", "No Such Printer"}, "is not there");
    WriteFile(m_folder / "file", "");
    expect({"--once", "--folder", m_folder / "file"}, "is not there");
    expect({"--once", "--folder", "/proc"}, "\"/proc\"");
    EXPECT_EQ(Once(), 0);
}

TEST_F(ReportProgramTest, OneReportWithoutTheQueueGetsWhatItNeedsAndReplacesNothing)
{
    AddMember(12);
    auto const file = (m_out / "report.pdf").string();
    struct Case
    {
        int exitCode;
        Words words;
        std::string says;
    };
    for (auto const& c : {Case{0, {"1"}, ""}, {0, {"membership-status", "--status", "past"}, ""},
             {0, {"daily-workouts", "--from", "2026-11-16", "--paper", "a4"}, ""},
             {0, {"workout-summaries", "--all-workouts"}, ""},
             {0, {"workout-summaries", "--from", "2026-11-16", "--to", "2026-11-17"}, ""},
             {0, {"member-profile", "--member", "12"}, ""}, {2, {"14"}, "no report \"14\""},
             {2, {"member-profile"}, "needs --member"},
             {2, {"member-profile", "--member", "0"}, "not in range"},
             {2, {"member-count", "--member", "12"}, "cannot use --member"},
             {2, {"class-roster"}, "needs --category"},
             {2, {"daily-workouts", "--from", "2026-02-30"}, "is no date"},
             {2, {"daily-workouts", "--from", "2026-11-16", "--to", "2026-11-17"},
                 "cannot use --to"},
             {2, {"workout-summaries", "--from", "2026-11-16", "--to", "2026-11-15"}, "is before"},
             {2,
                 {"workout-summaries", "--from", "2026-11-16", "--to", "2026-11-16",
                     "--all-workouts"},
                 "cannot use --from"},
             {2, {"1", "--once"}, "excludes"}, {2, {"1", "--member", "x\x1b"}, "--member"},
             {1, {"member-profile", "--member", "13"}, ""}}) {
        Words words = {"--render"};
        words.insert(words.end(), c.words.begin(), c.words.end());
        words.insert(words.end(), {"--pdf", file});
        EXPECT_EQ(Do(words), c.exitCode) << c.words[0] << Said("said2");
        EXPECT_NE(Said("said2").find(c.says), std::string::npos) << Said("said2");
        EXPECT_EQ(Files().size(), c.exitCode == 0 ? 1U : 0U) << c.words[0];
        std::filesystem::remove(file);
    }
    WriteFile(file, "theirs");
    EXPECT_EQ(Do({"--render", "1", "--pdf", file}), 1);
    EXPECT_EQ(ReadFile(file), "theirs");
    EXPECT_EQ(Do({"--render", "1", "--pdf", file, "--replace"}), 0);
    EXPECT_EQ(Files(), Rows{"report.pdf"});
}

TEST_F(ReportProgramTest, AskedToEndItGivesItsJobBack)
{
    Queue(CDAOReport::rtMemberCount, 200);
    auto const process = Start({"--once", "--folder", m_out});
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    ::kill(process, SIGTERM);
    EXPECT_EQ(Wait(process), 1);
    EXPECT_EQ(
        Count("reports WHERE state = 0 AND (attempts > 0 OR claim <> '')", DataFile::report), 0);
    EXPECT_GT(Count("reports WHERE state = 0", DataFile::report), 0);
    ExpectOneFileEach();
}
