#include "store/sets/DAOCenter.h"
#include "tests/tools/CorvanaDbFixture.h"

#include <chrono>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <thread>

namespace fs = std::filesystem;

using CorvanaDbTest = CCorvanaDbTest;

TEST_F(CorvanaDbTest, DemoIsBelievableWholeAndPrivate)
{
    auto const demo = [&](std::string const& seed) {
        fs::remove_all(m_data);
        Expect(0, "Made the centre",
            {"demo", "--members", "400", "--seed", seed, "--password-file", m_password.string()});
        CDatabaseSession::Get().SetDataFolder(m_data);
        return Select(DataFile::member, "group_concat(last_name) FROM members");
    };
    auto const seven = demo("7");
    EXPECT_NE(demo("8"), seven);
    EXPECT_EQ(demo("7"), seven);
    auto const now = std::to_string(CEFOleDateTime::GetCurrentTime().Seconds());
    auto const later = " > " + now;
    std::vector<std::string> wrongs = {"workouts WHERE check_out" + later,
        "evaluations WHERE eval_date" + later,
        "body_compositions WHERE percent_fat NOT BETWEEN 2 AND 65 OR weight NOT BETWEEN 1 AND 500",
        "workouts JOIN enrollments USING (member_id) WHERE check_in NOT BETWEEN enroll_date AND "
        "expire_date + 86399 OR check_out <= check_in OR circuits NOT BETWEEN 0 AND 5 OR "
        "max(station1, station12) > 999",
        // Nobody comes twice a day.
        "workouts GROUP BY member_id, check_in / 86400 HAVING count(*) > 1",
        // Current members are those who have not expired.
        "members JOIN enrollments USING (member_id) WHERE (status <> 0) <> (expire_date + 86399"
            + later + ")",
        "members JOIN profiles USING (member_id) WHERE length(first_name) > 12 OR "
        "length(last_name) > 20 OR length(address) > 28 OR length(city) > 16 OR length(phone) > 14 "
        "OR length(email) > 32 OR length(emergency_name) > 32 OR length(physician) > 32"};
    for (std::string const table : {"workouts", "evaluations", "body_compositions"}) {
        EXPECT_GT(Count(table), 100) << table;
        wrongs.push_back(table
            + " WHERE class_index <> 99 AND (member_id, class_index) NOT IN (SELECT member_id, "
              "class_index FROM classes)");
    }
    for (auto const& wrong : wrongs) {
        EXPECT_EQ(Count("(SELECT 1 FROM " + wrong + ")"), 0) << wrong;
    }
    // Some have come today, within the last hour and a half.
    std::string const here = "check_ins WHERE check_in BETWEEN max(" + now + " - 5410, " + now
        + " / 86400 * 86400) AND " + now;
    auto const present = Number(DataFile::checkIn, "SELECT count(DISTINCT member_id) FROM " + here);
    EXPECT_TRUE(present >= 5 && present <= 12) << present;
    EXPECT_EQ(Count("check_ins", DataFile::checkIn), present);
    CDatabaseSession::Get().ShutDown();
    EXPECT_EQ(Names(), kAllFiles);
    EXPECT_EQ(fs::status(m_data).permissions(), fs::perms(0700));
    for (auto const file : kDataFiles) {
        EXPECT_EQ(fs::status(m_data / DataFileName(file)).permissions(), fs::perms(0600));
    }
    Expect(0, "checkin.mdb: all well\nreport.mdb: all well\ncenter.mdb: all well\n", {"check"});
    // The circuits and twelve stations of a workout; a report that waits.
    for (auto const* const said : {" members: 400 rows", " stations: 13 rows",
             " lift_stations: 14 rows", "Queued report jobs: 1\n"}) {
        Expect(0, said, {"info"}, {"sh", "-c", R"(CORVANA_DATA="$2" exec "$0" "$3")"});
    }
}

TEST_F(CorvanaDbTest, WhatIsThereOrAppearsMeanwhileIsNeverTouched)
{
    fs::create_directories(m_data);
    auto const expectMine = [&](std::string const& name) {
        EXPECT_EQ(Names(), name + "\n");
        EXPECT_EQ(ReadFile(m_data / name), "mine");
        fs::remove(m_data / name);
    };
    for (std::string const name :
        {"checkin.mdb", "report.mdb", "center.mdb", "member.mdb", "member.mdb-wal"}) {
        Write(m_data / name, "mine");
        Expect(1, name, m_create);
        expectMine(name);
    }
    std::thread creating([&] { Expect(1, "member.mdb\": File exists", m_create); });
    // The files are filled in a folder beside their places, which takes a password's hash long.
    auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (fs::is_empty(m_data) && std::chrono::steady_clock::now() < end) { }
    Write(m_data / "member.mdb", "mine");
    creating.join();
    expectMine("member.mdb");
}

