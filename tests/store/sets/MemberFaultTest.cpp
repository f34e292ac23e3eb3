#include "store/sets/DAOCirc.h"
#include "store/sets/DAOEvalBodyComp.h"
#include "tests/platform/db/Faults.h"
#include "tests/store/MemberFixture.h"
#include "tests/store/WholeMember.h"
#include "tests/store/text/DataFileFixture.h"

#include <csignal>
#include <functional>
#include <sys/resource.h>

namespace
{

class MemberFaultTest : public CDataFileTest
{
protected:
    using Operation = std::function<bool()>;

    /// Makes data files, and a centre which they change: some in it have one another's numbers.
    void SetUp() override
    {
        CDataFileTest::SetUp();
        for (std::int32_t id = 1; id <= 16; ++id) {
            AddMember(id);
        }
        for (int i = 1; i <= 150; ++i) {
            Add(m_setEval, {{"member_id", 1}, {"eval_date", i}, {"eval_id", i}});
        }
        Run(DataFile::member, "UPDATE messages SET message = hex(zeroblob(6000))");
        m_strMembers = Backup(m_setMem);
        m_strEvals = Backup(m_setEval);
        Run(DataFile::member, "DELETE FROM members");
        for (std::int32_t id = 1; id <= 3; ++id) {
            ASSERT_TRUE(WholeMember::Save(id, id, id, 501 + id % 3));
            for (int i = 0; i < 5; ++i) {
                AddWorkout(id, kTime + i);
                Add(m_setEval, {{"member_id", id}, {"eval_date", i}, {"eval_id", id * 40 + i}});
                Add(m_setBodyComp, {{"member_id", id}});
            }
        }
        Run(DataFile::member, "UPDATE workouts SET class_index = id % 4");
        Run(DataFile::member, "UPDATE evaluations SET class_index = id % 4");
        KeepAsModel();
    }

    /// Little of the file is kept in memory, so that much is written long before a restore ends.
    void StartAnew() const
    {
        CDataFileTest::StartAnew();
        Run(DataFile::member, kLittleMemory);
    }

    /// Whether a limit on the size of files killed a program in the write that passed it.
    bool IsKilled(Operation const& operation, rlim_t mostBytes) const
    {
        StartAnew();
        auto peer = StartPeer([&](CPeer const& /*self*/) {
            Run(DataFile::member, kLittleMemory);
            std::signal(SIGXFSZ, [](int) { std::raise(SIGKILL); });
            rlimit const limit = {mostBytes, RLIM_INFINITY};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            operation();
            CDatabaseSession::Get().ShutDown();
        });
        return !peer.Finish();
    }

    /// Whether it was done, which the set must tell.
    static bool IsDone(CDAOEFSet const& set, bool done)
    {
        EXPECT_EQ(set.LastStatus().IsOK(), done);
        return done;
    }

    static bool GiveNewID()
    {
        CDAOSmMem set;
        set.FindMember(CDAOSmMem::idMember, 2);
        set.Op(CDAOEFSet::opEdit);
        set.m_MemberID = 77;
        return IsDone(set, set.Op(CDAOEFSet::opUpdate));
    }

    static bool Delete(bool all)
    {
        CDAOSmMem set;
        all ? set.FindAllMembers(true) : set.FindMember(CDAOSmMem::idMember, 2);
        return IsDone(set, all ? set.DelAll() == 3 : set.DelCurrent());
    }

    static bool RestoreAll(CDAOFileSet& set, std::string const& file)
    {
        return IsDone(set, Restore(set, file, 0, false) > 0);
    }

    static bool Post() { return corv_apiPostMemberMessage("Hello", 2, true) == apiSuccess; }

    /// Its three tables, as the form for evaluations writes them; number 0 adds one.
    static bool SaveEvaluation(std::int32_t number)
    {
        CTransaction transaction(Database(DataFile::member));
        CDAOSmEval eval;
        CDAOCirc lifts;
        CDAOEvalBodyComp folds;
        auto const begin = [number](CDAOEFSet& set, int found) {
            return set.Op(number != 0 && found > 0 ? CDAOEFSet::opEdit : CDAOEFSet::opAddNew);
        };
        bool const isBegun = begin(eval, eval.FindEvals(CDAOSmEval::idEval, number))
            && begin(lifts, lifts.FindCircuit(number))
            && begin(folds, folds.FindEvalBodyComp(number));
        auto const used = number != 0 ? number : eval.GenerateIDNum();
        eval.m_lEvalID = lifts.m_lEvalID = folds.m_lEvalID = used;
        eval.m_lMemberID = 2;
        eval.m_dWeight = folds.m_dThigh = 12.5;
        lifts.SetStnVal(3, 145);
        return isBegun && used != 0 && eval.Op(CDAOEFSet::opUpdate) && lifts.Op(CDAOEFSet::opUpdate)
            && folds.Op(CDAOEFSet::opUpdate) && transaction.Commit();
    }

