#include "tests/platform/db/Faults.h"
#include "tests/store/text/DataFileFixture.h"
#include "tests/store/WholeMember.h"

#include <cerrno>
#include <functional>

namespace
{

namespace fs = std::filesystem;

constexpr std::array kTables = {"members", "profiles", "enrollments", "classes", "messages",
    "workouts", "evaluations", "skinfolds", "lifts", "body_compositions"};

/// Runs an operation on members again and again, with another call that writes failing each time,
/// until none is left: it must have happened as a whole, or have told its failure and changed
/// nothing in any table.
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
            Run(DataFile::member, "UPDATE workouts SET class_index = id % 4");
            Run(DataFile::member, "UPDATE evaluations SET class_index = id % 4");
        }
    }

    void ForEachFaultOf(std::function<bool()> const& operation)
    {
        CDatabaseSession::Get().ShutDown();
        if (!fs::exists(m_model)) {
            fs::rename(m_strPath, m_model);
        }
        StartAnew();
        auto const before = State();
        ASSERT_TRUE(operation());
        auto const after = State();
        ASSERT_NE(before, after);
        int struck = 0;
        // A sector that fails once, and a disk that is full from some moment on.
        for (int const error : {EIO, ENOSPC}) {
            for (int nth = 1; !HasFailure(); ++nth) {
                SCOPED_TRACE((error == EIO ? "call " : "from call ") + std::to_string(nth));
                StartAnew();
                Faults::Begin(nth, error, error == ENOSPC);
                bool const done = operation();
                bool const hit = Faults::End();
                EXPECT_TRUE(hit || done);
                ExpectSound(done ? after : before);
                if (!hit) {
                    break;
                }
                ++struck;
            }
        }
        EXPECT_GT(struck, 8) << "the faults do not reach the store";
    }

    CDAOSmMem m_setSmMem;

private:
    using Contents = std::map<std::string, Rows>;

    void StartAnew() const
    {
        CDatabaseSession::Get().ShutDown();
        for (auto const* const extension : {"", "-wal", "-shm"}) {
            fs::remove(m_strPath + extension);
        }
        fs::copy_file(m_model, m_strPath);
        Database(DataFile::member);
    }

    static Contents State()
    {
        Contents state;
        for (auto const* const table : kTables) {
            state[table] = Dump(table, false);
        }
        return state;
    }

    /// Now, after the next save, and for who opens the file next.
    static void ExpectSound(Contents const& expected)
    {
        EXPECT_EQ(State(), expected);
        EXPECT_TRUE(WholeMember::Save(99, 99)) << "not usable any more";
        auto const next = State();
        CDatabaseSession::Get().ShutDown();
        EXPECT_EQ(State(), next);
        std::vector<std::string> findings;
        EXPECT_TRUE(Database(DataFile::member).Check(findings));
        EXPECT_EQ(findings, Rows());
    }

    std::string const m_strPath = m_folder / DataFileName(DataFile::member);
    fs::path const m_model = m_folder / "model.mdb";
};

CClassSlot Slot(std::string const& name, std::uint8_t index = 0)
{
    CClassSlot slot;
    slot.category = name;
    slot.classIndex = index;
    return slot;
}

} // namespace

TEST_F(MemberFaultTest, ANewMemberIsWholeOrNotThere)
{
    ForEachFaultOf([] { return WholeMember::Save(7, 70); });
}

TEST_F(MemberFaultTest, AChangedMemberIsTheOldOrTheNewOne)
{
    ForEachFaultOf([] { return WholeMember::Save(2, 20); });
}

TEST_F(MemberFaultTest, ANewIDReachesEveryRowOrNone)
{
    ForEachFaultOf([this] {
        m_setSmMem.FindMember(CDAOSmMem::idMember, 2);
        m_setSmMem.Op(CDAOEFSet::opEdit);
        m_setSmMem.m_MemberID = 77;
        bool const done = m_setSmMem.Op(CDAOEFSet::opUpdate);
        EXPECT_EQ(m_setSmMem.LastStatus().IsOK(), done);
        return done;
    });
    ForEachFaultOf([] { return WholeMember::Save(2, 77, 20, 2); });
}

TEST_F(MemberFaultTest, AMemberGoesWithAllRowsOrStaysWithAll)
{
    ForEachFaultOf([this] {
        m_setSmMem.FindMember(CDAOSmMem::idMember, 2);
        bool const done = m_setSmMem.DelCurrent();
        EXPECT_EQ(m_setSmMem.LastStatus().IsOK(), done);
        return done;
    });
    ForEachFaultOf([this] {
        m_setSmMem.FindAllMembers(true);
        bool const done = m_setSmMem.DelAll() == 3;
        EXPECT_EQ(m_setSmMem.LastStatus().IsOK(), done);
        return done;
    });
}

TEST_F(MemberFaultTest, AServiceDoesItsWholeWorkOrNothing)
{
    ForEachFaultOf([] { return UpdateClasses(2, Slot("2"), Slot("B"), {}); });
    ForEachFaultOf([] { return UpdateClasses(2, Slot("2", 3), Slot("2", 1), Slot("B")); });
    ForEachFaultOf([] { return ReplaceClass(2, 1, Slot("B"), false); });
    ForEachFaultOf([] { return UpdateEnrollment(2, {}, {}, 1, 1, 0); });
    ForEachFaultOf([] { return UpdateClassIndex(2, 1, CDAOCls::kUnknown); });
    ForEachFaultOf([] { return DeleteClassData(2, 1); });
    ForEachFaultOf([] { return corv_apiPostMemberMessage("Hello", 2, true) == apiSuccess; });
}

/// What is wrong with one row takes back those saved before it.
TEST_F(MemberFaultTest, ARefusedRowTakesTheWholeSaveBack)
{
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