TEST_F(CorvanaDbTest, BadPasswordsMakeAndChangeNothing)
{
    auto const other = (m_folder / "other").string();
    Words const password = {"password", "--password-file", other};
    Write(other, "1234567");
    Expect(1, "password", {"demo", "--password-file", other});
    EXPECT_FALSE(fs::exists(m_data.parent_path()));
    MakeCenter();
    for (auto const& [bad, said] :
        {std::pair(std::string("1234567"), "too short"), {"\nlong enough", "too short"},
            {"éééé", "could not be stored"}, {std::string("12345678\0", 9), "control characters"},
            {std::string(1025, 'x'), "too long"}}) {
        Write(other, bad);
        Expect(1, said, password);
    }
    for (auto const* const path : {m_folder.c_str(), "/nowhere"}) {
        Expect(1, "Cannot read the password", {"password", "--password-file", path});
    }
    Expect(1, "no terminal", {"password"});
    EXPECT_TRUE(CDAOCenter().ChkPassword(kPassword)) << "a refused password changed the old one";

    Write(other, "a new password\r\nsecond line\n");
    EXPECT_EQ(Command(password).errors, "");
    EXPECT_TRUE(CDAOCenter().ChkPassword("a new password"));
    EXPECT_FALSE(CDAOCenter().ChkPassword(kPassword));
    ::chmod(other.c_str(), 0640);
    Expect(0, "warning: other users can read", password);
}

TEST_F(CorvanaDbTest, TypedPasswordIsAskedTwiceAndNotShown)
{
    MakeCenter();
    for (auto const& [lines, exitCode, said, password] :
        {std::tuple(Words{"typed password\n", "typed passwort\n"}, 1, "not the same", kPassword),
            {{"typed\x03"}, 1, "No password was entered", kPassword},
            {{"typed password\n", "typed password\n"}, 0, "", "typed password"}}) {
        auto const result = Type({"password"}, lines);
        if (result.output.empty()) {
            GTEST_SKIP() << "no terminal to type at";
        }
        EXPECT_EQ(result.exitCode, exitCode) << result.output;
        EXPECT_NE(result.output.find(said), std::string::npos) << result.output;
        EXPECT_EQ(result.output.find("typed"), std::string::npos) << result.output;
        EXPECT_TRUE(CDAOCenter().ChkPassword(password));
    }
}

TEST_F(CorvanaDbTest, StoppedAnywhereItLeavesAllFilesOrNone)
{
    // A limit on the size of files fails the write that passes it, wherever that is.
    int failures = 0;
    for (auto const* const blocks : {"0", "7", "24", "90", "200", "900"}) {
        auto const result
            = Command(m_create, {"sh", "-c", R"(trap "" XFSZ; ulimit -f $0; exec "$@")", blocks});
        EXPECT_EQ(Names(), result.exitCode == 0 ? kAllFiles : "none") << blocks << result.errors;
        failures += result.exitCode == 0 ? 0 : 1;
        fs::remove_all(m_data.parent_path());
    }
    EXPECT_GT(failures, 3);
    EXPECT_LT(failures, 6);
    for (auto const* const seconds : {"0.005", "0.02", "0.05", "0.2"}) {
        Command(m_create, {"timeout", "--signal", "TERM", seconds});
        EXPECT_TRUE(Names() == "none" || Names() == kAllFiles) << seconds << Names();
        fs::remove_all(m_data.parent_path());
    }
    fs::create_directories(m_data);
    if (::mount("none", m_data.c_str(), "tmpfs", 0, "size=64k") == 0) {
        Expect(1, "left on", m_create);
        EXPECT_EQ(Names(), "");
        ::umount(m_data.c_str());
    }
}

