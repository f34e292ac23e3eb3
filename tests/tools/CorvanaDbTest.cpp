#include "store/sets/AddRow.h"
#include "store/fitness/Circuit.h"
#include "store/sets/DAOCat.h"
#include "store/sets/DAOCenter.h"
#include "store/sets/DAOCour.h"
#include "store/sets/DAOReport.h"
#include "store/sets/DAOSec.h"
#include "store/sets/DAOStn.h"
#include "tests/tools/CorvanaDbFixture.h"

#include <chrono>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <thread>

namespace fs = std::filesystem;

namespace
{

mode_t ModeOf(fs::path const& path)
{
    struct stat info = {};
    return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 07777U : 0;
}

/// Runs a command as somebody whom modes and the privacy of other processes stop, also for root.
std::vector<std::string> AsOrdinaryUser()
{
    if (::geteuid() != 0) {
        return {};
    }
    std::string const without = "-dac_override,-dac_read_search,-sys_ptrace";
    return {"setpriv", "--bounding-set", without, "--inh-caps", without};
}

} // namespace

using CorvanaDbTest = CCorvanaDbTest;

TEST_F(CorvanaDbTest, DemoIsBelievableWholeAndPrivate)
{
    // The folder comes from the environment here.
    auto const made = RunCommand({"env", "CORVANA_DATA=" + m_data.string(), CORVANA_DB, "demo",
        "--password-file", m_password.string()});
    ASSERT_EQ(made.exitCode, 0) << made.errors;
    EXPECT_EQ(made.errors, "");
    EXPECT_EQ(Names(), "++++");
    EXPECT_EQ(ModeOf(m_data), 0700U);
    for (auto const file : kDataFiles) {
        EXPECT_EQ(ModeOf(m_data / DataFileName(file)), 0600U) << DataFileName(file);
    }
    auto const check = Run({"check"});
    EXPECT_EQ(check.exitCode, 0) << check.output;
    EXPECT_EQ(check.output.find("open in"), std::string::npos) << check.output;
    CDatabaseSession::Get().SetDataFolder(m_data);
    CDAOStn stations;
    EXPECT_EQ(stations.OpenSet(true), 13) << "the circuits and twelve stations of a workout";
    CCircuit circuit;
    circuit.Load();
    EXPECT_EQ(circuit.m_nNumStations, 14);
    CDAOCat categories;
    EXPECT_GE(categories.FindCategories(0), 3);
    CDAOCour courses;
    EXPECT_GT(courses.FindCourses(categories.m_nCatID, 0), 0);
    CDAOSec sections;
    EXPECT_GT(sections.FindSections(courses.m_nCourID), 0);
}

TEST_F(CorvanaDbTest, WhatIsThereIsNeverTouched)
{
    fs::create_directories(m_data);
    for (auto const* const name :
        {"checkin.mdb", "report.mdb", "center.mdb", "member.mdb", "member.mdb-wal"}) {
        Write(m_data / name, "mine");
        auto const before = Names();
        for (auto const& result :
            {Create(), Run({"demo", "--password-file", m_password.string()})}) {
            EXPECT_EQ(result.exitCode, 1);
            EXPECT_NE(result.errors.find(name), std::string::npos) << result.errors;
        }
        EXPECT_EQ(Names(), before);
        EXPECT_EQ(fs::file_size(m_data / name), 4U);
        fs::remove(m_data / name);
    }
}

