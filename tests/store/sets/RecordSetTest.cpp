#include "store/sets/DAOReport.h"
#include "store/sets/DAOSmMem.h"
#include "tests/store/StoreFixture.h"

#include <random>

namespace
{

class RecordSetTest : public CStoreTest
{
protected:
    static void AddReport(std::int32_t type, std::string const& category = "")
    {
        EXPECT_TRUE(AddRow<CDAOReport>([&](CDAOReport& set) {
            set.m_nRptType = type;
            set.m_strRptCategory = category;
        }));
    }

    static void DeleteReport(std::int32_t type)
    {
        EXPECT_EQ(
            Run(DataFile::report, "DELETE FROM reports WHERE type = ?", {std::int64_t(type)}), 1);
    }
};

/// What a record set does, done by a vector.
struct CVector
{
    struct Row
    {
        std::int32_t type;
        bool deleted = false;
    };
    std::vector<Row> rows = {};
    std::int32_t next = 0;
    std::size_t position = 0;
    bool onRow = true;
    std::int32_t shown = 0; ///< the field of the set
    CDAOReport set = {};

    void Add(void (*add)(std::int32_t, std::string const&))
    {
        add(next, "");
        rows.push_back({next++});
    }
    /// The set has moved there, or says that it could not.
    void Move(std::size_t to, bool moved)
    {
        position = std::min(to, rows.size());
        onRow = position < rows.size() && !rows[position].deleted;
        // Nobody must take the row before for one that is deleted.
        shown = position == rows.size() ? shown : onRow ? rows[position].type : 0;
        EXPECT_EQ(moved, onRow) << position;
        EXPECT_EQ(set.m_nRptType, shown) << position;
        EXPECT_EQ(set.IsEOF() != 0, position == rows.size());
    }
    /// Closed it does nothing, and keeps its fields.
    bool OpenAgain()
    {
        set.Op(CDAOEFSet::opClose);
        for (auto const operation : {CDAOEFSet::opMoveNext, CDAOEFSet::opMoveFirst,
                 CDAOEFSet::opEdit, CDAOEFSet::opDelete, CDAOEFSet::opRequery}) {
            EXPECT_FALSE(set.Op(operation)) << operation;
        }
        EXPECT_NE(set.IsEOF(), 0);
        EXPECT_EQ(set.m_nRptType, shown);
        return set.FindReports() > 0;
    }
    void Walk(int step, std::size_t to)
    {
        if (step > 1) {
            Move(position + 1, set.Op(CDAOEFSet::opMoveNext));
        } else if (step == 1) {
            Move(to, set.MoveSet(static_cast<std::int32_t>(to)));
        } else {
            EXPECT_EQ(set.Op(CDAOEFSet::opEdit), onRow);
            if (onRow) {
                set.m_nRptType = shown = rows[position].type = next++;
                EXPECT_TRUE(set.Op(CDAOEFSet::opUpdate));
            }
        }
    }
};

} // namespace

TEST_F(RecordSetTest, ChangeWritesWhatDiffersFromWhatIsStoredNow)
{
    auto const rename = [](std::string const& category) {
        EXPECT_EQ(Run(DataFile::report, "UPDATE reports SET category = ?", {category}), 1);
    };
    AddReport(1, "Yoga");
    CDAOReport set;
    ASSERT_EQ(set.FindReports(), 1);
    auto const expectEdit = [&](char const* category) {
        ASSERT_TRUE(set.Op(CDAOEFSet::opEdit));
        EXPECT_EQ(set.m_strRptCategory, category);
    };
    rename("Pilates");
    expectEdit("Pilates");
    set.m_strRptCourse = "Evening";
    rename("Spinning");
    ASSERT_TRUE(set.Op(CDAOEFSet::opUpdate));
    {
        // A row just read is not read again, unless something was written since.
        CTransaction transaction(Database(DataFile::report));
        ASSERT_EQ(set.FindReports(), 1);
        EXPECT_EQ(set.m_strRptCategory + set.m_strRptCourse, "SpinningEvening") << "undone";
        rename("Rowing");
        expectEdit("Rowing");
        set.m_strRptCategory = "typed";
        expectEdit("Rowing");
    } // rolled back
    {
        CTransaction const next(Database(DataFile::report));
        expectEdit("Spinning");
    }
    DeleteReport(1);
    set.m_nRptParam = 9;
    EXPECT_FALSE(set.Op(CDAOEFSet::opUpdate));
    EXPECT_EQ(set.LastStatus().Error(), DbError::gone);
}

