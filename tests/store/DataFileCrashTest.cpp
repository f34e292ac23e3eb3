#include "platform/db/Files.h"
#include "tests/store/DataFileFixture.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

namespace
{

/// A second process that restores from a pipe which ends in the middle of the file: when it has
/// taken all that there is, it is killed.
class DataFileCrashTest : public CDataFileTest
{
protected:
    using Task = void (*)(std::istream& stream);

    /// Gives the process so much of a file of 20,000 workouts, and kills it when it waits for more.
    void KillInTheMiddle(Task task, std::size_t tenths)
    {
        auto const pipePath = (m_folder / "pipe").string();
        std::filesystem::remove(pipePath);
        ASSERT_EQ(::mkfifo(pipePath.c_str(), 0600), 0);
        CDatabaseSession::Get().ShutDown(); // no connection may live in two processes
        auto const child = ::fork();
        if (child == 0) {
            std::ifstream stream(pipePath);
            task(stream);
            ::_exit(0);
        }
        ASSERT_GT(child, 0);
        CFileHandle const pipe(::open(pipePath.c_str(), O_WRONLY));
        auto const size = m_strFile.size() * tenths / 10;
        for (std::size_t sent = 0; sent < size;) {
            auto const count = ::write(pipe.Get(), m_strFile.data() + sent, size - sent);
            ASSERT_GT(count, 0);
            sent += static_cast<std::size_t>(count);
        }
        WaitUntilAsleep(child, pipe.Get());
        EXPECT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << "it ended before it was killed";
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

    void SetUp() override
    {
        CDataFileTest::SetUp();
        Run(DataFile::member,
            "INSERT INTO members (member_id, workout_number, first_name, middle_initial, "
            "last_name, status) VALUES (1, 1, '', '', '', 1)");
        CDAOWk set;
        CRowBlock block;
        std::ostringstream stream;
        CText text(&stream, '|');
        for (std::int64_t i = 0; i < 20'000; ++i) {
            m_rows.Make(set.GetLine(), {{"member_id", 1}, {"check_in", 3'900'000'000 + i}}, block);
            ASSERT_TRUE(set.GetLine().Write(text, block.Row(0)));
        }
        m_strFile = stream.str();
    }

    std::string m_strFile;
};

} // namespace

TEST_F(DataFileCrashTest, ARestoreThatIsKilledLeavesNothing)
{
    auto const restore = [](std::istream& stream) {
        CDAOWk set;
        set.Restore(stream, '|', 0, true);
    };
    for (std::size_t tenths = 1; tenths < 10; ++tenths) {
        KillInTheMiddle(restore, tenths);
        ASSERT_EQ(Count("workouts"), 0U) << tenths;
    }
    EXPECT_EQ(Restore(m_setWk, m_strFile), 20'000);
}

/// Shows that the test above would notice: a commit for each row leaves those before the kill.
TEST_F(DataFileCrashTest, ARestoreRowByRowWouldLeaveSome)
{
    auto const restore = [](std::istream& stream) {
        CDAOWk set;
        set.OpenSet(false);
        for (std::string line; std::getline(stream, line);) {
            set.Op(CDAOEFSet::opAddNew);
            set.m_lMemberID = 1;
            set.Op(CDAOEFSet::opUpdate);
        }
    };
    KillInTheMiddle(restore, 5);
    EXPECT_GT(Count("workouts"), 1000U);
    EXPECT_LT(Count("workouts"), 20'000U);
}