TEST_F(CorvanaDbTest, BadPasswordsMakeAndChangeNothing)
{
    auto const other = m_temporary.Path() / "other";
    std::map<std::string, std::string> const cases = {{"short", "1234567"}, {"empty", ""},
        {"second line", "\nlong enough text"}, {"control", "tab\tinside it"},
        {"not UTF-8", "\xFF\xFE\xFD\xFC\xFB\xFA\xF9\xF8"}, {"few letters", "éééé"},
        {"null", std::string("12345678\0", 9)}, {"long", std::string(1025, 'x')}};
    for (auto const& [what, text] : cases) {
        Write(other, text);
        auto const result = Run({"demo", "--password-file", other.string()});
        EXPECT_EQ(result.exitCode, 1) << what;
        EXPECT_NE(result.errors.find("password"), std::string::npos) << what << result.errors;
        EXPECT_FALSE(fs::exists(m_data.parent_path())) << what;
    }
    MakeCenter();
    for (auto const& [what, text] : cases) {
        Write(other, text);
        EXPECT_EQ(Run({"password", "--password-file", other.string()}).exitCode, 1) << what;
    }
    EXPECT_EQ(Run({"password", "--password-file", m_temporary.Path().string()}).exitCode, 1);
    EXPECT_EQ(Run({"password", "--password-file", "/nowhere"}).exitCode, 1);
    auto const unasked = Run({"password"});
    EXPECT_NE(unasked.errors.find("no terminal"), std::string::npos) << unasked.errors;
    EXPECT_TRUE(CDAOCenter().ChkPassword(kPassword)) << "a refused password changed the old one";
}

TEST_F(CorvanaDbTest, PasswordFromAFileIsItsFirstLine)
{
    MakeCenter();
    auto const other = m_temporary.Path() / "other";
    Write(other, "a new password\r\nsecond line\n");
    auto const changed = Run({"password", "--password-file", other.string()});
    EXPECT_EQ(changed.exitCode, 0) << changed.errors;
    EXPECT_EQ(changed.errors, "");
    EXPECT_TRUE(CDAOCenter().ChkPassword("a new password"));
    EXPECT_FALSE(CDAOCenter().ChkPassword(kPassword));
    ::chmod(other.c_str(), 0640);
    auto const warned = Run({"password", "--password-file", other.string()});
    EXPECT_EQ(warned.exitCode, 0);
    EXPECT_NE(warned.errors.find("warning: other users can read"), std::string::npos);
}

TEST_F(CorvanaDbTest, TypedPasswordIsAskedTwiceAndNotShown)
{
    if (!HasTerminals()) {
        GTEST_SKIP() << "no terminal to type at";
    }
    MakeCenter();
    std::vector<std::string> const command = {CORVANA_DB, "--data", m_data.string(), "password"};
    auto const different = RunAtTerminal(command, {"typed password\n", "typed passwort\n"});
    EXPECT_EQ(different.exitCode, 1);
    EXPECT_NE(different.output.find("not the same"), std::string::npos) << different.output;
    auto const interrupted = RunAtTerminal(command, {"typed\x03", "typed password\n"});
    EXPECT_EQ(interrupted.exitCode, 1) << interrupted.output;
    EXPECT_TRUE(CDAOCenter().ChkPassword(kPassword));
    auto const typed = RunAtTerminal(command, {"typed password\n", "typed password\n"});
    EXPECT_EQ(typed.exitCode, 0) << typed.output;
    EXPECT_EQ(typed.output.find("typed"), std::string::npos) << typed.output;
    EXPECT_TRUE(CDAOCenter().ChkPassword("typed password"));
}

TEST_F(CorvanaDbTest, FailedWritesLeaveAllFilesOrNone)
{
    // A limit on the size of files fails the write that passes it, wherever that is.
    int failures = 0;
    for (auto const* const blocks : {"0", "7", "8", "24", "50", "90", "130", "200", "300", "900"}) {
        auto const result = Create({"sh", "-c", "trap '' XFSZ; ulimit -f $0; exec \"$@\"", blocks});
        EXPECT_EQ(Names(), result.exitCode == 0 ? "++++" : "none") << blocks << result.errors;
        failures += result.exitCode == 0 ? 0 : 1;
        fs::remove_all(m_data.parent_path());
    }
    EXPECT_GT(failures, 5);
    EXPECT_LT(failures, 10);
}

TEST_F(CorvanaDbTest, FileThatAppearsMeanwhileEndsItWithoutATrace)
{
    fs::create_directories(m_data);
    CCommandResult result;
    std::thread creating([&] { result = Create(); });
    // The files are filled in a folder beside their places, which takes a password's hash long.
    auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (fs::is_empty(m_data) && std::chrono::steady_clock::now() < end) { }
    Write(m_data / "member.mdb", "mine");
    creating.join();
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("member.mdb\": File exists"), std::string::npos) << result.errors;
    EXPECT_EQ(Names(), "---+");
    EXPECT_EQ(fs::file_size(m_data / "member.mdb"), 4U);
}

