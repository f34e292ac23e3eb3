#include "platform/db/FileUse.h"
#include "tests/platform/db/Families.h"
#include "tests/platform/db/PlainConnection.h"

#include <thread>

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using ContentionTest = CFamiliesTest;

TEST_F(ContentionTest, AWriterThatWaitsInVainIsToldAndCanTryAgain)
{
    auto const wait = [](std::string const& path, auto const& release) {
        auto const database = Open(path);
        EXPECT_EQ(Save(*database, 1).Error(), DbError::busy) << path;
        EXPECT_EQ(Count(*database), 0) << path;
        release();
        EXPECT_TRUE(Save(*database, 1)) << path;
    };
    CPeer writing([&](CPeer const& /*self*/) {
        CPlainConnection const plain(m_strPath);
        plain.Run("BEGIN IMMEDIATE");
        CPeer::Hold();
    });
    writing.WaitUntilItHolds();
    auto const other = m_strPath + ".other";
    ASSERT_TRUE(CreateDatabase(other, Schema()));
    CFileUse checkpoint; // as another program's: locks belong to the open file
    ASSERT_TRUE(checkpoint.Acquire(other, 1s) && checkpoint.TryLockCheckpoint());
    std::thread waiting([&] { wait(other, [&] { checkpoint.UnlockCheckpoint(); }); });
    wait(m_strPath, [&] { writing.Kill(); });
    waiting.join();
}

TEST_F(ContentionTest, NoCheckpointRunsWhileACommitDoes)
{
    auto const database = Open();
    std::string const note(400'000, 'n');
    CFileUse commit;
    ASSERT_TRUE(commit.Acquire(m_strPath, 1s) && commit.LockCommit(1s));
    for (int i = 0; i < 25; ++i) {
        if (i == 20) {
            EXPECT_LT(fs::file_size(m_strPath), note.size());
            commit.UnlockCommit();
        }
        ASSERT_TRUE(Save(*database, i, note));
    }
    EXPECT_GT(fs::file_size(m_strPath), 20 * note.size());
}

TEST_F(ContentionTest, OthersWriteWhileACheckpointWaitsForALongRead)
{
    CPeer emptying([&](CPeer const& self) {
        auto const database = Open();
        CPeer::Hold();
        EXPECT_TRUE(database->Checkpoint());
        self.Tell(static_cast<std::int64_t>(fs::file_size(m_strPath + "-wal")));
    });
    emptying.WaitUntilItHolds();
    auto const database = Open();
    ASSERT_TRUE(Save(*database, 1));
    auto reading = std::make_unique<CPlainConnection>(m_strPath);
    reading->Run("BEGIN; SELECT count(*) FROM families");
    ASSERT_TRUE(Save(*database, 2));
    emptying.GoOn();
    for (int i = 3; i < 8; ++i) {
        std::this_thread::sleep_for(50ms);
        ASSERT_TRUE(Save(*database, i)) << i;
    }
    reading.reset();
    EXPECT_EQ(emptying.Next(), 0);
}

TEST_F(ContentionTest, DeletedTextIsInNoFileAfterACheckpoint)
{
    // Another process looks, because to close the file here would drop SQLite's locks.
    auto const occurs = [](std::string const& path) {
        return CPeer([&](CPeer const& self) {
            self.Tell(ReadFile(path).find("Penicillin allergy") == std::string::npos ? 0 : 1);
        }).Next();
    };
    auto const database = Open();
    ASSERT_TRUE(Save(*database, 1, "Penicillin allergy"));
    ASSERT_EQ(occurs(m_strPath + "-wal"), 1) << "the search finds nothing at all";
    std::int64_t removed = 0;
    ASSERT_TRUE(database->Remove(kFamilies, 1, removed));
    ASSERT_TRUE(database->Checkpoint());
    EXPECT_EQ(occurs(m_strPath), 0);
    EXPECT_EQ(occurs(m_strPath + "-wal"), 0);
}