TEST_F(RecordSetTest, RefusedRowIsToldAndCanBeTriedAgain)
{
    CDAOSmMem set;
    for (std::int32_t const workoutNumber : {11, 12}) {
        EXPECT_EQ(set.OpenSet(false), 0);
        EXPECT_TRUE(set.Op(CDAOEFSet::opAddNew));
        set.m_MemberID = 1;
        set.m_WorkoutNum = workoutNumber;
        EXPECT_EQ(set.Op(CDAOEFSet::opUpdate), workoutNumber == 11);
    }
    EXPECT_EQ(set.LastStatus().Error(), DbError::constraint);
    set.m_MemberID = 2;
    EXPECT_TRUE(set.Op(CDAOEFSet::opUpdate));
    EXPECT_TRUE(set.Op(CDAOEFSet::opRequery)) << set.LastStatus().Text();
    EXPECT_EQ(set.CountSet(), 0) << "it was opened for adding";
    EXPECT_EQ(set.FindMember(CDAOSmMem::idWorkout, 12), 1);
    EXPECT_EQ(set.m_MemberID, 2);
}

TEST_F(RecordSetTest, DelAllDeletesTheSelectionAlone)
{
    for (int i = 0; i < 600; ++i) {
        AddReport(i);
    }
    CDAOReport set;
    ASSERT_EQ(set.FindReports(), 600);
    DeleteReport(599);
    AddReport(1000);
    EXPECT_FALSE(set.MoveSet(599)) << "a key given out again would show a stranger's record";
    EXPECT_EQ(set.DelAll(), 599);
    ASSERT_EQ(set.FindReports(), 1);
    EXPECT_EQ(set.m_nRptType, 1000);
    CDatabaseSession::Get().ShutDown();
    EXPECT_FALSE(set.MoveSet(0) || set.Op(CDAOEFSet::opDelete)) << "no selection outlives that";
    EXPECT_EQ(set.FindReports(), 1);
}

// A plain vector does everything the record set does; both must agree all the way.
TEST_F(RecordSetTest, RandomWalkAgreesWithAVector)
{
    std::mt19937 random(20261124);
    auto const below = [&](std::size_t n) { return random() % n; };
    CVector vector;
    while (vector.rows.size() < 700) { // more than two of the largest blocks
        vector.Add(AddReport);
    }
    auto& [rows, next, position, onRow, shown, set] = vector;
    ASSERT_EQ(set.FindReports(), 700);
    ASSERT_EQ(set.CountSet(), 700);
    for (int step = 0; step < 4000 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        auto const to = below(rows.size() + 2);
        switch (below(64)) {
        case 0: // another program deletes a row
            if (to < rows.size() && !std::exchange(rows[to].deleted, true)) {
                DeleteReport(rows[to].type);
            }
            vector.Move(to, set.MoveSet(static_cast<std::int32_t>(to)));
            break;
        case 1:
            EXPECT_EQ(set.Op(CDAOEFSet::opDelete), onRow);
            if (std::exchange(onRow, false)) {
                rows[position].deleted = true;
            }
            break;
        case 2:
            vector.Add(AddReport);
            std::erase_if(rows, [](auto const& row) { return row.deleted; });
            vector.Move(0, step % 2 == 0 ? set.Op(CDAOEFSet::opRequery) : vector.OpenAgain());
            break;
        case 3:
            vector.Move(0, set.Op(CDAOEFSet::opMoveFirst));
            break;
        case 4:
            while (position < rows.size()) {
                vector.Move(position + 1, set.Op(CDAOEFSet::opMoveNext));
            }
            break;
        default:
            vector.Walk(step % 8, to);
            break;
        }
    }
}