TEST_F(CorvanaDbTest, EndedEarlyItLeavesAllFilesOrNone)
{
    for (auto const* const seconds : {"0.005", "0.01", "0.02", "0.05", "0.1", "0.2"}) {
        Create({"timeout", "--signal", "TERM", seconds});
        auto const names = Names();
        EXPECT_TRUE(names == "none" || names == "++++") << seconds << names;
        fs::remove_all(m_data.parent_path());
    }
}

TEST_F(CorvanaDbTest, FullDiskLeavesAllFilesOrNone)
{
    fs::create_directories(m_data);
    int failures = 0;
    for (auto const* const size : {"8k", "32k", "64k", "128k", "256k", "384k", "4m"}) {
        if (::mount("none", m_data.c_str(), "tmpfs", 0, ("size=" + std::string(size)).c_str())
            != 0) {
            GTEST_SKIP() << "cannot mount a small file system";
        }
        auto const result = Create();
        EXPECT_EQ(Names(), result.exitCode == 0 ? "++++" : "----") << size << result.errors;
        EXPECT_EQ(result.exitCode != 0, result.errors.find("left on") != std::string::npos)
            << result.errors;
        failures += result.exitCode == 0 ? 0 : 1;
        ::umount(m_data.c_str());
    }
    EXPECT_GT(failures, 3);
    EXPECT_LT(failures, 7);
}

TEST_F(CorvanaDbTest, FolderThatCannotBeWrittenIsRefused)
{
    auto const ordinary = AsOrdinaryUser();
    fs::create_directories(m_data);
    ::chmod(m_data.c_str(), 0500);
    auto const inside = Create(ordinary);
    EXPECT_EQ(inside.exitCode, 1);
    EXPECT_NE(inside.errors.find(m_data.string() + "\": Permission denied"), std::string::npos)
        << inside.errors;
    EXPECT_EQ(Names(), "----");
    fs::remove(m_data);
    ::chmod(m_data.parent_path().c_str(), 0500);
    EXPECT_EQ(Create(ordinary).exitCode, 1);
    EXPECT_EQ(Names(), "none");
    ::chmod(m_data.parent_path().c_str(), 0700);
    Write(m_data, "a file");
    EXPECT_EQ(Create().exitCode, 1);
    EXPECT_EQ(fs::file_size(m_data), 6U);
}

TEST_F(CorvanaDbTest, CheckTellsFindingsFromFilesItCannotRead)
{
    MakeCenter();
    std::int64_t changed = 0;
    ASSERT_TRUE(Database(DataFile::report).Execute("CREATE TABLE extra (n INTEGER)", {}, changed));
    CDatabaseSession::Get().ShutDown();
    auto const extra = Run({"check"});
    EXPECT_EQ(extra.exitCode, 1);
    EXPECT_NE(extra.output.find("unknown: extra"), std::string::npos) << extra.output;

    auto const center = m_data / "center.mdb";
    auto const size = fs::file_size(center);
    std::fstream(center, std::ios::in | std::ios::out | std::ios::binary)
        .seekp(static_cast<std::streamoff>(size - 4096))
        .write(std::string(4096, '\xAA').data(), 4096);
    auto const damaged = Run({"check"});
    EXPECT_EQ(damaged.exitCode, 1) << damaged.output;
    EXPECT_NE(damaged.output.find("center.mdb: NOT as it should be"), std::string::npos)
        << damaged.output;

    fs::resize_file(center, size - 1000);
    auto const cut = Run({"check"});
    EXPECT_EQ(cut.exitCode, 2);
    EXPECT_NE(cut.output.find("cut short"), std::string::npos) << cut.output;
    EXPECT_NE(cut.output.find("member.mdb: all well"), std::string::npos) << "the rest is checked";
    fs::remove(center);
    auto const missing = Run({"check"});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_NE(missing.output.find("does not exist"), std::string::npos) << missing.output;
    EXPECT_EQ(Names().substr(0, 4), "++-+") << "checking makes nothing";
    EXPECT_EQ(Run({"info"}).exitCode, 1);
    EXPECT_EQ(Run({"password", "--password-file", m_password.string()}).exitCode, 1);
}