    /// The services as parts of a larger change.
    static bool DoAll()
    {
        CTransaction transaction(Database(DataFile::member));
        return UpdateClasses(2, Slot("2"), Slot("B", 5), {}) && ReplaceClass(2, 5, Slot("C"), false)
            && UpdateEnrollment(2, {}, {}, 1, 1, 0) && UpdateClassIndex(2, 1, CDAOCls::kUnknown)
            && DeleteClassData(2, 2) && DeleteClass(2, "C", "Course", "", true) && Post()
            && transaction.Commit();
    }

    static constexpr char const* kLittleMemory = "PRAGMA cache_size = 20";
    std::string m_strMembers;
    std::string m_strEvals;
};

} // namespace

/// Every operation is killed in one write after the other, and repeated with another call that
/// writes failing each time. Either all of it was done, or it changed nothing in any table and,
/// where it could, told its failure.
TEST_F(MemberFaultTest, EachOperationIsDoneAsAWholeOrNotAtAll)
{
    std::vector<Operation> const operations = {
        [] { return WholeMember::Save(7, 70); },
        [] { return WholeMember::Save(2, 20); },
        [] { return WholeMember::Save(2, 20, 77, 2); },
        GiveNewID,
        [] { return Delete(false); },
        [] { return Delete(true); },
        [] { return UpdateClasses(2, Slot("2"), Slot("B"), {}); },
        [] { return UpdateClasses(2, Slot("2", 3), Slot("2", 1), Slot("B")); },
        [] { return ReplaceClass(2, 1, Slot("B"), false); },
        [] { return UpdateEnrollment(2, {}, {}, 1, 1, 0); },
        [] { return UpdateClassIndex(2, 1, CDAOCls::kUnknown); },
        [] { return DeleteClassData(2, 1); },
        Post,
        [] { return SaveEvaluation(0); },
        [] { return SaveEvaluation(82); },
        DoAll,
        [&] { return RestoreAll(m_setMem, m_strMembers); },
        [&] { return RestoreAll(m_setEval, m_strEvals); },
    };
    for (auto const& operation : operations) {
        SCOPED_TRACE(&operation - operations.data());
        StartAnew();
        auto const before = DumpAll();
        ASSERT_TRUE(operation());
        auto const after = DumpAll();
        ASSERT_TRUE(before != after);
        EXPECT_EQ(Count("pragma_foreign_key_check"), 0)
            << "rows that did not follow or go with their member";
        int unchanged = 0;
        for (rlim_t size = 1; IsKilled(operation, size); size += size / 4 + 4096) {
            auto const now = DumpAll();
            ASSERT_TRUE(now == before || now == after) << "killed at " << size;
            unchanged += now == before ? 1 : 0;
            ASSERT_LT(size, 1U << 30);
        }
        EXPECT_GT(unchanged, 1) << "the limits do not reach the store";
        EXPECT_TRUE(DumpAll() == after);
        int const struck = Faults::ForEach([&](int nth, int error, bool lasting) {
            SCOPED_TRACE(testing::Message() << error << (lasting ? " from " : " at ") << nth);
            StartAnew();
            Faults::Begin(nth, error, lasting);
            bool const done = operation();
            bool const hit = Faults::End();
            EXPECT_TRUE(hit || done);
            EXPECT_TRUE(DumpAll() == (done ? after : before));
            EXPECT_TRUE(WholeMember::Save(99, 99)) << "not usable any more";
            CDatabaseSession::Get().ShutDown();
            EXPECT_TRUE(IsMember(99, CDAOSmMem::idMember)) << "for who opens the file next";
            return hit && !HasFailure();
        });
        EXPECT_GT(struck, 8) << "the faults do not reach the store";
    }
}

/// What is wrong with one row takes back those saved before it.
TEST_F(MemberFaultTest, ARefusedRowTakesTheWholeSaveBack)
{
    StartAnew();
    auto const before = DumpAll();
    EXPECT_FALSE(WholeMember::Save(7, 70, 7, 502)) << "the workout number of another member";
    EXPECT_FALSE(WholeMember::Save(1, 10, 2, 1)) << "the ID of another member";
    Run(DataFile::member,
        "CREATE TRIGGER refuse BEFORE UPDATE ON classes WHEN NEW.category = '30' "
        "BEGIN SELECT RAISE(ABORT, 'no'); END");
    EXPECT_FALSE(WholeMember::Save(3, 30)) << "the last of its tables";
    EXPECT_TRUE(DumpAll() == before);
}