TEST_F(CorvanaDbTest, CheckTellsUsersFindingsAndFilesItCannotRead)
{
    MakeCenter();
    Run(DataFile::report, "CREATE TABLE extra (n INTEGER)");
    Expect(1, "report.mdb: NOT as it should be\n    unknown: extra", {"check"});
    Run(DataFile::report, "DROP TABLE extra");
    Expect(0,
        "report.mdb: all well\n    open in tools_tests (process " + std::to_string(::getpid())
            + ")\ncenter.mdb: all well\nmember.mdb",
        {"check"});
    Expect(1,
        "report.mdb: left as it is\n    The file \"" + (m_data / "report.mdb").string()
            + "\" is in use by tools_tests",
        {"compact"});
    EXPECT_TRUE(fs::exists(m_data / "member.old") && !fs::exists(m_data / "report.old"));
    // One that guards its memory, as we do, shows by its lock alone.
    std::string const without = "-sys_ptrace";
    Words const ordinaryUser = ::geteuid() == 0
        ? Words{"setpriv", "--bounding-set", without, "--inh-caps", without}
        : Words();
    ::prctl(PR_SET_DUMPABLE, 0);
    Expect(0,
        "report.mdb: all well\n    open in another program, which this user may not look at\n"
        "center.mdb: all well\nmember.mdb",
        {"check"}, ordinaryUser);
    ::prctl(PR_SET_DUMPABLE, 1);
    CDatabaseSession::Get().ShutDown();

    auto const center = m_data / "center.mdb";
    auto const size = fs::file_size(center);
    std::fstream(center, std::ios::in | std::ios::out | std::ios::binary)
        .seekp(static_cast<std::streamoff>(size - 4096))
        .write(std::string(4096, '\xAA').data(), 4096);
    Expect(1, "center.mdb: NOT as it should be", {"check"});
    fs::resize_file(center, size - 1000);
    Expect(2, "cut short", {"check"});
    Expect(2, "member.mdb: all well", {"check"}); // the rest is checked
    fs::remove(center);
    Expect(2, "does not exist", {"check"});
    Expect(1, "does not exist", {"info"});
    EXPECT_FALSE(fs::exists(center));
}

TEST_F(CorvanaDbTest, InfoListsQueuedJobsAndNoSecrets)
{
    MakeCenter();
    std::string const add
        = "INSERT INTO reports (type, parameter, date_from, date_to, category, course, section) ";
    Run(DataFile::report, add + R"(VALUES (1, 0, 0, 0, '', '', ''),
        (4, 5, 0, 0, 'Staff', '', 'Noon'),
        (6, 24, 4003948800, 4004035199, '', '', ''),
        (7, 12, 0, 0, '101', 'All', ''),
        (9, 999999999, 4004013909, 0, '', '', ''),
        (2, -32, 0, 0, '', '', ''), (3, 0, 0, 0, '', '', ''),
        (13, 130, 0, 9000000000000000000, '', 'red ' || char(27) || '[31m' || char(10), 'B'),
        (-1, -2147483648, 0, 0, '', '', ''),
        (2147483647, 99999999999, 0, 0, 'x' || printf('%.*c', 100, 'é'), '', ''))");
    auto const info = Command({"info"});
    EXPECT_EQ(info.exitCode, 0) << info.errors;
    auto const expected = R"(Centre: Łódź Gym
Queued report jobs: 10
    Member Count
    Category/Course/Section Roster: with member IDs, current members, class "Staff" "" "Noon"
    Workout Summaries: past members, all workouts, from 2026-11-16 00:00:00 to 2026-11-16 23:59:59
    Member Workouts: member ID 12, class "101" "All"
    Test Results Interpretation: member ID 999999999, from 2026-11-16 18:05:09
    Member Emergency Contacts: options -32
    Membership Status: options 0
    Category "Unknown" Workouts: parameter 130, to Invalid DateTime, class "" "red ?[31m?" "B"
    unknown type -1: parameter -2147483648
    unknown type 2147483647: class "xééééééééééééééééééééééééééééééééééééééé..."
)";
    EXPECT_TRUE(info.output.ends_with(expected)) << info.output;
    EXPECT_NE(info.output.find("sections: 2 rows"), std::string::npos);
    EXPECT_EQ(info.output.find("argon2"), std::string::npos);
    Run(DataFile::report,
        "UPDATE reports SET state = 2, reason = 'No ' || char(27) || ' ink.' WHERE id IN (2, 9)");
    Run(DataFile::report, "UPDATE reports SET state = 1 WHERE id = 3");
    auto const served = Command({"info"}).output;
    EXPECT_TRUE(served.ends_with(R"(
Report jobs being made: 0, done: 1, set aside: 2
    unknown type -1: parameter -2147483648, No ? ink.
    Category/Course/Section Roster: with member IDs, current members, class "Staff" "" "Noon", No ? ink.
)")) << served;
    EXPECT_NE(served.find("Queued report jobs: 7\n"), std::string::npos);
    Run(DataFile::report, "UPDATE reports SET state = 0");
    Run(DataFile::report,
        add
            + "WITH RECURSIVE numbers(n) AS (VALUES (1) UNION ALL SELECT n + 1 FROM numbers WHERE "
              "n < 100000) SELECT 1, n, 0, 0, '', '', '' FROM numbers");
    auto const many = Command({"info"}).output;
    EXPECT_TRUE(many.ends_with("    Member Count: parameter 10\n    ... and 99990 more\n")) << many;
    Expect(1, "could not be written", {"info"}, {"sh", "-c", R"(exec "$0" "$@" >/dev/full)"});
}

