#include "store/services/RecordTransfer.h"
#include "store/text/DataFileWriter.h"
#include "tests/platform/db/Faults.h"
#include "tests/store/ForeignProgram.h"
#include "tests/store/text/DataFileFixture.h"

#include <chrono>
#include <thread>

namespace
{

namespace fs = std::filesystem;
using Mode = CRecordTransfer::Mode;

class RecordTransferTest : public CDataFileTest
{
protected:
    void SetUp() override
    {
        CDataFileTest::SetUp();
        AddMembers(9, 40);
        KeepAsModel();
        StartAnew();
    }

    /// Writes a set into the file, some rows at a time, and deletes it from the database.
    static CDbStatus Archive(CDAOFileSet& set, std::string const& path)
    {
        CRecordTransfer transfer(set, Mode::archive);
        int count = 0;
        auto status = transfer.Begin(count);
        std::vector<std::int32_t> members;
        status = status ? transfer.WriteFile(path, count, [] { return true; }) : status;
        return status ? transfer.DeleteWritten(members) : status;
    }
    CDbStatus ArchiveAll() const
    {
        CDAOEval set;
        set.FindEvals(CDAOSmEval::idMember, 0);
        return set.LastStatus() ? Archive(set, m_strFile) : set.LastStatus();
    }

    /// Every record is in the database, or in a whole file of the name.
    void ExpectNothingLost(std::map<std::string, Rows> const& before)
    {
        if (fs::exists(m_strFile)) {
            EXPECT_EQ(Restore(m_setEval, ReadFile(m_strFile)), 360 - Count("evaluations"));
            EXPECT_TRUE(m_setEval.LastStatus()) << m_setEval.LastStatus().Text();
        }
        EXPECT_TRUE(SortedRows() == before);
    }

    std::string const m_strFile = m_folder / "archive.dat";
};

} // namespace

TEST_F(RecordTransferTest, AnArchiveKilledAtAnyMomentLosesNothing)
{
    auto const before = SortedRows();
    auto const start = std::chrono::steady_clock::now();
    EXPECT_TRUE(ArchiveAll());
    auto const time = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(Count("evaluations") + Count("skinfolds") + Count("lifts"), 0);
    ExpectNothingLost(before);
    int left = 0;
    int written = 0;
    for (int i = 0; i < 150; ++i) {
        StartAnew();
        fs::remove(m_strFile);
        auto peer = StartPeer([&](CPeer const& self) {
            self.Tell(1);
            EXPECT_TRUE(ArchiveAll());
        });
        EXPECT_EQ(peer.Next(), 1);
        std::this_thread::sleep_for(time * Random(0, 130) / 100);
        peer.Kill();
        left += Count("evaluations") > 0 ? 1 : 0;
        written += fs::exists(m_strFile) ? 1 : 0;
        ExpectNothingLost(before);
        ASSERT_FALSE(HasFailure()) << i;
    }
    EXPECT_TRUE(left > 20 && written > 20) << left << ' ' << written;
}

TEST_F(RecordTransferTest, AnArchiveThatFailsLosesNothing)
{
    auto const before = SortedRows();
    int const struck = Faults::ForEach([&](int nth, int error, bool lasting) {
        SCOPED_TRACE(testing::Message() << error << (lasting ? " from " : " at ") << nth);
        StartAnew();
        fs::remove(m_strFile);
        Faults::Begin(nth, error, lasting);
        bool const done = ArchiveAll().IsOK();
        bool const hit = Faults::End();
        EXPECT_TRUE(hit || done);
        EXPECT_EQ(Count("evaluations"), done ? 0 : 360);
        EXPECT_TRUE(!done || fs::exists(m_strFile));
        EXPECT_FALSE(fs::exists(m_strFile + ".part"));
        ExpectNothingLost(before);
        return hit && !HasFailure();
    });
    EXPECT_GT(struck, 8) << "the faults do not reach the store";
}

