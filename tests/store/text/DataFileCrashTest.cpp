#include "platform/db/Files.h"
#include "store/text/TextReader.h"
#include "tests/store/text/DataFileFixture.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <set>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

namespace
{

/// Restores members in a second process, which is killed on the way. Some of the members are there
/// already, otherwise than in the file.
class DataFileCrashTest : public CDataFileTest
{
protected:
    using Lines = std::set<std::string>;
    using Task = void (*)(std::istream& stream);
    static constexpr int kMembers = 300;

    static Lines LinesOf(std::string const& file)
    {
        std::istringstream stream(file);
        Lines lines;
        for (std::string line; std::getline(stream, line);) {
            lines.insert(line);
        }
        return lines;
    }
    Lines Members() { return LinesOf(BackupMembers()); }

    void SetUp() override
    {
        CDataFileTest::SetUp();
        for (int id = 1; id <= kMembers; ++id) {
            AddMember(id);
        }
        m_strFile = BackupMembers();
        m_file = LinesOf(m_strFile);
        Run(DataFile::member, "DELETE FROM members WHERE member_id % 2 = 0");
        Run(DataFile::member, "DELETE FROM classes");
        Run(DataFile::member, "UPDATE members SET last_name = 'Changed'");
        m_before = Members();
    }

    /// Starts the task; no connection may live in two processes.
    template <typename Open>
    static pid_t Start(Task task, Open const& open)
    {
        CDatabaseSession::Get().ShutDown();
        auto const child = ::fork();
        if (child == 0) {
            auto stream = open();
            task(stream);
            ::_exit(0);
        }
        return child;
    }

    /// True when it was killed before it ended.
    static bool Kill(pid_t child)
    {
        EXPECT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return WIFSIGNALED(status);
    }

    /// Gives the task so much of the file through a pipe, and kills it when it waits for more.
    void KillInTheMiddle(Task task, std::size_t size)
    {
        auto const pipePath = (m_folder / "pipe").string();
        std::filesystem::remove(pipePath);
        ASSERT_EQ(::mkfifo(pipePath.c_str(), 0600), 0);
        auto const child = Start(task, [&] { return std::ifstream(pipePath); });
        ASSERT_GT(child, 0);
        CFileHandle const pipe(::open(pipePath.c_str(), O_WRONLY));
        for (std::size_t sent = 0; sent < size;) {
            auto const count = ::write(pipe.Get(), m_strFile.data() + sent, size - sent);
            ASSERT_GT(count, 0);
            sent += static_cast<std::size_t>(count);
        }
        WaitUntilAsleep(child, pipe.Get());
        EXPECT_TRUE(Kill(child)) << "it ended before it was killed";
    }

    /// Gives the task the whole file and kills it after a time.
    bool KillAfter(Task task, std::chrono::microseconds time)
    {
        auto const child = Start(task, [&] { return std::istringstream(m_strFile); });
        EXPECT_GT(child, 0);
        std::this_thread::sleep_for(time);
        return Kill(child);
    }

    /// Waits until a process has read what there is in the pipe and sleeps in the next read.
    static void WaitUntilAsleep(pid_t process, int pipe)
    {
        auto const path = "/proc/" + std::to_string(process) + "/stat";
        int unread = 1;
        std::string state;
        for (int tries = 0; tries < 20'000 && (unread > 0 || state != "S"); ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            ASSERT_EQ(::ioctl(pipe, FIONREAD, &unread), 0);
            std::ifstream(path) >> state >> state >> state;
        }
        EXPECT_EQ(state, "S");
    }

    static void RestoreAll(std::istream& stream)
    {
        CDAOMem set;
        set.Restore(stream, '|', 0, false);
    }

    static void RestoreWorkouts(std::istream& stream)
    {
        CDAOWk set;
        set.Restore(stream, '|', 0, false);
    }

    /// What must never happen: a commit for each table.
    static void RestoreTableByTable(std::istream& stream)
    {
        CDAOMem set;
        CTextReader reader(stream, '|');
        CRowBlock block;
        while (reader.Next() && set.GetLine().Read(reader, block)) {
            auto const row = block.Row(0);
            Run(DataFile::member, "DELETE FROM members WHERE member_id = ?",
                {std::int64_t(set.GetLine().MemberOf(row))});
            AddParts(set.GetLine(), row);
        }
    }

    std::string m_strFile;
    Lines m_file; // its lines
    Lines m_before; // those of the members before the restore
};

} // namespace

TEST_F(DataFileCrashTest, ARestoreThatIsKilledLeavesNothing)
{
    for (std::size_t tenths = 1; tenths < 10; ++tenths) {
        KillInTheMiddle(RestoreAll, m_strFile.size() * tenths / 10);
        ASSERT_TRUE(Members() == m_before) << tenths;
    }
    // Shows that what is committed before the kill would be noticed.
    KillInTheMiddle(RestoreTableByTable, m_strFile.size() / 2);
    auto const after = Members();
    EXPECT_FALSE(after == m_before || after == m_file);
    EXPECT_EQ(Restore(m_setMem, m_strFile, 0, false), kMembers);
    EXPECT_TRUE(Members() == m_file);
}

TEST_F(DataFileCrashTest, ARestoreOfWorkoutsThatIsKilledLeavesNothing)
{
    constexpr int kWorkouts = 3000; // some buffers full
    for (int i = 0; i < kWorkouts; ++i) {
        AddWorkout(1 + i % 2 * 2, i);
    }
    auto const whole = BackupWorkouts();
    Run(DataFile::member, "DELETE FROM workouts WHERE id % 3 = 0");
    auto const before = BackupWorkouts();
    m_strFile = whole;
    for (std::size_t const tenths : {3U, 6U, 9U}) {
        KillInTheMiddle(RestoreWorkouts, m_strFile.size() * tenths / 10);
        ASSERT_EQ(BackupWorkouts(), before) << tenths;
    }
    EXPECT_EQ(Restore(m_setWk, whole), kWorkouts / 3);
    EXPECT_EQ(LinesOf(BackupWorkouts()), LinesOf(whole));
}

TEST_F(DataFileCrashTest, AKillAtAnyMomentLeavesNoPartOfAMember)
{
    int killed = 0;
    auto time = std::chrono::milliseconds(1);
    while (KillAfter(RestoreAll, time)) {
        auto const after = Members();
        ASSERT_TRUE(after == m_before || after == m_file) << time.count();
        ++killed;
        time += time / 8 + std::chrono::milliseconds(1);
    }
    EXPECT_GT(killed, 5);
    EXPECT_TRUE(Members() == m_file);
}

/// Shows that the test above would notice: a commit for each table leaves parts of members.
TEST_F(DataFileCrashTest, ARestoreTableByTableWouldLeavePartsOfMembers)
{
    int parts = 0;
    for (int time = 20; time < 200 && parts == 0; ++time) {
        EXPECT_TRUE(KillAfter(RestoreTableByTable, std::chrono::milliseconds(time)));
        for (auto const& line : Members()) {
            parts += m_before.contains(line) || m_file.contains(line) ? 0 : 1;
        }
    }
    EXPECT_GT(parts, 0);
}
