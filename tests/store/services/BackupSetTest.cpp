#include "store/services/BackupSet.h"

#include "store/services/BackupFolder.h"
#include "tests/platform/db/Faults.h"
#include "tests/store/WholeMember.h"
#include "tests/store/text/DataFileFixture.h"

#include <chrono>
#include <thread>

namespace
{

namespace fs = std::filesystem;

class BackupSetTest : public CDataFileTest
{
protected:
    void SetUp() override
    {
        CDataFileTest::SetUp();
        fs::create_directory(m_sets);
        AddMembers(20, 15);
        CDatabaseSession::Get().ShutDown();
    }

    CDbStatus BackUp(CBackupWatch const& watch = {})
    {
        m_result = {};
        auto status = MakeBackup(m_sets, watch, m_result);
        CDatabaseSession::Get().ShutDown();
        return status;
    }
    /// A set under the name of a second of 2026-11-16.
    std::string BackUpAt(int second)
    {
        CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 16, 18, 5, second));
        EXPECT_TRUE(BackUp());
        return m_result.name;
    }
    bool IsGood(std::string const& name) const
    {
        CBackupManifest manifest;
        return CheckBackup(m_sets / name, true, {}, manifest).IsOK();
    }
    Rows Names() const
    {
        Rows names;
        for (auto const& entry : fs::directory_iterator(m_sets)) {
            names.push_back(entry.path().filename());
        }
        std::ranges::sort(names, std::greater());
        return names;
    }
    /// What stands in the folder is whole sets.
    int ExpectGoodSets()
    {
        auto const names = Names();
        EXPECT_EQ(names, BackupSetsIn(m_sets));
        for (auto const& name : names) {
            EXPECT_TRUE(IsGood(name)) << name;
        }
        return static_cast<int>(names.size());
    }

    fs::path const m_sets = m_folder / "sets";
    CBackupResult m_result;
};

} // namespace

TEST_F(BackupSetTest, AFreshCentreGetsTheSameRows)
{
    Run(DataFile::center, "INSERT INTO categories (number, name) VALUES (7, 'Staff')");
    auto const before = SortedRows();
    auto const categories = Dump("categories", DataFile::center);
    ASSERT_TRUE(BackUp());
    EXPECT_EQ(m_result.records, (CBackupCounts{20, 300, 300, 0}));
    EXPECT_EQ(m_result.leftOut, 0);
    EXPECT_FALSE(fs::exists(m_sets / m_result.name / "body-compositions.dat"));
    auto const set = m_sets / m_result.name;

    auto const fresh = m_folder / "fresh";
    fs::create_directory(fresh);
    for (auto const file : kDataFiles) {
        EXPECT_TRUE(CreateDatabase(fresh / DataFileName(file), DataFileSchema(file)));
    }
    CDatabaseSession::Get().SetDataFolder(fresh);
    CRestoredCounts counts;
    EXPECT_TRUE(RestoreBackup(set, true, counts));
    EXPECT_EQ(counts.stored, m_result.records);
    EXPECT_TRUE(SortedRows() == before);
    // A second time there is nothing to do, unless members are to be replaced.
    Run(DataFile::member, "UPDATE members SET first_name = 'other'");
    EXPECT_TRUE(RestoreBackup(set, true, counts));
    EXPECT_EQ(counts.stored, CBackupCounts());
    EXPECT_FALSE(SortedRows() == before);
    EXPECT_TRUE(RestoreBackup(set, false, counts));
    EXPECT_EQ(counts.stored, (CBackupCounts{20}));
    EXPECT_TRUE(SortedRows() == before);
    // One fault in the last of the files, and none of them is restored.
    Run(DataFile::member, "DELETE FROM members");
    auto const evaluations = ReadFile(set / "evaluations.dat");
    WriteFile(set / "evaluations.dat", evaluations + evaluations.substr(0, 20));
    EXPECT_EQ(RestoreBackup(set, true, counts).Error(), DbError::damaged);
    EXPECT_EQ(Count("members"), 0);

    // The copies are a centre too.
    CDatabaseSession::Get().SetDataFolder(set);
    EXPECT_TRUE(SortedRows() == before);
    EXPECT_EQ(Dump("categories", DataFile::center), categories);
}

TEST_F(BackupSetTest, ARecordThatFitsNoLineStopsNoBackup)
{
    for (int i = 0; i < 4; ++i) {
        Run(DataFile::member, "INSERT INTO messages (member_id, message) VALUES (3, 'x')");
    }
    ASSERT_TRUE(BackUp());
    EXPECT_EQ(m_result.leftOut, 1);
    EXPECT_EQ(m_result.records[0], 19);
    EXPECT_NE(m_result.reason.find("more classes or messages"), std::string::npos);
    CBackupManifest manifest;
    EXPECT_TRUE(manifest.Read(m_sets / m_result.name));
    EXPECT_EQ(manifest.m_nLeftOut, 1);
    CDatabaseSession::Get().SetDataFolder(m_sets / m_result.name);
    EXPECT_EQ(Count("members"), 20);
}