TEST_F(RecordTransferTest, DeletesExactlyWhatItWrote)
{
    m_setWk.FindWks(3);
    AddWorkout(3, kTime - 60);
    AddWorkout(3, kTime + 90);
    Run(DataFile::member, "DELETE FROM workouts WHERE member_id = 3 AND check_in = ?", {kTime});
    EXPECT_TRUE(Archive(m_setWk, m_strFile));
    EXPECT_EQ(Count("workouts WHERE member_id = 3"), 2);
    EXPECT_EQ(Count("workouts"), 8 * 40 + 2);
    EXPECT_EQ(Restore(m_setWk, ReadFile(m_strFile)), 39);

    // A check-in station has stored a workout since it was seen that members have no records.
    auto const before = SortedRows();
    m_setMem.FindAllMembers(true);
    EXPECT_FALSE(Archive(m_setMem, m_folder / "members.dat"));
    EXPECT_TRUE(SortedRows() == before);

    // Two files, in between which a row changes; then none does.
    for (bool const changed : {true, false}) {
        m_setWk.FindWks(5);
        CRecordTransfer transfer(m_setWk, Mode::archiveDisks);
        int count = 0;
        std::vector<std::int32_t> members;
        EXPECT_TRUE(transfer.Begin(count));
        EXPECT_EQ(count, 40);
        for (auto const* const name : {"first", "second"}) {
            auto const path = m_folder / (name + std::to_string(changed ? 1 : 0));
            EXPECT_TRUE(transfer.WriteFile(path, 25, [] { return true; }));
            EXPECT_EQ(
                fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
            if (changed) {
                Run(DataFile::member, "UPDATE workouts SET class_index = 77");
            }
        }
        EXPECT_EQ(transfer.Records(), 40);
        EXPECT_EQ(transfer.DeleteWritten(members).IsOK(), !changed);
        EXPECT_EQ(Count("workouts WHERE member_id = 5"), changed ? 40 : 0);
        EXPECT_EQ(members.size(), changed ? 0U : 40U);
    }
}

TEST_F(RecordTransferTest, LeavesOtherFilesAlone)
{
    m_setWk.FindWks(1);
    auto const write = [&](std::function<bool()> const& step) {
        CRecordTransfer transfer(m_setWk, Mode::backup);
        int count = 0;
        EXPECT_TRUE(transfer.Begin(count));
        return transfer.WriteFile(m_strFile, count, step).Error();
    };
    auto const goOn = [] { return true; };
    int rows = 0;
    EXPECT_EQ(write([&] { return ++rows < 7; }), DbError::stopped);
    EXPECT_FALSE(fs::exists(m_strFile) || fs::exists(m_strFile + ".part"));
    // Somebody makes a file of the name while this one is written.
    EXPECT_EQ(write([&] { return WriteFile(m_strFile, "mine"), true; }), DbError::exists);
    EXPECT_EQ(write(goOn), DbError::exists);
    EXPECT_EQ(ReadFile(m_strFile), "mine");
    fs::remove(m_strFile);
    // What is beside it: somebody's own file, what a killed program left, what one writes now.
    WriteFile(m_strFile + ".part", "mine");
    EXPECT_EQ(write(goOn), DbError::exists);
    EXPECT_EQ(ReadFile(m_strFile + ".part"), "mine");
    WriteFile(m_strFile + ".part", "WK1|1|");
    EXPECT_EQ(write([&] {
        CDataFileWriter second(m_strFile);
        EXPECT_EQ(second.Open().Error(), DbError::inUse);
        return true;
    }),
        DbError::none);
    EXPECT_FALSE(fs::exists(m_strFile + ".part"));
    EXPECT_EQ(Restore(m_setWk, ReadFile(m_strFile)), 0);
    EXPECT_TRUE(m_setWk.LastStatus()) << m_setWk.LastStatus().Text();
}

TEST_F(RecordTransferTest, DeletesUpToARowWithoutAMember)
{
    std::vector<std::int32_t> members;
    CForeignProgram(DataFile::member)
        .Run("UPDATE workouts SET member_id = 0 WHERE member_id = 1 AND check_in = "
            + std::to_string(kTime + 60));
    m_setWk.FindWks(0);
    Run(DataFile::member, "DELETE FROM workouts WHERE member_id = 4 AND check_in = ?", {kTime});
    EXPECT_TRUE(DeleteRows(m_setWk, members));
    EXPECT_EQ(members, (std::vector<std::int32_t>{1, 2, 3, 5, 6, 7, 8, 9}));
    EXPECT_EQ(Count("workouts"), 360 - 1 - 8);
    members.clear();
    m_setMem.FindAllMembers(true);
    EXPECT_TRUE(DeleteRows(m_setMem, members));
    EXPECT_EQ(Count("members") + Count("evaluations") + Count("lifts"), 0);
    EXPECT_EQ(members.size(), 9U);
}
