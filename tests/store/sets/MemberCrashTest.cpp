#include "tests/store/StoreFixture.h"
#include "tests/store/WholeMember.h"

#include <random>
#include <thread>

using MemberCrashTest = CStoreTest;

/// Each member is saved three times: added, changed, and changed with a new ID.
TEST_F(MemberCrashTest, AMemberIsSavedWholeOrNotAtAllByAProgramThatIsKilled)
{
    std::mt19937 random(20261124);
    std::int64_t save = 0;
    auto const saveNext = [&] {
        auto const member = static_cast<std::int32_t>(save / 3 + 1);
        auto const id = save % 3 < 2 ? member : member + 1'000'000;
        return WholeMember::Save(member, save, id, member);
    };
    for (int kill = 0; kill < 20; ++kill) {
        SCOPED_TRACE(kill);
        auto saving = StartPeer([&](CPeer const& self) {
            for (; saveNext(); ++save) {
                self.Tell(save);
            }
        });
        EXPECT_EQ(saving.Next(), save);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 30'000));
        saving.Kill();
        for (auto told = saving.Next(); told; told = saving.Next()) {
            EXPECT_EQ(*told, ++save);
        }
        // One more may have been saved without the time to tell.
        auto const last
            = Number(DataFile::member, "SELECT max(CAST(first_name AS INTEGER)) FROM members");
        ASSERT_TRUE(last == save || last == save + 1) << last << " " << save;
        EXPECT_EQ(Count("members"), last / 3 + 1);
        EXPECT_EQ(Count("members WHERE member_id > 1000000"), (last + 1) / 3);
        ASSERT_EQ(Count(WholeMember::kPartial), 0);
        EXPECT_EQ(Count("pragma_integrity_check WHERE integrity_check <> 'ok'"), 0);
        save = last + 1;
    }
    EXPECT_GT(save, 100) << "killed before it came to work";
}
