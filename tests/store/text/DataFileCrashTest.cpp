#include "tests/platform/db/Faults.h"
#include "tests/store/text/DataFileFixture.h"

#include <cerrno>
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>

namespace
{

namespace fs = std::filesystem;

/// Stops a restore wherever that can be: all of it has happened then or nothing.
class DataFileCrashTest : public CDataFileTest
{
protected:
    /// Opens the records as they were before. They keep little in memory, so that much of a restore
    /// is written long before its end.
    void StartAnew()
    {
        CDatabaseSession::Get().ShutDown();
        fs::copy_file(m_model, m_strPath, fs::copy_options::overwrite_existing);
        Run(DataFile::member, "PRAGMA cache_size = 20");
    }

    /// Restores in a second process; true when a limit on the size of files killed it in the write
    /// that passed it.
    bool IsKilled(CDAOFileSet& set, rlim_t mostBytes)
    {
        CDatabaseSession::Get().ShutDown(); // no connection may live in two processes
        auto const child = ::fork();
        if (child == 0) {
            Run(DataFile::member, "PRAGMA cache_size = 20");
            std::signal(SIGXFSZ, [](int) { ::raise(SIGKILL); });
            rlimit const limit = {mostBytes, RLIM_INFINITY};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            Restore(set, m_strFile, 0, false);
            CDatabaseSession::Get().ShutDown();
            ::_exit(0);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return WIFSIGNALED(status);
    }

    void KillInWrites(CDAOFileSet& set)
    {
        int unchanged = 0;
        for (rlim_t size = 1; IsKilled(set, size); size += size / 4 + 4096) {
            auto const now = DumpAll();
            ASSERT_TRUE(now == m_before || now == m_after) << size;
            unchanged += now == m_before ? 1 : 0;
        }
        EXPECT_GT(unchanged, 5);
        EXPECT_TRUE(DumpAll() == m_after);
    }

    /// Lets one call after the other fail by which a restore writes: a sector that fails once, and
    /// a disk that is full from some moment on.
    void FailInWrites(CDAOFileSet& set)
    {
        for (int const error : {EIO, ENOSPC}) {
            int failed = 0;
            bool hit = true;
            // It can write thousands of times: not each of them is a case of its own.
            for (int nth = 1; hit; nth += nth / 4 + 1) {
                StartAnew();
                Faults::Begin(nth, error, error == ENOSPC);
                bool const done = Restore(set, m_strFile, 0, false) > 0;
                hit = Faults::End();
                failed += done ? 0 : 1;
                ASSERT_EQ(done, set.LastStatus().IsOK()) << nth;
                ASSERT_TRUE(DumpAll() == (done ? m_after : m_before)) << nth << " of " << error;
            }
            EXPECT_GT(failed, 10) << "the faults do not reach the restore";
        }
    }

    void StopEverywhere(CDAOFileSet& set)
    {
        CDatabaseSession::Get().ShutDown();
        fs::copy_file(m_strPath, m_model);
        m_before = DumpAll();
        EXPECT_GT(Restore(set, m_strFile, 0, false), 0);
        m_after = DumpAll();
        StartAnew();
        KillInWrites(set);
        FailInWrites(set);
    }

    std::string const m_strPath = m_folder / DataFileName(DataFile::member);
    fs::path const m_model = m_folder / "model.mdb";
    std::string m_strFile;
    std::map<std::string, Rows> m_before;
    std::map<std::string, Rows> m_after;
};

} // namespace

TEST_F(DataFileCrashTest, MembersAreRestoredAllOrNone)
{
    for (int id = 1; id <= 16; ++id) {
        AddMember(id);
    }
    Run(DataFile::member, "UPDATE messages SET message = hex(zeroblob(20000))");
    AddWorkout(1, 1);
    m_strFile = Backup(m_setMem);
    Run(DataFile::member, "DELETE FROM members WHERE member_id % 2 = 0");
    Run(DataFile::member, "DELETE FROM classes");
    // Some have one another's numbers.
    Run(DataFile::member, "UPDATE members SET workout_number = workout_number + 1000");
    Run(DataFile::member, "UPDATE members SET workout_number = 500 + (member_id + 2) % 16");
    StopEverywhere(m_setMem);
}

TEST_F(DataFileCrashTest, EvaluationsAreRestoredAllOrNone)
{
    AddMember(1);
    for (int i = 1; i <= 400; ++i) {
        Add(m_setEval, {{"member_id", 1}, {"eval_date", i}, {"eval_id", i}});
    }
    m_strFile = Backup(m_setEval);
    // Others have the numbers of those that are gone.
    Run(DataFile::member, "DELETE FROM evaluations WHERE eval_date % 2 = 0");
    Run(DataFile::member, "UPDATE evaluations SET eval_id = -eval_id");
    Run(DataFile::member, "UPDATE evaluations SET eval_id = eval_date + 1");
    StopEverywhere(m_setEval);
}
