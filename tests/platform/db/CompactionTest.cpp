#include "tests/platform/db/Families.h"
#include "tests/platform/db/Faults.h"
#include "tests/platform/db/PlainConnection.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <sys/stat.h>
#include <thread>

namespace
{

namespace fs = std::filesystem;

/// Twenty families, in a file that has had a hundred more.
class CompactionTest : public CFamiliesTest
{
protected:
    void SetUp() override
    {
        CFamiliesTest::SetUp();
        CPlainConnection(m_strPath).Run(
            "WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 120) "
            "INSERT INTO families (number, children, note) SELECT i, 0, printf('%03000d', i) FROM "
            "n; DELETE FROM families WHERE number > 20");
    }
    CDbStatus Compact() const { return CompactDatabaseFile(m_strPath, Schema()); }
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
    WriteFile(m_strOld + "-wal", "what was done to the last one");
    WriteFile(m_folder / "family.ldb", "left behind");
    ::chmod(m_strPath.c_str(), 0640);
    auto const before = fs::file_size(m_strPath);
    auto const status = Compact();
    EXPECT_TRUE(status) << status.Text();
    EXPECT_LT(fs::file_size(m_strPath), before / 2);
    EXPECT_EQ(fs::file_size(m_strOld), before);
    EXPECT_EQ(fs::status(m_strPath).permissions(), fs::perms(0640));
    EXPECT_EQ(ReadFile(m_strPath).substr(18, 2), "\2\2") << "not in the log's mode";
    EXPECT_EQ(Folder().size(), 2U);
}

TEST_F(CompactionTest, AFileThatAnotherProgramUsesIsLeftAlone)
{
    auto const user = StartUser([](auto& database) { EXPECT_TRUE(Save(database, 1000)); });
    ExpectLeftAlone(DbError::inUse, "db_tests (process " + std::to_string(user->Pid()) + ")");
    EXPECT_TRUE(user->Finish());
    CPlainConnection const plain(m_strPath);
    plain.Run("SELECT count(*) FROM families");
    ExpectLeftAlone(DbError::busy, "busy");
    ExpectSound(*Open(), 21);
}

TEST_F(CompactionTest, IndexesAreRepairedAndADamagedFileIsLeftAlone)
{
    CPlainConnection(m_strPath).Run(
        "CREATE TEMP TABLE kept AS SELECT * FROM sqlite_schema WHERE name = 'children_family';"
        "PRAGMA writable_schema = ON; DELETE FROM sqlite_schema WHERE name = 'children_family';"
        "PRAGMA writable_schema = RESET; INSERT INTO children (family_id, name) VALUES (1, 'Ann');"
        "PRAGMA writable_schema = ON; INSERT INTO sqlite_schema SELECT * FROM kept");
    std::vector<std::string> findings;
    EXPECT_TRUE(Open()->Check(findings) && !findings.empty()) << "nothing to repair";
    EXPECT_TRUE(Compact());
    ExpectSound(*Open(), 20);

    auto bytes = ReadFile(m_strPath);
    auto const page = bytes.find("0000000") / 4096 * 4096;
    WriteFile(m_strPath, bytes.replace(page, 4096, 4096, '\x7F'));
    ExpectLeftAlone(DbError::damaged, "is damaged");
}

// Whatever fails, and whenever it is killed: the file is there and whole, what was saved before is
// in it, and so it is in the one before it.
TEST_F(CompactionTest, NoFaultAndNoKillLosesAnything)
{
    std::int64_t saved = 20;
    int withPart = 0;
    // Whether the call that is to fail came about.
    auto const trial = [&](int call, int error, bool lasting, std::chrono::nanoseconds after = {}) {
        SCOPED_TRACE(testing::Message() << error << (lasting ? " from " : " at ") << call);
        fs::remove(m_strOld);
        CPeer compacting([&](CPeer const& self) {
            EXPECT_TRUE(Save(*Open(), 1000 + saved));
            Faults::Exchange(saved % 4 != 0);
            self.Tell(1);
            Faults::Begin(call, error, lasting);
            auto const status = Compact();
            bool const hasStruck = Faults::End();
            EXPECT_TRUE(hasStruck || status) << status.Text();
            EXPECT_TRUE(status || (status.Error() == DbError::full) == (error == ENOSPC));
            EXPECT_TRUE(status || !fs::exists(m_strPath + ".part"));
            self.Tell(hasStruck ? 1 : 0);
        });
        saved += compacting.Next().value_or(0);
        std::this_thread::sleep_for(after);
        bool const isStruck = call > 0 && compacting.Next().value_or(1) == 1;
        EXPECT_TRUE(call == 0 || error == Faults::kKill || compacting.Finish());
        compacting.Kill();
        withPart += fs::exists(m_strPath + ".part") ? 1 : 0;
        ExpectSound(*Open(), saved);
        EXPECT_FALSE(fs::exists(m_strPath + ".part")) << "nobody else would remove it";
        if (fs::exists(m_strOld)) {
            ExpectSound(*Open(m_strOld), saved);
        }
        return isStruck && !HasFailure();
    };
    EXPECT_GT(Faults::ForEach(trial), 60) << "the faults do not reach the engine";
    for (int call = 1; trial(call, Faults::kKill, false); ++call) { }
    auto const start = std::chrono::steady_clock::now();
    trial(1000, EIO, false);
    auto const time = std::chrono::steady_clock::now() - start;
    std::mt19937 random(1);
    for (int kill = 0; kill < 300 && !HasFailure(); ++kill) {
        trial(0, 0, false, time * (random() % 1000) / 1000);
    }
    EXPECT_GT(withPart, 50) << "killed before it came to work, or after";
}

TEST_F(CompactionTest, WhatAnotherProgramStoresMeanwhileIsNotLost)
{
    std::int64_t families = 20;
    int given = 0; // up, because of it
    bool held = true;
    for (int call = 1; held && !HasFailure(); ++call) {
        SCOPED_TRACE(call);
        CPeer compacting([&](CPeer const& self) {
            Faults::Begin(call, Faults::kHold, false);
            auto const status = Compact();
            held = Faults::End();
            if (!held) {
                CPeer::Hold();
            }
            EXPECT_TRUE(status || status.Error() == DbError::busy) << status.Text();
            self.Tell(held ? 1 : 0);
            self.Tell(status ? 0 : 1);
        });
        compacting.WaitUntilItHolds();
        if (fs::exists(m_strPath + ".part")) { // else nothing is copied yet, and SQLite waits long
            auto const sql = "INSERT INTO families (number, children, note) VALUES ("
                + std::to_string(1000 + call) + ", 0, '')";
            CPlainConnection const plain(m_strPath);
            families
                += sqlite3_exec(plain.Get(), sql.c_str(), nullptr, nullptr, nullptr) == 0 ? 1 : 0;
        }
        EXPECT_TRUE(compacting.Finish());
        held = compacting.Next() == 1;
        given += compacting.Next() == 1 ? 1 : 0;
        ExpectSound(*Open(), families);
    }
    EXPECT_TRUE(given > 5 && families > 25) << given << ' ' << families;
}

TEST_F(CompactionTest, ACopyAndACheckTellHowFarTheyAreAndCanBeStopped)
{
    CPlainConnection(m_strPath).Run(
        "WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 50000) "
        "INSERT INTO children SELECT NULL, 1, printf('%0500d', i) FROM n");
    auto const database = Open();
    auto const copy = m_folder / "copy.mdb";
    std::vector<std::string> findings;
    std::vector<double> told;
    auto const run = [&](bool copies, std::size_t most) {
        told.clear();
        auto const watch = [&](double done) {
            told.push_back(done);
            return told.size() < most;
        };
        return copies ? database->CopyTo(copy, watch) : database->Check(findings, watch);
    };
    for (bool const copies : {true, false}) {
        EXPECT_EQ(run(copies, 3).Error(), DbError::stopped);
        EXPECT_NE(fs::exists(copy), copies);
        EXPECT_TRUE(run(copies, 10'000));
        ASSERT_GT(told.size(), 10U);
        EXPECT_TRUE(std::ranges::is_sorted(told));
        EXPECT_TRUE(told[told.size() / 2] > 0.3 && told[told.size() / 2] < 0.7)
            << told[told.size() / 2];
    }
    EXPECT_EQ(findings, std::vector<std::string>());
    ExpectSound(*Open(copy), 20);
}
