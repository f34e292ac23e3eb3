#include "store/sets/DAOMem.h"
#include "store/sets/DAOWk.h"
#include "tests/store/StoreFixture.h"
#include "tests/store/StorePeer.h"
#include "tests/store/WholeMember.h"

#include <iostream>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::int32_t kShared = 5; // members whom all writers change
constexpr auto kDuration = std::chrono::seconds(2);

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

    static bool AddWorkout(std::int32_t memberID)
    {
        return AddRow<CDAOWk>([&](CDAOWk& set) { set.m_lMemberID = memberID; }).IsOK();
    }

    /// Changes the shared members, adds one of its own from this ID on and a workout, over and
    /// over; tells how often that was done and how often it failed.
    static void Write(std::int32_t firstID, CStorePeer::Tell const& tell)
    {
        std::int64_t done = 0;
        std::int64_t failed = 0;
        auto const end = Clock::now() + kDuration;
        for (auto id = firstID; Clock::now() < end; ++id) {
            auto const shared = id % kShared + 1;
            bool const saved
                = WholeMember::Save(shared, id) && WholeMember::Save(id, id) && AddWorkout(shared);
            ++(saved ? done : failed);
        }
        tell(done);
        tell(failed);
    }

    /// Whether the list of members, and one of them in all tables, are whole.
    static bool Read(std::int32_t memberID)
    {
        CDAOMem list;
        bool whole = true;
        for (int count = list.FindAllMembers(true); count > 0; --count) {
            whole = whole && list.m_Address == list.m_FirstName;
            list.Op(CDAOEFSet::opMoveNext);
        }
        // Several finds see one moment where nobody else can write between them.
        CTransaction const moment(Database(DataFile::member));
        return whole && moment.Status() && WholeMember::Load(memberID) > 0;
    }
};

} // namespace

TEST_F(MemberContentionTest, WritersLoseNoRowAndAReaderSeesWholeMembers)
{
    CStorePeer const one([](auto const& tell) { Write(1'000'000, tell); });
    CStorePeer const two([](auto const& tell) { Write(2'000'000, tell); });
    CStorePeer const reader([](auto const& tell) {
        std::int64_t done = 0;
        std::int64_t partial = 0;
        for (auto const end = Clock::now() + kDuration; Clock::now() < end; ++done) {
            partial += Read(static_cast<std::int32_t>(done % kShared + 1)) ? 0 : 1;
        }
        tell(done);
        tell(partial);
    });
    std::int64_t saves = 0;
    for (auto const* const peer : {&one, &two, &reader}) {
        auto const done = peer->Next().value_or(0);
        EXPECT_EQ(peer->Next(), 0);
        EXPECT_GT(done, 0) << "starved";
        saves += peer == &reader ? 0 : done;
        std::cout << done << " in " << kDuration.count() << " s\n";
    }
    EXPECT_EQ(Number(DataFile::member, "SELECT count(*) FROM members"), kShared + saves);
    EXPECT_EQ(Number(DataFile::member, "SELECT count(*) FROM workouts"), saves);
    EXPECT_EQ(WholeMember::Partial(), 0);
}

// Shows that the reader above looks at the right moments.
TEST_F(MemberContentionTest, WithoutATransactionAReaderSeesPartialMembers)
{
    CStorePeer const writer([](auto const& /*tell*/) {
        std::int64_t save = 1;
        while (WholeMember::SaveRows(1, save)) {
            ++save;
        }
    });
    auto const end = Clock::now() + 20 * kDuration;
    bool whole = true;
    while (whole && Clock::now() < end) {
        whole = Read(1);
    }
    EXPECT_FALSE(whole);
}
