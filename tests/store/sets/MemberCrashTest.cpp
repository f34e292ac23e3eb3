#include "tests/store/StoreFixture.h"
#include "tests/store/StorePeer.h"
#include "tests/store/WholeMember.h"

#include <random>
#include <thread>

namespace
{

constexpr std::int32_t kMoved = 1'000'000; // from a member's first ID to the second

using SaveFunction
    = bool (*)(std::int32_t from, std::int32_t to, std::int64_t save, std::int32_t workoutNumber);

/// Each member is saved three times: added, changed, and changed with a new ID.
bool SaveNumber(SaveFunction save, std::int64_t number)
{
    auto const member = static_cast<std::int32_t>(number / 3 + 1);
    return save(member, number % 3 == 2 ? member + kMoved : member, number, member);
}

class MemberCrashTest : public CStoreTest
{
protected:
    /// Kills a program that makes one save after the other from this number on, at a random moment;
    /// returns the number that follows the last save it called done.
    std::int64_t KillSaving(SaveFunction save, std::int64_t number)
    {
        CStorePeer saving([&](CStorePeer::Tell const& tell) {
            for (auto next = number; SaveNumber(save, next); ++next) {
                tell(next);
            }
        });
        EXPECT_EQ(saving.Next(), number);
        std::this_thread::sleep_for(std::chrono::microseconds(m_random() % 30'000));
        saving.Kill();
        auto next = number + 1;
        for (auto told = saving.Next(); told; told = saving.Next()) {
            EXPECT_EQ(*told, next);
            ++next;
        }
        return next;
    }

    static void ExpectSound()
    {
        std::vector<std::string> findings;
        EXPECT_TRUE(Database(DataFile::member).Check(findings));
        EXPECT_EQ(findings, std::vector<std::string>());
    }

    std::mt19937 m_random{20261124};
};

} // namespace

TEST_F(MemberCrashTest, AMemberIsSavedWholeOrNotAtAll)
{
    std::int64_t number = 0;
    for (int kill = 0; kill < 40; ++kill) {
        SCOPED_TRACE(kill);
        auto const next = KillSaving(WholeMember::Save, number);
        // One more may have been saved without the time to tell.
        auto const last
            = Number(DataFile::member, "SELECT max(CAST(first_name AS INTEGER)) FROM members");
        ASSERT_TRUE(last == next - 1 || last == next) << last << " " << next;
        EXPECT_EQ(Number(DataFile::member, "SELECT count(*) FROM members"), last / 3 + 1);
        EXPECT_EQ(
            Number(DataFile::member, "SELECT count(*) FROM members WHERE member_id > 1000000"),
            (last + 1) / 3);
        ASSERT_EQ(WholeMember::Partial(), 0);
        ExpectSound();
        number = last + 1;
    }
    EXPECT_GT(number, 300) << "killed before it came to work";
}

// Shows that the kills above hit the right moments.
TEST_F(MemberCrashTest, WithoutATransactionSomeArePartial)
{
    std::int64_t number = 0;
    std::int64_t partial = 0;
    for (int kill = 0; kill < 40 && partial == 0; ++kill) {
        number = (KillSaving(WholeMember::SaveRows, number) / 3 + 1) * 3;
        partial = WholeMember::Partial();
    }
    EXPECT_GT(partial, 0);
}
