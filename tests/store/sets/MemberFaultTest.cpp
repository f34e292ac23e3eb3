#include "tests/platform/db/Faults.h"
#include "tests/store/MemberFixture.h"
#include "tests/store/WholeMember.h"
#include "tests/store/text/DataFileFixture.h"

#include <functional>

namespace
{

namespace fs = std::filesystem;

class MemberFaultTest : public CDataFileTest
{
protected:
    void SetUp() override
    {
        CDataFileTest::SetUp();
        for (std::int32_t id = 1; id <= 3; ++id) {
            ASSERT_TRUE(WholeMember::Save(id, id));
            for (int i = 0; i < 5; ++i) {
                AddWorkout(id, 3'900'000'000 + i);
                Add(m_setEval, {{"member_id", id}, {"eval_id", id * 100 + i}});
                Add(m_setBodyComp, {{"member_id", id}});
            }
        }
        Run(DataFile::member, "UPDATE workouts SET class_index = id % 4");
        Run(DataFile::member, "UPDATE evaluations SET class_index = id % 4");
        CDatabaseSession::Get().ShutDown();
        fs::rename(m_strPath, m_folder / "model.mdb");
    }

    void StartAnew() const
    {
        CDatabaseSession::Get().ShutDown();
        for (auto const* const extension : {"", "-wal", "-shm"}) {
            fs::remove(m_strPath + extension);
        }
        fs::copy_file(m_folder / "model.mdb", m_strPath);
        Database(DataFile::member);
    }

    static std::map<std::string, Rows> State()
    {
        std::map<std::string, Rows> state;
        for (auto const* const table : {"members", "profiles", "enrollments", "classes", "messages",
                 "workouts", "evaluations", "skinfolds", "lifts", "body_compositions"}) {
            state[table] = Dump(table, false);
        }
        return state;
    }

    static bool GiveNewID()
    {
        CDAOSmMem set;
        set.FindMember(CDAOSmMem::idMember, 2);
        set.Op(CDAOEFSet::opEdit);
        set.m_MemberID = 77;
        bool const done = set.Op(CDAOEFSet::opUpdate);
        EXPECT_EQ(set.LastStatus().IsOK(), done);
        EXPECT_EQ(WholeMember::Load(77), done ? 2 : 0);
        return done;
    }

    static bool Delete(bool all)
    {
        CDAOSmMem set;
        all ? set.FindAllMembers(true) : set.FindMember(CDAOSmMem::idMember, 2);
        bool const done = all ? set.DelAll() == 3 : set.DelCurrent();
        EXPECT_EQ(set.LastStatus().IsOK(), done);
        return done;
    }

    static bool Post() { return corv_apiPostMemberMessage("Hello", 2, true) == apiSuccess; }

    /// The services as parts of a larger change.
    static bool DoAll()
    {
        CTransaction transaction(Database(DataFile::member));
        return UpdateClasses(2, Slot("2"), Slot("B", 5), {}) && ReplaceClass(2, 5, Slot("C"), false)
            && UpdateEnrollment(2, {}, {}, 1, 1, 0) && UpdateClassIndex(2, 1, CDAOCls::kUnknown)
            && DeleteClassData(2, 2) && DeleteClass(2, "C", "Course", "", true) && Post()
            && transaction.Commit();
    }

    std::string const m_strPath = m_folder / DataFileName(DataFile::member);
};

} // namespace

/// Every operation is repeated with another call that writes failing each time. Either all of it
/// was done, or it told its failure and changed nothing in any table.
TEST_F(MemberFaultTest, EachOperationIsDoneAsAWholeOrNotAtAll)
{
    std::vector<std::function<bool()>> const operations = {
        [] { return WholeMember::Save(7, 70); },
        [] { return WholeMember::Save(2, 20); },
        [] { return WholeMember::Save(2, 77, 20, 2); },
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
        DoAll,
    };
    for (auto const& operation : operations) {
        SCOPED_TRACE(&operation - operations.data());
        StartAnew();
        auto const before = State();
        ASSERT_TRUE(operation());
        auto const after = State();
        ASSERT_NE(before, after);
        EXPECT_EQ(Number(DataFile::member, "SELECT count(*) FROM pragma_foreign_key_check"), 0)
            << "rows that did not follow or go with their member";
        int const struck = Faults::ForEach([&](int nth, int error, bool lasting) {
            SCOPED_TRACE(testing::Message() << error << (lasting ? " from " : " at ") << nth);
            StartAnew();
            Faults::Begin(nth, error, lasting);
            bool const done = operation();
            bool const hit = Faults::End();
            EXPECT_TRUE(hit || done);
            EXPECT_EQ(State(), done ? after : before);
            EXPECT_TRUE(WholeMember::Save(99, 99)) << "not usable any more";
            CDatabaseSession::Get().ShutDown();
            EXPECT_EQ(WholeMember::Load(99), 99) << "for who opens the file next";
            return hit && !HasFailure();
        });
        EXPECT_GT(struck, 8) << "the faults do not reach the store";
    }
}

/// What is wrong with one row takes back those saved before it.
TEST_F(MemberFaultTest, ARefusedRowTakesTheWholeSaveBack)
{
    StartAnew();
    EXPECT_FALSE(WholeMember::Save(7, 7, 70, 2)) << "the workout number of another member";
    EXPECT_FALSE(IsMember(7, CDAOSmMem::idMember));
    EXPECT_FALSE(WholeMember::Save(1, 2, 10, 1)) << "the ID of another member";
    EXPECT_EQ(WholeMember::Load(1), 1);
    Run(DataFile::member,
        "CREATE TRIGGER refuse BEFORE UPDATE ON classes WHEN NEW.category = '30' "
        "BEGIN SELECT RAISE(ABORT, 'no'); END");
    EXPECT_FALSE(WholeMember::Save(3, 30)) << "the last of its tables";
    EXPECT_EQ(WholeMember::Load(3), 3);
    EXPECT_EQ(WholeMember::Partial(), 0);
}
