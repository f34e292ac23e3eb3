#include "store/sets/DAOCat.h"
#include "store/sets/DAOCour.h"
#include "store/sets/DAOMem.h"
#include "store/sets/DAOReport.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/DAOWk.h"
#include "tests/store/StoreFixture.h"

#include <random>

namespace
{

class RecordSetTest : public CStoreTest
{
protected:
    static void AddReport(std::int32_t type, std::string const& category = "")
    {
        Add<CDAOReport>([&](CDAOReport& set) {
            set.m_nRptType = type;
            set.m_strRptCategory = category;
            set.m_dtRptFrom = CEFOleDateTime(2026, 11, 16, 18, 5, 9);
        });
    }

    static void DeleteReport(std::int32_t type)
    {
        EXPECT_EQ(
            Run(DataFile::report, "DELETE FROM reports WHERE type = ?", {std::int64_t(type)}), 1);
    }

    static std::vector<std::int32_t> Types(CDAOReport& set)
    {
        std::vector<std::int32_t> types;
        int const count = set.CountSet();
        for (int i = 0; i < count; ++i) {
            types.push_back(set.m_nRptType);
            set.Op(CDAOEFSet::opMoveNext);
        }
        return types;
    }
};

} // namespace

TEST_F(RecordSetTest, EmptyFindKeepsFieldsAndCloses)
{
    CDAOReport set;
    set.m_nRptType = 77;
    EXPECT_EQ(set.FindReports(), 0);
    EXPECT_EQ(set.m_nRptType, 77);
    EXPECT_NE(set.IsEOF(), 0);
    EXPECT_FALSE(set.Op(CDAOEFSet::opMoveNext));
    EXPECT_FALSE(set.Op(CDAOEFSet::opEdit));
    EXPECT_FALSE(set.Op(CDAOEFSet::opDelete));
    EXPECT_FALSE(set.MoveSet(0));
    EXPECT_TRUE(set.Op(CDAOEFSet::opClose));
    EXPECT_FALSE(set.Op(CDAOEFSet::opRequery)) << "closed: there is nothing to run again";
}

TEST_F(RecordSetTest, OpenedForAddingItHoldsNothingOfTheFindBefore)
{
    Run(DataFile::member,
        "INSERT INTO members (member_id, workout_number, first_name, middle_initial, last_name, "
        "status) VALUES (7, 7, '', '', '', 1)");
    CDAOSmMem set;
    ASSERT_EQ(set.FindMember(CDAOSmMem::idMember, 7), 1);
    EXPECT_EQ(set.OpenSet(false), 0);
    EXPECT_TRUE(set.Op(CDAOEFSet::opRequery)) << set.LastStatus().Text();
    EXPECT_EQ(set.CountSet(), 0);
}

TEST_F(RecordSetTest, FieldsOutliveTheSelection)
{
    AddReport(3, "Aerobics");
    CDAOReport set;
    ASSERT_EQ(set.OpenSet(true), 1);
    set.Op(CDAOEFSet::opClose);
    EXPECT_EQ(set.m_strRptCategory, "Aerobics");
    EXPECT_EQ(set.m_dtRptFrom.DateTimeStrLongYear(), "11/16/2026 18:05:09");
    EXPECT_FALSE(set.MoveSet(0));
}

TEST_F(RecordSetTest, CountedWalkEndsPastTheLastRow)
{
    for (int i = 0; i < 700; ++i) { // more than two of the largest blocks
        AddReport(i);
    }
    CDAOReport set;
    int const count = set.FindReports();
    ASSERT_EQ(count, 700);
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(set.m_nRptType, i);
        EXPECT_EQ(set.Op(CDAOEFSet::opMoveNext), i + 1 < count);
    }
    EXPECT_NE(set.IsEOF(), 0);
    EXPECT_EQ(set.m_nRptType, 699);
    EXPECT_EQ(set.CountSet(), 700);
    EXPECT_EQ(set.m_nRptType, 0);
}

TEST_F(RecordSetTest, DeletedRowKeepsItsTurn)
{
    for (int i = 0; i < 5; ++i) {
        AddReport(i, "row");
    }
    CDAOReport set;
    ASSERT_EQ(set.FindReports(), 5);
    DeleteReport(2);
    EXPECT_FALSE(set.MoveSet(2));
    EXPECT_EQ(set.m_strRptCategory, "") << "nobody must take the row before it for it";
    EXPECT_FALSE(set.Op(CDAOEFSet::opEdit));
    EXPECT_TRUE(set.Op(CDAOEFSet::opMoveNext));
    EXPECT_EQ(set.m_nRptType, 3);
    EXPECT_TRUE(set.Op(CDAOEFSet::opRequery));
    EXPECT_EQ(Types(set), (std::vector<std::int32_t>{0, 1, 3, 4}));
}