TEST_F(CorvanaDbTest, BacksUpRestoresAndVerifies)
{
    Expect(0, "Made", {"demo", "--members", "60", "--password-file", m_password.string()});
    CDatabaseSession::Get().SetDataFolder(m_data);
    auto const workouts = Count("workouts"); // and the files stay open
    auto const sets = m_folder / "sets";
    Words const backUp = {"backup", sets.string(), "--keep", "1"};
    Expect(1, "for backups is not there", backUp);
    EXPECT_FALSE(fs::exists(sets));
    fs::create_directory(sets);
    Expect(0, "60 members, " + std::to_string(workouts) + " workouts", backUp);
    auto const old = fs::directory_iterator(sets)->path();
    Expect(0, "Removed the old set " + old.filename().string(), backUp);
    auto const set = fs::directory_iterator(sets)->path();
    auto const file = set / "workouts.dat";
    auto text = ReadFile(file);
    auto const bad = m_folder / "bad.dat";
    WriteFile(bad, text.substr(0, text.find('\n') + 10));
    Expect(0, "All lines are right", {"verify", file.string()});
    Expect(0, "8 files of " + m_data.string(), {"verify", set.string()});
    Expect(1, "line 2: has no end", {"verify", bad.string()});
    WriteFile(bad, "XY1|1|2\n");
    Expect(1, "line 1", {"verify", bad.string()});
    for (auto const& path : {sets, m_folder / "none", fs::path("/dev/null")}) {
        Expect(2, "Cannot read", {"verify", path.string()});
    }

    auto const fresh = m_folder / "fresh";
    Words const inFresh = {"env", "CORVANA_DB=" CORVANA_DB, "sh", "-c",
        R"(shift 2; exec "$CORVANA_DB" --data )" + fresh.string() + R"( "$@")"};
    Expect(1, "does not exist", {"restore", set.string()}, inFresh);
    Expect(0, "Made the centre", m_create, inFresh);
    Expect(0, "Restored 60 members", {"restore", set.string()}, inFresh);
    Expect(0, "Restored 0 members", {"restore", set.string()}, inFresh);
    Expect(0, "Restored 60 members, 0 workouts", {"restore", "--replace", set.string()}, inFresh);
    auto const rows = Dump("evaluation_view");
    CDatabaseSession::Get().SetDataFolder(fresh);
    EXPECT_EQ(Count("workouts"), workouts);
    EXPECT_EQ(Dump("evaluation_view").size(), rows.size());
    WriteFile(file, text.replace(30, 1, "x"));
    Expect(1, "not as it was written", {"verify", set.string()});
    Expect(1, "Nothing was restored", {"restore", set.string()}, inFresh);
}

TEST_F(CorvanaDbTest, WrongUsageIsToldApart)
{
    for (auto const& arguments : std::vector<Words>{{}, {"bogus"}, {"create"}, {"info", "extra"},
             {"check", "--wrong"}, {"info", "--data"}, {"demo", "--members", "500001"},
             {"demo", "--members", "1.5"}, {"backup", "/", "--keep", "0"}}) {
        Expect(2, "See corvana-db --help.", arguments);
        EXPECT_EQ(Names(), "none");
    }
    Expect(0, "Usage: corvana-db check", {"check", "--help"});
    Expect(0, "corvana-db 3.2.0.0\n", {"--version"});
}
