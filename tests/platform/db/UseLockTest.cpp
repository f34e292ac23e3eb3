#include "platform/db/FileUse.h"
#include "tests/platform/db/Families.h"
#include "tests/platform/db/PlainConnection.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <sys/mman.h>
#include <thread>

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using UseLockTest = CFamiliesTest;

TEST_F(UseLockTest, AnyOtherUserKeepsMaintenanceAwayUntilItEndsOrIsKilled)
{
    auto const lock = m_folder / "family.ldb";
    WriteFile(lock, "left behind, which means nothing");
    for (bool const isKilled : {false, true}) {
        SCOPED_TRACE(isKilled);
        auto const user = StartUser([&](auto& database) { Count(database); });
        auto const users = FileUsers(m_strPath);
        ASSERT_EQ(users.size(), 1U);
        EXPECT_EQ(users[0].pid, user->Pid());
        EXPECT_EQ(users[0].program, "db_tests");
        auto database = Open();
        ExpectStatus(database->UseExclusively(), DbError::inUse);
        if (isKilled) {
            user->Kill();
        }
        EXPECT_TRUE(isKilled || user->Finish());
        EXPECT_TRUE(fs::exists(lock)) << "not the last user";
        EXPECT_TRUE(database->UseExclusively());
        database->ShareAgain();
        database.reset();
        EXPECT_FALSE(fs::exists(lock));
    }
    EXPECT_TRUE(FileUsers(m_strPath).empty());
}

TEST_F(UseLockTest, NobodyOpensAFileInMaintenanceAndAShortWaitIsOfOpeningAlone)
{
    std::unique_ptr<CDatabase> database;
    auto const open = [&] { return OpenDatabase(m_strPath, Schema(), database, 50ms); };
    auto const user = StartUser([&](auto& own) {
        EXPECT_TRUE(own.UseExclusively());
        ReadFile(m_folder / "family.ldb"); // to open and close it elsewhere must not drop the lock
    });
    ExpectRefused(DbError::inUse);
    auto const start = std::chrono::steady_clock::now();
    ExpectStatus(open(), DbError::inUse);
    user->Kill();
    EXPECT_NE(Open(), nullptr) << "the lock must die with its holder";
    {
        CPlainConnection const alone(m_strPath);
        alone.Run("PRAGMA locking_mode = EXCLUSIVE; DELETE FROM families");
        ExpectStatus(open(), DbError::busy);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1900ms);
    ASSERT_TRUE(open());
    CPlainConnection const writer(m_strPath);
    writer.Run("BEGIN IMMEDIATE");
    std::jthread const later([&] {
        std::this_thread::sleep_for(300ms);
        writer.Run("COMMIT");
    });
    EXPECT_TRUE(Save(*database, 1));
}

// The last user removes the file just when another one has opened it.
TEST_F(UseLockTest, NeverIsAnybodyAloneTogetherWithSomebodyElse)
{
    auto* const memory = ::mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE,
        MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    auto& users = *new (memory) std::atomic<int>(0);
    // Comes and goes as a user and a maintainer of the file.
    auto const hammer = [&](CPeer const& self) {
        std::int64_t alone = 0;
        Saturate(self, 700ms, [&] {
            CFileUse use;
            bool right = use.Acquire(m_strPath, 10s).IsOK();
            ++users;
            if (use.TryExclusive()) {
                ++alone;
                right = right && users == 1;
                std::this_thread::yield();
                right = right && users == 1;
                use.BackToShared();
            }
            --users;
            return right;
        });
        self.Tell(alone);
    };
    std::array<CPeer, 4> const peers = {CPeer(hammer), CPeer(hammer), CPeer(hammer), CPeer(hammer)};
    std::int64_t alone = 0;
    for (auto const& peer : peers) {
        StepsOf(peer);
        alone += peer.Next().value_or(0);
    }
    EXPECT_GT(alone, 50);
}

TEST_F(UseLockTest, AFileThatOthersChangeAndEmptyTheLogOfAlwaysOpens)
{
    CPeer const peer([&](CPeer const& self) {
        auto const database = Open();
        std::int64_t number = 0;
        Saturate(self, 1s, [&] {
            return Save(*database, ++number, std::string(20'000, 'n')) && database->Checkpoint();
        });
    });
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        EXPECT_NE(Open(), nullptr) << i;
    }
    StepsOf(peer);
}
