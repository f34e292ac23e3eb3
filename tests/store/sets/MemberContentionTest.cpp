#include "store/sets/DAOMem.h"
#include "store/sets/DAOSmEval.h"
#include "tests/store/StoreFixture.h"
#include "tests/store/WholeMember.h"

#include <random>
#include <thread>

namespace
{

using namespace std::chrono_literals;
constexpr std::int32_t kShared = 5; // members whom all writers change

class MemberContentionTest : public CStoreTest
{
protected:
    void SetUp() override
    {
        CStoreTest::SetUp();
        for (std::int32_t id = 1; id <= kShared; ++id) {
            ASSERT_TRUE(WholeMember::Save(id, 1));
        }
    }

    /// Whether the members, and what their list shows, are whole.
    static bool Read()
    {
        CDAOMem list;
        bool whole = Count(WholeMember::kPartial) == 0;
        for (int count = list.FindAllMembers(true); count > 0; --count) {
            whole = whole && list.m_Address == list.m_FirstName;
            list.Op(CDAOEFSet::opMoveNext);
        }
        return whole;
    }
};

} // namespace

TEST_F(MemberContentionTest, WritersLoseNoRowAndAReaderSeesWholeMembers)
{
    // Changes the shared members, adds one of its own and an evaluation, over and over.
    auto const writeFrom = [](std::int32_t id) {
        return [id](CPeer const& self) mutable {
            Saturate(self, 2s, [&] {
                auto const shared = ++id % kShared + 1;
                bool const isSaved = WholeMember::Save(shared, id) && WholeMember::Save(id, id);
                CTransaction change(Database(DataFile::member));
                auto const status = AddRow<CDAOSmEval>([&](CDAOSmEval& set) {
                    set.m_lEvalID = set.GenerateIDNum(); // one that no other gets
                    set.m_lMemberID = shared;
                });
                return isSaved && status && change.Commit();
            });
        };
    };
    auto const one = StartPeer(writeFrom(1'000'000));
    auto const two = StartPeer(writeFrom(2'000'000));
    auto const reader = StartPeer([](CPeer const& self) { Saturate(self, 2s, Read); });
    std::uintmax_t longestLog = 0;
    for (int i = 0; i < 80; ++i) {
        std::this_thread::sleep_for(20ms);
        std::error_code ignored;
        auto const size = std::filesystem::file_size(m_folder / "member.mdb-wal", ignored);
        longestLog = std::max(longestLog, ignored ? 0 : size);
    }
    auto const saves = StepsOf(one) + StepsOf(two);
    StepsOf(reader);
    EXPECT_LT(longestLog, 24U << 20) << "nobody ever came to a checkpoint";
    EXPECT_EQ(Count("members"), kShared + saves);
    EXPECT_EQ(Number(DataFile::member, "SELECT max(eval_id) FROM evaluations"), saves);
    EXPECT_EQ(Count(WholeMember::kPartial), 0);
}

TEST_F(MemberContentionTest, AMemberIsSavedWholeOrNotAtAllByAProgramThatIsKilled)
{
    std::mt19937 random(20261124);
    std::int64_t told = 0;
    for (int kill = 1; kill <= 20; ++kill) {
        SCOPED_TRACE(kill);
        auto saving = StartPeer([&](CPeer const& self) {
            for (auto id = kill * 10'000; WholeMember::Save(id, id); ++id) {
                self.Tell(id);
            }
        });
        EXPECT_TRUE(saving.Next());
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 30'000));
        saving.Kill();
        for (++told; saving.Next(); ++told) { }
        // Each one that was killed may have saved one more without the time to tell.
        auto const saved = Count("members") - kShared;
        EXPECT_TRUE(saved >= told && saved <= told + kill) << saved << ' ' << told;
        EXPECT_EQ(Count(WholeMember::kPartial), 0);
        EXPECT_EQ(Count("pragma_integrity_check WHERE integrity_check <> 'ok'"), 0);
    }
    EXPECT_GT(told, 50) << "killed before it came to work";
}