TEST_F(BackupSetTest, KilledOrStoppedAtAnyMomentItIsWholeOrNotThere)
{
    auto const start = std::chrono::steady_clock::now();
    EXPECT_TRUE(BackUp());
    auto time = std::chrono::steady_clock::now() - start;
    int parts = 0;
    int whole = 0;
    for (int i = 0; i < 80; ++i) {
        fs::remove_all(m_sets / m_result.name);
        auto peer = StartPeer([&](CPeer const& self) {
            self.Tell(1);
            EXPECT_TRUE(BackUp());
        });
        EXPECT_EQ(peer.Next(), 1);
        std::this_thread::sleep_for(time * Random(0, 200) / 100);
        peer.Kill();
        auto const left = BackupSetsIn(m_sets);
        parts += left.empty() && !Names().empty() ? 1 : 0;
        whole += left.empty() ? 0 : 1;
        // However fast the machine is just now, some are killed early and some late.
        time = time * (left.empty() ? 11 : 9) / 10;
        EXPECT_TRUE(left.empty() || IsGood(left[0]));
        RemoveBackupLeftovers(m_sets);
        ASSERT_EQ(Names(), left) << i;
        fs::remove_all(m_sets);
        fs::create_directory(m_sets);
    }
    EXPECT_TRUE(parts > 10 && whole > 10) << parts << ' ' << whole;

    int last = 0;
    int stops = 0;
    double before = 0;
    auto const watch = [&](double done) {
        EXPECT_TRUE(done >= before && done <= 1) << done;
        before = done;
        return last-- > 0;
    };
    while (BackUp(watch).Error() == DbError::stopped) {
        EXPECT_EQ(Names(), Rows());
        before = 0;
        last = ++stops;
    }
    EXPECT_GT(stops, 15);
    EXPECT_EQ(ExpectGoodSets(), 1);
}

TEST_F(BackupSetTest, AFaultOfTheDiskLeavesNothing)
{
    int const struck = Faults::ForEach([&](int nth, int error, bool lasting) {
        SCOPED_TRACE(testing::Message() << error << (lasting ? " from " : " at ") << nth);
        fs::remove_all(m_sets);
        fs::create_directory(m_sets);
        Faults::Begin(nth, error, lasting);
        auto const status = BackUp();
        bool const hit = Faults::End();
        EXPECT_TRUE(hit || status) << status.Text();
        // The last call waits until the name is on the disk; it is there already.
        EXPECT_EQ(ExpectGoodSets(), status || !Names().empty() ? 1 : 0);
        EXPECT_EQ(m_result.leftOut != 0 && status, false);
        return hit && !HasFailure();
    });
    EXPECT_GT(struck, 30) << "the faults do not reach the store";
    EXPECT_EQ(Count("members"), 20);
}

TEST_F(BackupSetTest, SeveralAtOnceAndWritersDoNotDisturb)
{
    auto const backUp = [&](CPeer const&) {
        for (int i = 0; i < 4; ++i) { // of one second nine find a name
            EXPECT_TRUE(BackUp());
        }
    };
    CDatabaseSession::Get().ShutDown();
    CPeer first(backUp);
    CPeer second(backUp);
    CPeer const writer([](CPeer const& self) {
        std::int32_t save = 0;
        Saturate(self, std::chrono::milliseconds(700), [&] {
            ++save;
            return WholeMember::Save(700 + save % 9, save);
        });
    });
    StepsOf(writer);
    EXPECT_TRUE(first.Finish() && second.Finish());
    EXPECT_EQ(ExpectGoodSets(), 8);
    for (auto const& name : Names()) {
        CDatabaseSession::Get().SetDataFolder(m_sets / name);
        EXPECT_EQ(Count(WholeMember::kPartial), 20); // those of SetUp alone
    }
}

TEST_F(BackupSetTest, ThinningRemovesOldGoodSetsAlone)
{
    Rows names;
    for (int second = 0; second < 7; ++second) {
        names.push_back(BackUpAt(second));
    }
    EXPECT_EQ(names[3], "corvana-2026-11-16-180503");
    EXPECT_EQ(BackUpAt(6), names[6] + "-2");
    fs::remove_all(m_sets / m_result.name);
    WriteFile(m_sets / names[1] / "notes.txt", "mine");
    WriteFile(m_sets / names[4] / "members.dat", "rot");
    // Of another centre, and what only looks like a set.
    auto const manifest = m_sets / names[2] / CBackupManifest::kName;
    auto text = ReadFile(manifest);
    WriteFile(manifest, text.insert(text.find("folder ") + 7, "/other"));
    fs::create_directory(m_sets / "corvana-2026-11-16-180499");
    fs::create_directory(m_sets / "corvana-2020-01-01-000000");

    auto const before = Names();
    CThinned thinned;
    EXPECT_EQ(ThinBackups(
                  m_sets, 2, names[6], [](double) { return false; }, thinned)
                  .Error(),
        DbError::stopped);
    EXPECT_TRUE(ThinBackups(m_sets, 3, names[6], {}, thinned));
    EXPECT_EQ(thinned.removed, (Rows{names[0]}));
    EXPECT_EQ(thinned.faults.size(), 3U);
    auto expected = before;
    std::erase(expected, names[0]);
    EXPECT_EQ(Names(), expected);
    // The one just made stays though the clock was put back.
    thinned = {};
    EXPECT_TRUE(ThinBackups(m_sets, 1, names[3], {}, thinned));
    EXPECT_EQ(thinned.removed, (Rows{names[5]}));
    EXPECT_EQ(NewestBackup(m_sets), names[6]);
    EXPECT_TRUE(IsGood(names[6]) && IsGood(names[3]));
}