TEST_F(RecordSetTest, DeletedKeyIsNeverGivenOutAgain)
{
    AddReport(1);
    CDAOReport set;
    ASSERT_EQ(set.FindReports(), 1);
    DeleteReport(1);
    AddReport(2);
    EXPECT_FALSE(set.MoveSet(0)) << "the open selection would show a stranger's record";
}

TEST_F(RecordSetTest, ChangeWritesOnlyWhatDiffers)
{
    AddReport(1, "Yoga");
    CDAOReport mine;
    ASSERT_EQ(mine.FindReports(), 1);
    ASSERT_TRUE(mine.Op(CDAOEFSet::opEdit));
    mine.m_strRptCourse = "Evening";
    Run(DataFile::report, "UPDATE reports SET category = 'Pilates'");
    ASSERT_TRUE(mine.Op(CDAOEFSet::opUpdate));
    CDAOReport check;
    ASSERT_EQ(check.FindReports(), 1);
    EXPECT_EQ(check.m_strRptCategory, "Pilates") << "another program's change was undone";
    EXPECT_EQ(check.m_strRptCourse, "Evening");
}

TEST_F(RecordSetTest, ValuesThatFitNoFieldStayAsTheyAre)
{
    AddReport(1);
    Run(DataFile::report,
        "UPDATE reports SET type = 99999999999, date_from = -9223372036854775807");
    CDAOReport set;
    ASSERT_EQ(set.FindReports(), 1);
    EXPECT_EQ(set.m_nRptType, 0);
    EXPECT_FALSE(set.m_dtRptFrom.ChkStatus());
    ASSERT_TRUE(set.Op(CDAOEFSet::opEdit));
    set.m_nRptParam = 5;
    ASSERT_TRUE(set.Op(CDAOEFSet::opUpdate));
    CRowBlock rows;
    ASSERT_TRUE(Database(DataFile::report)
                    .Query("SELECT type, date_from, parameter FROM reports", {}, rows));
    EXPECT_EQ(rows.Row(0).Cell(0).integerValue, 99999999999);
    EXPECT_EQ(rows.Row(0).Cell(1).integerValue, -9223372036854775807);
    EXPECT_EQ(rows.Row(0).Cell(2).integerValue, 5);
}

TEST_F(RecordSetTest, ChangeOfARowDeletedMeanwhileFails)
{
    AddReport(1);
    CDAOReport set;
    ASSERT_EQ(set.FindReports(), 1);
    ASSERT_TRUE(set.Op(CDAOEFSet::opEdit));
    DeleteReport(1);
    set.m_nRptParam = 9;
    EXPECT_FALSE(set.Op(CDAOEFSet::opUpdate));
    EXPECT_EQ(set.LastStatus().Error(), DbError::gone);
}

// Within a transaction a row just read is not read again, unless something was written since.
TEST_F(RecordSetTest, ChangeBeginsWithWhatIsStoredNow)
{
    auto const rename = [](std::string const& category) {
        EXPECT_EQ(Run(DataFile::report, "UPDATE reports SET category = ?", {category}), 1);
    };
    AddReport(1, "Yoga");
    CDAOReport set;
    ASSERT_EQ(set.FindReports(), 1);
    rename("Pilates");
    ASSERT_TRUE(set.Op(CDAOEFSet::opEdit));
    EXPECT_EQ(set.m_strRptCategory, "Pilates");
    {
        CTransaction transaction(Database(DataFile::report));
        ASSERT_EQ(set.FindReports(), 1);
        rename("Rowing");
        ASSERT_TRUE(set.Op(CDAOEFSet::opEdit));
        EXPECT_EQ(set.m_strRptCategory, "Rowing");
        set.m_strRptCategory = "typed";
        ASSERT_TRUE(set.Op(CDAOEFSet::opEdit));
        EXPECT_EQ(set.m_strRptCategory, "Rowing") << "what was typed is no stored value";
    } // rolled back
    CTransaction const next(Database(DataFile::report));
    ASSERT_TRUE(set.Op(CDAOEFSet::opEdit));
    EXPECT_EQ(set.m_strRptCategory, "Pilates");
}

TEST_F(RecordSetTest, RefusedRowIsToldAndCanBeTriedAgain)
{
    CDAOSmMem set;
    auto const begin = [&](std::int32_t memberID, std::int32_t workoutNumber) {
        set.OpenSet(false);
        EXPECT_TRUE(set.Op(CDAOEFSet::opAddNew));
        set.m_MemberID = memberID;
        set.m_WorkoutNum = workoutNumber;
    };
    begin(1, 11);
    ASSERT_TRUE(set.Op(CDAOEFSet::opUpdate));
    begin(1, 12);
    EXPECT_FALSE(set.Op(CDAOEFSet::opUpdate));
    EXPECT_EQ(set.LastStatus().Error(), DbError::constraint);
    set.m_MemberID = 2;
    EXPECT_TRUE(set.Op(CDAOEFSet::opUpdate));
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
    DeleteReport(100);
    AddReport(1000);
    EXPECT_EQ(set.DelAll(), 599);
    ASSERT_EQ(set.FindReports(), 1);
    EXPECT_EQ(set.m_nRptType, 1000);
}

