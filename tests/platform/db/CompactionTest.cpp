#include "tests/platform/db/Families.h"
#include "tests/platform/db/Faults.h"
#include "tests/platform/db/PlainConnection.h"

#include <chrono>
#include <random>
#include <sys/stat.h>
#include <thread>

namespace
{

namespace fs = std::filesystem;

class CompactionTest : public CFamiliesTest
{
protected:
    CDbStatus Compact() const { return CompactDatabaseFile(m_strPath, Schema()); }

    /// Families with long notes, of which all but these go again.
    void Fill(std::int64_t kept) const
    {
        auto const database = Open();
        CTransaction transaction(*database);
        for (std::int64_t i = 0; i < kept + 100; ++i) {
            ASSERT_TRUE(Save(*database, i, std::string(3000, 'n')));
        }
        std::int64_t removed = 0;
        DbValue const first = kept;
        ASSERT_TRUE(
            database->Execute("DELETE FROM families WHERE number >= ?", {&first, 1}, removed));
        ASSERT_TRUE(transaction.Commit());
    }
    void ExpectLeftAlone(DbError error, std::string const& words) const
    {
        WriteFile(m_strOld, "the file before the last compaction");
        ExpectStatus(Compact(), error, words);
        EXPECT_EQ(ReadFile(m_strOld), "the file before the last compaction");
        EXPECT_FALSE(fs::exists(m_strPath + ".part"));
    }

    std::string const m_strOld = m_folder / "family.old";
};

} // namespace

TEST_F(CompactionTest, TheFileHasNoGapsAndTheOneBeforeItIsOld)
{
    for (bool const canExchange : {true, false}) {
        SCOPED_TRACE(canExchange);
        TearDown();
        fs::remove(m_strPath);
        SetUp();
        Fill(20);
        ::chmod(m_strPath.c_str(), 0640);
        WriteFile(m_strOld, "what the last compaction left");
        WriteFile(m_strOld + "-wal", "and what was done to it");
        WriteFile(m_folder / "family.ldb", "left behind");
        auto const before = fs::file_size(m_strPath);
        Faults::Exchange(canExchange);
        auto const status = Compact();
        Faults::Exchange(true);
        EXPECT_TRUE(status) << status.Text();
        EXPECT_LT(fs::file_size(m_strPath), before / 2);
        EXPECT_EQ(fs::file_size(m_strOld), before);
        EXPECT_EQ(fs::status(m_strPath).permissions(), fs::perms(0640));
        EXPECT_EQ(ReadFile(m_strPath).substr(18, 2), "\2\2") << "not in the log's mode";
        EXPECT_EQ(Folder().size(), 2U);
        ExpectSound(*Open(), 20);
        ExpectSound(*Open(m_strOld), 20);
        EXPECT_TRUE(Save(*Open(), 1000));
    }
}

TEST_F(CompactionTest, AFileThatAnotherProgramUsesIsLeftAlone)
{
    Fill(20);
    auto const user = StartUser([](auto& database) { EXPECT_TRUE(Save(database, 1000)); });
    ExpectLeftAlone(DbError::inUse, "db_tests (process " + std::to_string(user->Pid()) + ")");
    EXPECT_TRUE(user->Finish());
    {
        CPlainConnection const plain(m_strPath);
        plain.Run("SELECT count(*) FROM families");
        ExpectLeftAlone(DbError::busy, "busy");
    }
    // Between the copy and the exchange.
    Faults::AtSync([this] {
        CPlainConnection(m_strPath).Run("UPDATE families SET number = 1001 WHERE number = 1000");
    });
    ExpectLeftAlone(DbError::busy, "was changed by another program");
    EXPECT_EQ(Number(*Open(), "SELECT max(number) FROM families"), 1001);
    ExpectSound(*Open(), 21);
}

TEST_F(CompactionTest, IndexesAreRepairedAndRowsAreNeverLost)
{
    Fill(20);
    {
        CPlainConnection const plain(m_strPath);
        plain.Run("CREATE TEMP TABLE kept AS SELECT * FROM sqlite_schema WHERE type = 'index' AND "
                  "name = 'children_family'; PRAGMA writable_schema = ON; DELETE FROM "
                  "sqlite_schema WHERE name = 'children_family'; PRAGMA writable_schema = RESET;"
                  "INSERT INTO children (family_id, name) VALUES (1, 'Ann'), (2, 'Ben');"
                  "PRAGMA writable_schema = ON; INSERT INTO sqlite_schema SELECT * FROM kept;"
                  "PRAGMA writable_schema = RESET");
    }
    std::vector<std::string> findings;
    EXPECT_TRUE(Open()->Check(findings));
    EXPECT_FALSE(findings.empty()) << "nothing to repair";
    auto const status = Compact();
    EXPECT_TRUE(status) << status.Text();
    ExpectSound(*Open(), 20);
    EXPECT_EQ(Number(*Open(), "SELECT count(*) FROM children WHERE family_id = 2"), 1);

    auto bytes = ReadFile(m_strPath);
    auto const page = bytes.find("nnnn") / 4096 * 4096;
    WriteFile(m_strPath, bytes.replace(page, 4096, 4096, '\x7F'));
    ExpectLeftAlone(DbError::damaged, "is damaged");
}

// The file is there and whole, what was saved before is in it, and so it is in the one before it.
TEST_F(CompactionTest, AKillAtAnyMomentLosesNothing)
{
    std::int64_t saved = 20;
    std::array<int, 3> seen = {}; // with neither of the two, with the part of a copy, with ".old"
    Fill(saved);
    auto const start = std::chrono::steady_clock::now();
    ASSERT_TRUE(Compact());
    auto const time = std::chrono::steady_clock::now() - start;
    auto const kill = [&](bool canExchange, int call, std::chrono::nanoseconds after) {
        SCOPED_TRACE(testing::Message() << "after " << saved);
        fs::remove(m_strOld);
        CPeer compacting([&](CPeer const& self) {
            EXPECT_TRUE(Save(*Open(), 1000 + saved));
            Faults::Exchange(canExchange);
            self.Tell(saved);
            Faults::Begin(call, Faults::kKill, false);
            EXPECT_TRUE(Compact());
        });
        EXPECT_EQ(compacting.Next(), saved++);
        std::this_thread::sleep_for(after);
        bool const isThrough = call > 0 && compacting.Finish();
        compacting.Kill();
        bool const hasOld = fs::exists(m_strOld);
        ++seen[hasOld ? 2 : fs::exists(m_strPath + ".part") ? 1 : 0];
        ExpectSound(*Open(), saved);
        EXPECT_FALSE(fs::exists(m_strPath + ".part")) << "nobody else would remove it";
        if (hasOld) {
            ExpectSound(*Open(m_strOld), saved);
        }
        return isThrough || HasFailure();
    };
    for (bool const canExchange : {true, false}) {
        int call = 1;
        while (!kill(canExchange, call, {})) {
            ++call;
        }
        EXPECT_GT(call, 20) << "the kills do not reach the engine";
    }
    std::mt19937 random(1);
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        kill(true, 0, time * (random() % 1000) / 800);
    }
    for (int const times : seen) {
        EXPECT_GT(times, 5);
    }
}
