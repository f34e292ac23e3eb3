#include "platform/db/FileUse.h"
#include "tests/TempFolder.h"
#include "tests/platform/db/Families.h"
#include "tests/platform/db/PeerProcess.h"

#include <gtest/gtest.h>
#include <sstream>
#include <thread>

namespace
{

namespace fs = std::filesystem;

class ContentionTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(CreateDatabase(m_strPath, Families::Schema())); }

    std::unique_ptr<CDatabase> Open() const { return Open(m_strPath); }
    static std::unique_ptr<CDatabase> Open(std::string const& path)
    {
        std::unique_ptr<CDatabase> database;
        auto const status = OpenDatabase(path, Families::Schema(), database);
        EXPECT_TRUE(status) << status.Text();
        return database;
    }

    std::uintmax_t LogSize() const
    {
        std::error_code ignored;
        auto const size = fs::file_size(m_strPath + "-wal", ignored);
        return ignored ? 0 : size;
    }

    CTempFolder m_temporary;
    std::string const m_strPath = m_temporary.Path() / "family.mdb";
};

} // namespace

TEST_F(ContentionTest, TwoWritersAndAReaderNeverFailAndTheLogStaysShort)
{
    constexpr std::uintmax_t kLongestLog = 24U << 20;
    std::vector<std::unique_ptr<CPeer>> peers;
    auto const start = [&](char const* task, char const* first) {
        peers.push_back(
            std::make_unique<CPeer>(std::vector<std::string>{task, m_strPath, "4000", first}));
    };
    start("writer", "0");
    start("writer", "1000000");
    start("reader", "0");
    auto const end = std::chrono::steady_clock::now() + std::chrono::milliseconds(4000);
    std::uintmax_t longestLog = 0;
    while (std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        longestLog = std::max(longestLog, LogSize());
    }
    std::int64_t saves = 0;
    for (std::size_t i = 0; i < peers.size(); ++i) {
        std::istringstream answer(peers[i]->Line());
        int done = 0;
        int failed = -1;
        int longest = 0;
        answer >> done >> failed >> longest;
        EXPECT_EQ(failed, 0);
        EXPECT_GT(done, 0) << "starved";
        saves += i < 2 ? done : 0;
        std::cout << done << " in 4 s, longest " << longest << " ms\n";
    }
    std::cout << "longest log " << longestLog / 1024 << " KiB\n";
    EXPECT_LT(longestLog, kLongestLog) << "nobody ever came to a checkpoint";
    auto const database = Open();
    EXPECT_EQ(Families::Count(*database), saves);
    EXPECT_EQ(Families::Partial(*database), 0);
}

TEST_F(ContentionTest, AWriterThatWaitsInVainIsToldAndCanTryAgain)
{
    auto const wait = [this](std::string const& task) {
        auto const path = m_strPath + "." + task.substr(0, 1);
        EXPECT_TRUE(CreateDatabase(path, Families::Schema()));
        auto const database = Open(path);
        EXPECT_TRUE(Families::Save(*database, 1));
        CPeer holding({task, path});
        EXPECT_EQ(holding.Line(), "ready") << task;
        EXPECT_EQ(Families::Save(*database, 2).Error(), DbError::busy) << task;
        EXPECT_EQ(Families::Count(*database), 1) << task;
        holding.Kill();
        EXPECT_TRUE(Families::Save(*database, 3)) << task;
        EXPECT_EQ(Families::Count(*database), 2) << task;
    };
    std::thread other([&] { wait("foreign write"); });
    wait("write");
    other.join();
}

TEST_F(ContentionTest, NoCheckpointRunsWhileACommitDoes)
{
    auto const database = Open();
    ASSERT_TRUE(database->Checkpoint());
    auto const before = fs::file_size(m_strPath);
    std::string const note(400'000, 'n');
    CPeer committing({"commit byte", m_strPath});
    ASSERT_EQ(committing.Line(), "ready");
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(Families::Save(*database, i, note));
    }
    EXPECT_EQ(fs::file_size(m_strPath), before);
    EXPECT_GT(LogSize(), 20 * note.size());
    committing.Kill();
    for (int i = 20; i < 30; ++i) {
        ASSERT_TRUE(Families::Save(*database, i, note));
    }
    EXPECT_GT(fs::file_size(m_strPath), before + 20 * note.size());
}

TEST_F(ContentionTest, ACommitWaitsForTheCheckpoint)
{
    auto const database = Open();
    CPeer moving({"checkpoint byte", m_strPath});
    ASSERT_EQ(moving.Line(), "ready");
    std::thread ending([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        moving.Kill();
    });
    EXPECT_TRUE(Families::Save(*database, 1));
    ending.join();
    EXPECT_EQ(Families::Count(*database), 1);
}

TEST_F(ContentionTest, OthersWriteWhileACheckpointWaitsForALongRead)
{
    auto const database = Open();
    ASSERT_TRUE(Families::Save(*database, 1));
    CPeer reading({"read", m_strPath});
    ASSERT_EQ(reading.Line(), "ready");
    ASSERT_TRUE(Families::Save(*database, 2));
    CPeer emptying({"checkpoint", m_strPath});
    ASSERT_EQ(emptying.Line(), "ready");
    for (int i = 3; i < 8; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        ASSERT_TRUE(Families::Save(*database, i)) << i;
    }
    reading.Kill();
    EXPECT_EQ(emptying.Line(), "done");
    EXPECT_EQ(LogSize(), 0U);
}

TEST_F(ContentionTest, DeletedTextIsInNoFileAfterACheckpoint)
{
    auto const occurrences = [&](std::string const& file) {
        return CPeer({"count text", file, "Penicillin allergy"}).Line();
    };
    auto const database = Open();
    ASSERT_TRUE(Families::Save(*database, 1, "Penicillin allergy"));
    ASSERT_NE(occurrences(m_strPath + "-wal"), "0") << "the search finds nothing at all";
    CKeyset keys;
    ASSERT_TRUE(database->FindKeys(Families::kFamilies, {"WHERE number = 1", {}}, keys));
    std::int64_t removed = 0;
    ASSERT_TRUE(database->Remove(Families::kFamilies, keys, removed));
    ASSERT_EQ(removed, 1);
    ASSERT_TRUE(database->Checkpoint());
    EXPECT_EQ(occurrences(m_strPath), "0");
    EXPECT_EQ(occurrences(m_strPath + "-wal"), "0");
}
