#include "platform/db/FileUse.h"
#include "tests/TempFolder.h"
#include "tests/platform/db/Families.h"
#include "tests/platform/db/PeerProcess.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace
{

namespace fs = std::filesystem;

class UseLockTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(CreateDatabase(m_strPath, Families::Schema())); }

    CDbStatus Open(std::unique_ptr<CDatabase>& database) const
    {
        return OpenDatabase(m_strPath, Families::Schema(), database);
    }

    std::unique_ptr<CDatabase> Open() const
    {
        std::unique_ptr<CDatabase> database;
        auto const status = Open(database);
        EXPECT_TRUE(status) << status.Text();
        return database;
    }

    CTempFolder m_temporary;
    std::string const m_strPath = m_temporary.Path() / "family.mdb";
    std::string const m_strLock = m_temporary.Path() / "family.ldb";
};

} // namespace

TEST_F(UseLockTest, AnyOtherUserKeepsMaintenanceAwayUntilItEndsOrIsKilled)
{
    auto const database = Open();
    for (auto const* const task : {"idle", "read", "write"}) {
        for (bool const killed : {false, true}) {
            SCOPED_TRACE(std::string(task) + (killed ? " killed" : " ended"));
            CPeer peer({task, m_strPath});
            ASSERT_EQ(peer.Line(), "ready");
            auto const status = database->UseExclusively();
            EXPECT_EQ(status.Error(), DbError::inUse);
            EXPECT_NE(status.Text().find(m_strPath), std::string::npos);
            if (killed) {
                peer.Kill();
            } else {
                EXPECT_EQ(peer.Finish(), 0);
            }
            EXPECT_TRUE(database->UseExclusively());
            database->ShareAgain();
        }
    }
    EXPECT_EQ(Families::Count(*database), 0);
}

TEST_F(UseLockTest, NobodyOpensAFileInMaintenance)
{
    CPeer peer({"exclusive", m_strPath});
    ASSERT_EQ(peer.Line(), "ready");
    std::unique_ptr<CDatabase> database;
    auto const status = Open(database);
    EXPECT_EQ(status.Error(), DbError::inUse);
    EXPECT_NE(status.Text().find(m_strPath), std::string::npos);
    EXPECT_EQ(database, nullptr);
    peer.Kill();
    EXPECT_TRUE(Open(database)) << "the lock must die with its holder";
}

TEST_F(UseLockTest, TheLockFileGoesWithTheLastUserAndMeansNothingByItself)
{
    std::ofstream(m_strLock) << "left behind";
    auto first = Open();
    ASSERT_TRUE(first->UseExclusively());
    first->ShareAgain();
    {
        CPeer second({"idle", m_strPath});
        ASSERT_EQ(second.Line(), "ready");
        EXPECT_EQ(second.Finish(), 0);
    }
    EXPECT_TRUE(fs::exists(m_strLock));
    first.reset();
    EXPECT_FALSE(fs::exists(m_strLock));
}

TEST_F(UseLockTest, OpeningAndClosingTheLockFileElsewhereKeepsTheLock)
{
    auto const database = Open();
    ASSERT_TRUE(database->UseExclusively());
    std::ifstream(m_strLock).get();
    EXPECT_EQ(CPeer({"idle", m_strPath}).Line().substr(0, 8), "refused ");
}

TEST_F(UseLockTest, TellsWhoUsesTheFile)
{
    CPeer peer({"idle", m_strPath});
    ASSERT_EQ(peer.Line(), "ready");
    auto const users = FileUsers(m_strPath);
    ASSERT_EQ(users.size(), 1U);
    EXPECT_EQ(users[0].pid, peer.Pid());
    EXPECT_EQ(users[0].program, "DbPeer");
    peer.Kill();
    EXPECT_TRUE(FileUsers(m_strPath).empty());
}

// The last user removes the file just when another one has opened it.
TEST_F(UseLockTest, NeverIsAnybodyAloneTogetherWithSomebodyElse)
{
    auto const shared = m_temporary.Path() / "holders";
    std::ofstream(shared) << std::string(64, '\0');
    std::vector<std::unique_ptr<CPeer>> peers;
    for (int i = 0; i < 4; ++i) {
        peers.push_back(
            std::make_unique<CPeer>(std::vector<std::string>{"hammer", m_strPath, "1500", shared}));
    }
    int alone = 0;
    for (auto const& peer : peers) {
        int grants = 0;
        int wrong = -1;
        std::istringstream(peer->Line()) >> grants >> wrong;
        EXPECT_EQ(wrong, 0);
        alone += grants;
    }
    EXPECT_GT(alone, 100);
}

TEST_F(UseLockTest, AFileThatOthersChangeAndEmptyTheLogOfAlwaysOpens)
{
    CPeer peer({"churn", m_strPath, "1500", "0"});
    int opened = 0;
    for (; opened < 20'000 && peer.IsRunning(); ++opened) {
        std::unique_ptr<CDatabase> database;
        auto const status = Open(database);
        ASSERT_TRUE(status) << opened << " " << status.Text();
    }
    EXPECT_GT(opened, 10);
}
