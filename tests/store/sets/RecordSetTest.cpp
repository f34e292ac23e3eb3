#include "store/sets/DAOReport.h"
#include "store/sets/DAOSmMem.h"
#include "tests/store/StoreFixture.h"

#include <algorithm>
#include <initializer_list>
#include <random>
#include <utility>
#include <vector>

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

    // What a record set does, done by a vector.

    void AddNext()
    {
        AddReport(m_nNext);
        m_rows.push_back({m_nNext++});
    }
    /// The set has moved there, or says that it could not.
    void Move(std::size_t to, bool moved)
    {
        m_nPosition = std::min(to, m_rows.size());
        m_bOnRow = m_nPosition < m_rows.size() && !m_rows[m_nPosition].deleted;
        // Nobody must take the row before for one that is deleted.
        m_nShown = m_nPosition == m_rows.size() ? m_nShown
            : m_bOnRow                          ? m_rows[m_nPosition].type
                                                : 0;
        EXPECT_EQ(moved, m_bOnRow) << m_nPosition;
        EXPECT_EQ(m_set.m_nRptType, m_nShown) << m_nPosition;
        EXPECT_EQ(m_set.IsEOF() != 0, m_nPosition == m_rows.size());
    }
    void Edit()
    {
        EXPECT_EQ(m_set.Op(CDAOEFSet::opEdit), m_bOnRow);
        if (m_bOnRow) {
            m_set.m_nRptType = m_nShown = m_rows[m_nPosition].type = m_nNext++;
            EXPECT_TRUE(m_set.Op(CDAOEFSet::opUpdate));
        }
    }
    /// Closed it does nothing, and keeps its fields.
    bool OpenAgain()
    {
        m_set.Op(CDAOEFSet::opClose);
        for (auto const operation : {CDAOEFSet::opMoveNext, CDAOEFSet::opMoveFirst,
                 CDAOEFSet::opEdit, CDAOEFSet::opDelete, CDAOEFSet::opRequery}) {
            EXPECT_FALSE(m_set.Op(operation)) << operation;
        }
        EXPECT_NE(m_set.IsEOF(), 0);
        EXPECT_EQ(m_set.m_nRptType, m_nShown);
        return m_set.FindReports() > 0;
    }

    struct Row
    {
        std::int32_t type;
        bool deleted = false;
    };
    std::vector<Row> m_rows;
    std::int32_t m_nNext = 0;
    std::size_t m_nPosition = 0;
    bool m_bOnRow = true;
    std::int32_t m_nShown = 0; ///< the field of the set
    CDAOReport m_set;
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

TEST_F(RecordSetTest, SortsItsPlacesHoweverFarApartTheKeysAre)
{
    auto const add = [](int from, int to, std::int64_t apart) {
        for (std::int64_t i = from; i <= to; ++i) {
            Run(DataFile::member,
                "INSERT INTO members VALUES (?1 * ?2, ?1, ?1, '', '', char(65 + ?1 * 7 % 20), 1)",
                {i, apart});
        }
    };
    for (std::int64_t const apart : std::initializer_list<std::int64_t>{1, -3, 5, 1LL << 57}) {
        SCOPED_TRACE(apart);
        Run(DataFile::member, "DELETE FROM members");
        add(1, 20, apart);
        CDAOSmMem set;
        ASSERT_EQ(set.FindAllMembersByName(true), 20);
        std::vector<std::int64_t> keys;
        for (auto const place : set.PlacesByKey()) {
            keys.push_back(set.KeyAt(place));
        }
        EXPECT_EQ(keys.size(), 20U);
        EXPECT_TRUE(std::ranges::is_sorted(keys));
        Run(DataFile::member, "DELETE FROM members WHERE member_id = 13");
        add(21, 22, apart);
        std::vector<std::int32_t> places;
        ASSERT_TRUE(set.Sort({{"member_id"}}, true, places));
        std::vector<std::int32_t> members;
        for (auto const place : places) {
            members.push_back(set.MoveSet(place) ? set.m_MemberID : 0);
        }
        EXPECT_EQ(members,
            (std::vector{20, 19, 18, 17, 16, 15, 14, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0}));
    }
}

// A plain vector does everything the record set does; both must agree all the way.
TEST_F(RecordSetTest, RandomWalkAgreesWithAVector)
{
    std::mt19937 random(20261124);
    auto const below = [&](std::size_t n) { return random() % n; };
    while (m_rows.size() < 700) { // more than two of the largest blocks
        AddNext();
    }
    ASSERT_EQ(m_set.FindReports(), 700);
    ASSERT_EQ(m_set.CountSet(), 700);
    for (int step = 0; step < 4000 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        auto const to = below(m_rows.size() + 2);
        auto const action = below(64);
        if (action == 0) { // another program deletes a row
            if (to < m_rows.size() && !std::exchange(m_rows[to].deleted, true)) {
                DeleteReport(m_rows[to].type);
            }
            Move(to, m_set.MoveSet(static_cast<std::int32_t>(to)));
        } else if (action == 1) {
            EXPECT_EQ(m_set.Op(CDAOEFSet::opDelete), m_bOnRow);
            if (std::exchange(m_bOnRow, false)) {
                m_rows[m_nPosition].deleted = true;
            }
        } else if (action == 2) {
            AddNext();
            std::erase_if(m_rows, [](auto const& row) { return row.deleted; });
            Move(0, step % 2 == 0 ? m_set.Op(CDAOEFSet::opRequery) : OpenAgain());
        } else if (action == 3) {
            Move(0, m_set.Op(CDAOEFSet::opMoveFirst));
        } else if (action == 4) {
            while (m_nPosition < m_rows.size()) {
                Move(m_nPosition + 1, m_set.Op(CDAOEFSet::opMoveNext));
            }
        } else if (step % 8 > 1) {
            Move(m_nPosition + 1, m_set.Op(CDAOEFSet::opMoveNext));
        } else if (step % 8 == 1) {
            Move(to, m_set.MoveSet(static_cast<std::int32_t>(to)));
        } else {
            Edit();
        }
    }
}