TEST_F(RecordSetTest, DeletingWhileWalkingReachesEveryRow)
{
    for (int i = 0; i < 40; ++i) {
        AddReport(i);
    }
    CDAOReport set;
    set.FindReports();
    int const count = set.CountSet();
    for (int i = 0; i < count; ++i) {
        EXPECT_TRUE(set.Op(CDAOEFSet::opDelete)) << i;
        EXPECT_FALSE(set.Op(CDAOEFSet::opEdit));
        set.Op(CDAOEFSet::opMoveNext);
    }
    EXPECT_EQ(set.FindReports(), 0);
}

TEST_F(RecordSetTest, TransactionTakesSeveralSetsBack)
{
    AddReport(1);
    {
        CTransaction const transaction(Database(DataFile::report));
        ASSERT_TRUE(transaction.Status());
        AddReport(2);
        DeleteReport(1);
    }
    CDAOReport set;
    ASSERT_EQ(set.FindReports(), 1);
    EXPECT_EQ(set.m_nRptType, 1);
}

TEST_F(RecordSetTest, SelectionDoesNotOutliveAShutDown)
{
    for (int i = 0; i < 300; ++i) {
        AddReport(i);
    }
    CDAOReport set;
    ASSERT_EQ(set.FindReports(), 300);
    CDatabaseSession::Get().ShutDown();
    EXPECT_FALSE(set.MoveSet(200));
    EXPECT_FALSE(set.Op(CDAOEFSet::opDelete));
    EXPECT_EQ(set.FindReports(), 300);
    EXPECT_TRUE(set.MoveSet(200));
}

TEST_F(RecordSetTest, KnowsItsKind)
{
    CDAOWk workouts;
    CDAOReport reports;
    workouts.m_lMemberID = 42;
    EXPECT_TRUE(workouts.IsKindOf(CDAOWk::GetThisClass()));
    EXPECT_FALSE(workouts.IsKindOf(CDAOMem::GetThisClass()));
    EXPECT_EQ(MemberIDOf(workouts), 42);
    EXPECT_EQ(MemberIDOf(reports), 0);
    EXPECT_EQ(workouts.GetDefaultDBName(), (m_folder / "member.mdb").string());
}

// A plain vector does everything the record set does; both must agree all the way.
TEST_F(RecordSetTest, RandomWalkAgreesWithAVector)
{
    std::mt19937 random(20261124);
    auto const below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    struct Row
    {
        std::int32_t type;
        bool deleted = false;
    };
    std::vector<Row> rows;
    std::int32_t next = 0;
    for (; next < 150; ++next) {
        AddReport(next);
        rows.push_back({next});
    }
    CDAOReport set;
    set.FindReports();
    std::size_t position = 0;
    auto const checkRow = [&](bool onRow) {
        bool const expected = position < rows.size() && !rows[position].deleted;
        ASSERT_EQ(onRow, expected) << position;
        if (expected) {
            ASSERT_EQ(set.m_nRptType, rows[position].type);
        }
    };
    bool onRow = true;
    for (int step = 0; step < 4000; ++step) {
        switch (below(8)) {
        case 0:
            position = static_cast<std::size_t>(below(static_cast<int>(rows.size()) + 2));
            onRow = set.MoveSet(static_cast<std::int32_t>(position));
            position = std::min(position, rows.size());
            break;
        case 1:
            onRow = set.Op(CDAOEFSet::opMoveFirst);
            position = 0;
            break;
        case 2: { // change what is on show
            bool const begun = set.Op(CDAOEFSet::opEdit);
            ASSERT_EQ(begun, onRow);
            if (begun) {
                set.m_nRptType = next;
                ASSERT_TRUE(set.Op(CDAOEFSet::opUpdate));
                rows[position].type = next++;
            }
            break;
        }
        case 3:
            if (below(10) == 0) {
                ASSERT_EQ(set.Op(CDAOEFSet::opDelete), onRow);
                if (onRow) {
                    rows[position].deleted = true;
                }
                onRow = false;
            }
            break;
        case 4:
            if (below(25) == 0) {
                AddReport(next);
                ASSERT_TRUE(set.Op(CDAOEFSet::opRequery));
                std::erase_if(rows, [](Row const& row) { return row.deleted; });
                rows.push_back({next++});
                position = 0;
                onRow = true;
            }
            break;
        default:
            onRow = set.Op(CDAOEFSet::opMoveNext);
            position = std::min(position + 1, rows.size());
            break;
        }
        ASSERT_NO_FATAL_FAILURE(checkRow(onRow)) << "step " << step;
    }
}