TEST_F(CorvanaDbTest, CheckNamesTheProgramThatHasAFileOpen)
{
    MakeCenter();
    Database(DataFile::report);
    auto const check = Run({"check"});
    EXPECT_EQ(check.exitCode, 0);
    auto const expected = "report.mdb: all well\n    open in tools_tests (process "
        + std::to_string(::getpid()) + ")\ncenter.mdb: all well\nmember.mdb";
    EXPECT_NE(check.output.find(expected), std::string::npos) << check.output;
    // One that guards its memory, as we do, shows by its lock alone.
    ::prctl(PR_SET_DUMPABLE, 0);
    auto const hidden = Run({"check"}, AsOrdinaryUser());
    ::prctl(PR_SET_DUMPABLE, 1);
    EXPECT_EQ(hidden.exitCode, 0);
    EXPECT_NE(hidden.output.find("report.mdb: all well\n    open in another program, which"),
        std::string::npos)
        << hidden.output;
    EXPECT_NE(hidden.output.find("center.mdb: all well\nmember.mdb"), std::string::npos);
}

TEST_F(CorvanaDbTest, InfoListsQueuedJobsAndNoSecrets)
{
    MakeCenter();
    for (int const type : {1, 13, 14}) {
        auto const status = AddRow<CDAOReport>([&](CDAOReport& job) {
            job.m_nRptType = type;
            job.m_nRptParam = type * 10;
            job.m_dtRptTo = type == 13 ? CEFOleDateTime(2026, 11, 16, 18, 5, 9) : CEFOleDateTime();
            job.m_strRptCourse = type == 13 ? "red \x1B[31m" : "";
        });
        ASSERT_TRUE(status) << status.Text();
    }
    auto const info = Run({"info"});
    EXPECT_EQ(info.exitCode, 0) << info.errors;
    auto const expected = R"(Centre: Łódź Gym
Queued report jobs: 3
    type 1 (Member Count), parameter 10, from none, to none, class "" "" ""
    type 13 (Category "Unknown" Workouts), parameter 130, from none, to 2026-11-16 18:05:09, class "" "red ?[31m" ""
    type 14 (unknown), parameter 140, from none, to none, class "" "" ""
)";
    EXPECT_TRUE(info.output.ends_with(expected)) << info.output;
    EXPECT_NE(info.output.find("sections: 2 rows"), std::string::npos) << info.output;
    EXPECT_EQ(info.output.find("argon2"), std::string::npos);
    auto const unheard = Run({"info"}, {"sh", "-c", R"(exec "$0" "$@" >/dev/full)"});
    EXPECT_EQ(unheard.exitCode, 1) << "an output that was lost is no success";
}

TEST_F(CorvanaDbTest, WrongUsageIsToldApart)
{
    std::vector<std::vector<std::string>> const cases
        = {{}, {"bogus"}, {"create"}, {"info", "extra"}, {"check", "--wrong"}, {"info", "--data"}};
    for (auto const& arguments : cases) {
        auto command = arguments;
        command.insert(command.begin(), CORVANA_DB);
        auto const result = RunCommand(command);
        EXPECT_EQ(result.exitCode, 2) << result.errors;
        EXPECT_TRUE(result.errors.starts_with("corvana-db: ")) << result.errors;
    }
    for (auto const* const command : {"create", "demo", "info", "check", "password"}) {
        auto const help = RunCommand({CORVANA_DB, command, "--help"});
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_NE(help.output.find("Usage: corvana-db " + std::string(command)), std::string::npos)
            << help.output;
    }
    EXPECT_EQ(RunCommand({CORVANA_DB, "--version"}).output, "corvana-db 3.2.0.0\n");
}
