#include "store/DAOBodyComp.h"
#include "store/DAOEval.h"
#include "store/DAOEvalBodyComp.h"
#include "store/DAOMemCls.h"
#include "store/DAOWk.h"
#include "store/MemberSearchData.h"
#include "store/MemberServices.h"
#include "tests/store/StoreFixture.h"

#include <algorithm>
#include <set>

namespace
{

using Search = CMemberSearchData;

class MemberTest : public CStoreTest
{
protected:
    void SetUp() override
    {
        CStoreTest::SetUp();
        CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 16, 18, 5, 9));
    }

    static void AddMember(std::int32_t id, std::string const& last = "Doe",
        std::string const& first = "Jo", CEFOleDateTime const& born = {1990, 1, 1})
    {
        std::int64_t const key = id;
        Run(DataFile::member,
            "INSERT INTO members (member_id, workout_number, first_name, middle_initial, "
            "last_name, status) VALUES (?, ? + 500, ?, '', ?, ? % 2)",
            {key, key, first, last, key});
        Run(DataFile::member,
            "INSERT INTO profiles (member_id, address, city, state, zip, phone, email, "
            "emergency_name, emergency_phone, physician, release, employee, birthday, sex, goals, "
            "medical_history) VALUES (?, '1 Elm St', 'Springfield', 'IL', '62701', '555', 'a@b', "
            "'', '', 'Dr. No', 1, 0, ?, ? % 2, 0x0F, 0x180001)",
            {key, born.Seconds(), key});
        Run(DataFile::member,
            "INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive) "
            "VALUES (?, ?, ?, 1, 0)",
            {key, CEFOleDateTime(2026, 1, 1).Seconds(), CEFOleDateTime(2026, 12, 31).Seconds()});
    }

    static void AddWorkout(std::int32_t member, std::uint8_t index,
        CEFOleDateTime const& in = {2026, 11, 16, 9, 0}, bool good = true)
    {
        CDAOWk set;
        set.OpenSet(false);
        set.Op(CDAOEFSet::opAddNew);
        set.m_lMemberID = member;
        set.m_nClassIndex = index;
        set.m_bWorkoutOK = good;
        set.m_dtCheckIn = in;
        ASSERT_TRUE(set.Op(CDAOEFSet::opUpdate)) << set.LastStatus().Text();
    }

    static void AddBodyComp(std::int32_t member, std::uint8_t index)
    {
        CDAOBodyComp set;
        set.OpenSet(false);
        set.Op(CDAOEFSet::opAddNew);
        set.m_lMemberID = member;
        set.m_nClassIndex = index;
        ASSERT_TRUE(set.Op(CDAOEFSet::opUpdate)) << set.LastStatus().Text();
    }

    static std::int32_t AddEvaluation(std::int32_t member, std::uint8_t index)
    {
        CDAOSmEval set;
        set.OpenSet(false);
        set.Op(CDAOEFSet::opAddNew);
        set.m_lEvalID = set.GenerateIDNum();
        set.m_lMemberID = member;
        set.m_nClassIndex = index;
        set.m_dtEvalDate = CEFOleDateTime(2026, 11, 16, 9, 0);
        EXPECT_TRUE(set.Op(CDAOEFSet::opUpdate)) << set.LastStatus().Text();
        return set.m_lEvalID;
    }

    static std::int64_t Count(std::string const& sql)
    {
        CRowBlock rows;
        EXPECT_TRUE(Database(DataFile::member).Query("SELECT count(*) FROM " + sql, {}, rows));
        return rows.Row(0).Cell(0).integerValue;
    }

    /// The class of each index, in stored order.
    static std::vector<std::pair<int, std::string>> Classes(std::int32_t member)
    {
        std::vector<std::pair<int, std::string>> found;
        CDAOCls set;
        int const count = set.FindClasses(member);
        for (int i = 0; i < count; ++i) {
            std::string text;
            set.BuildClassString(text);
            found.emplace_back(set.m_ClassIndex, text);
            set.Op(CDAOEFSet::opMoveNext);
        }
        return found;
    }

    static std::vector<std::int32_t> Found(Search const& search)
    {
        CDAOMem plain;
        CDAOMemCls classes;
        CDAOMem& set = search.Has(Search::sClass) ? classes : plain;
        std::vector<std::int32_t> ids;
        int const count = set.FindMembers(search, true, true);
        EXPECT_TRUE(set.LastStatus()) << set.LastStatus().Text();
        for (int i = 0; i < count; ++i) {
            ids.push_back(set.m_MemberID);
            set.Op(CDAOEFSet::opMoveNext);
        }
        std::sort(ids.begin(), ids.end());
        return ids;
    }
};

CClassSlot Slot(std::string const& name, std::uint8_t index = 0)
{
    CClassSlot slot;
    slot.category = name;
    slot.course = name.empty() ? "" : "Course";
    slot.classIndex = index;
    return slot;
}

using Ids = std::vector<std::int32_t>;
using Rows = std::vector<std::pair<int, std::string>>;

} // namespace

TEST_F(MemberTest, RecordsGoAndFollowWithTheirMember)
{
    AddMember(7);
    AddMember(8);
    ASSERT_TRUE(UpdateClasses(7, Slot("Yoga"), {}, {}));
    ASSERT_EQ(corv_apiPostMemberMessage("Hello", 7, false), apiSuccess);
    AddWorkout(7, 1);
    AddBodyComp(7, 1);
    auto const evaluation = AddEvaluation(7, 1);
    for (auto const* table : {"skinfolds (eval_id, percent_fat, thigh, chest, abdomen, triceps, "
                              "suprailiac, midaxillary, subscapular) VALUES (?,1,0,0,0,0,0,0,0)"}) {
        Run(DataFile::member, std::string("INSERT INTO ") + table, {std::int64_t(evaluation)});
    }
    CDAOSmMem set;
    ASSERT_EQ(set.FindMember(CDAOSmMem::idMember, 7), 1);
    ASSERT_TRUE(set.Op(CDAOEFSet::opEdit));
    set.m_MemberID = 77;
    ASSERT_TRUE(set.Op(CDAOEFSet::opUpdate));
    for (std::string const table : {"profiles", "enrollments", "classes", "messages", "workouts",
             "evaluations", "body_compositions"}) {
        EXPECT_EQ(Count(table + " WHERE member_id = 77"), 1) << table;
        EXPECT_EQ(Count(table + " WHERE member_id = 7"), 0) << table;
    }
    CDAOEval whole;
    ASSERT_EQ(whole.FindEvals(CDAOSmEval::idMember, 77), 1);
    EXPECT_EQ(whole.m_dPercentFat, 1.0);
    ASSERT_EQ(set.FindMember(CDAOSmMem::idMember, 77), 1);
    ASSERT_TRUE(set.DelCurrent());
    for (std::string const table : {"members", "profiles", "enrollments"}) {
        EXPECT_EQ(Count(table), 1) << table;
    }
    for (std::string const table :
        {"classes", "messages", "workouts", "evaluations", "skinfolds", "body_compositions"}) {
        EXPECT_EQ(Count(table), 0) << table;
    }
}

TEST_F(MemberTest, LooksUpByEitherNumber)
{
    AddMember(7, "M\xC3\xBCller", "Ana");
    std::string first;
    std::string middle;
    std::string last;
    std::uint8_t status = 0;
    CDAOSmMem set;
    EXPECT_TRUE(set.GetMember(CDAOSmMem::idWorkout, 507, first, middle, last, status));
    EXPECT_EQ(last + first + middle, "M\xC3\xBCllerAna");
    EXPECT_TRUE(IsMember(7, CDAOSmMem::idMember));
    EXPECT_FALSE(IsMember(7, CDAOSmMem::idWorkout)) << "a workout number is not a member ID";
    CDAOMem whole;
    ASSERT_NE(whole.FindMember(CDAOSmMem::idWorkout, 507), 0);
    EXPECT_EQ(whole.m_ExpireDate.DateStrLongYear(), "12/31/2026");
}

TEST_F(MemberTest, ListsByNameIgnoringCase)
{
    AddMember(1, "smith", "Bo");
    AddMember(2, "Adams", "Cy");
    AddMember(3, "SMITH", "Al");
    CDAOSmMem set;
    ASSERT_EQ(set.FindAllMembersByName(true), 3);
    Ids ids;
    for (int i = 0; i < 3; ++i) {
        ids.push_back(set.m_MemberID);
        set.Op(CDAOEFSet::opMoveNext);
    }
    EXPECT_EQ(ids, (Ids{2, 3, 1}));
    EXPECT_EQ(set.FindAllMembers(false), 2);
    EXPECT_EQ(set.CountPast(), 1);
}

TEST_F(MemberTest, FindsWorkoutsByEveryWay)
{
    AddMember(1);
    AddMember(2);
    AddWorkout(1, 3, {2026, 11, 16, 0, 0, 0});
    AddWorkout(1, 4, {2026, 11, 16, 23, 59, 59}, false);
    AddWorkout(2, 3, {2026, 11, 15, 12, 0, 1});
    CDAOWk set;
    EXPECT_EQ(set.FindWks(0), 3);
    EXPECT_EQ(set.m_lMemberID, 2) << "oldest first";
    EXPECT_EQ(set.FindWks(1), 2);
    EXPECT_EQ(set.FindWks(1, std::uint8_t(4)), 1);
    EXPECT_EQ(set.FindWks(2, CEFOleDateTime::Parse("11/15/2026 12:00:01")), 1);
    EXPECT_EQ(set.FindWks(2, CEFOleDateTime::Parse("11/15/2026 12:00:00")), 0);
    CEFOleDateTime from(2026, 11, 16);
    auto to = from;
    to.PreMidnight();
    EXPECT_EQ(set.FindWks(0, from, to, CDAOWk::okAll), 2);
    EXPECT_EQ(set.FindWks(1, from, to, CDAOWk::okNo), 1);
    EXPECT_EQ(set.FindWks(1, from, to, CDAOWk::okYes), 1);
    EXPECT_EQ(set.FindWks(2, from, to, CDAOWk::okAll), 0);
    EXPECT_EQ(set.CountToday(), 2);
}

TEST_F(MemberTest, EvaluationNumbersAreNeverTaken)
{
    AddMember(1);
    CDAOSmEval set;
    EXPECT_EQ(set.GenerateIDNum(), 1);
    AddEvaluation(1, 1);
    Run(DataFile::member, "UPDATE evaluations SET eval_id = 2147483647");
    EXPECT_EQ(AddEvaluation(1, 2), 1) << "a gap below the largest number";
    EXPECT_EQ(set.FindEvals(CDAOSmEval::idMember, 1), 2);
    EXPECT_EQ(set.FindEvals(1, std::uint8_t(2)), 1);
    EXPECT_EQ(set.FindEvals(1, CEFOleDateTime(2026, 11, 16, 9, 0)), 2);
}

TEST_F(MemberTest, NewMemberStartsFromTheCentresDefaults)
{
    CDAOSmMem members;
    CDAOEnr enrollments;
    CDAOProf profiles;
    CDAOCls classes;
    CDAOMsg messages;
    EXPECT_FALSE(ResetMember(members, enrollments, profiles, classes, messages));
    Run(DataFile::center,
        "INSERT INTO defaults (grade_status, re_eval_bonuses, other_bonuses, flags) "
        "VALUES (2, 3, 4, 0x20)");
    CEFOleDateTime::SetClock(CEFOleDateTime(2027, 1, 31, 12, 0));
    profiles.m_Goals = 0xFF;
    messages.m_Message = "of the member before";
    ASSERT_TRUE(ResetMember(members, enrollments, profiles, classes, messages));
    EXPECT_EQ(enrollments.m_EnrollDate.DateTimeStrLongYear(), "01/31/2027 00:00:00");
    EXPECT_EQ(enrollments.m_ExpireDate.DateStrLongYear(), "02/28/2027");
    EXPECT_EQ(profiles.m_Goals, 0U);
    EXPECT_EQ(messages.m_Message, "");
    EXPECT_TRUE(members.m_Status == 1 && profiles.m_Sex == 1 && classes.m_ClassIndex == 1);
    EXPECT_TRUE(classes.m_GradeStat == 2 && classes.m_Orient == 1 && classes.m_ReEval == 3
        && classes.m_Other == 4);
}

// Whatever becomes of three classes in their slots, a record stays with the class it was for.
TEST_F(MemberTest, RecordsStayWithTheirClassInAllMoves)
{
    std::vector<std::string> const names = {"", "A", "B", "C", "D"};
    std::int32_t member = 0;
    for (bool const known : {true, false}) {
        for (int move = 0; move < 125; ++move) {
            std::vector<std::string> const chosen = {names[static_cast<std::size_t>(move % 5)],
                names[static_cast<std::size_t>(move / 5 % 5)],
                names[static_cast<std::size_t>(move / 25)]};
            bool repeated = false;
            for (std::size_t i = 0; i < 3; ++i) {
                repeated = repeated
                    || (!chosen[i].empty()
                        && std::count(chosen.begin(), chosen.end(), chosen[i]) > 1);
            }
            if (repeated) {
                continue;
            }
            AddMember(++member);
            ASSERT_TRUE(UpdateClasses(member, Slot("A", 5), Slot("B", 9), Slot("C", 2)));
            for (std::uint8_t const index : std::vector<std::uint8_t>{5, 9, 2}) {
                AddWorkout(member, index);
                AddBodyComp(member, index);
            }
            auto const slot = [&](std::size_t i) {
                std::map<std::string, std::uint8_t> const indexes = {{"A", 5}, {"B", 9}, {"C", 2}};
                auto const found = indexes.find(chosen[i]);
                return Slot(
                    chosen[i], known && found != indexes.end() ? found->second : std::uint8_t(0));
            };
            ASSERT_TRUE(UpdateClasses(member, slot(0), slot(1), slot(2)));
            std::set<int> indexes;
            std::string order;
            for (auto const& [index, text] : Classes(member)) {
                EXPECT_TRUE(indexes.insert(index).second) << "two classes of one index";
                order += text[0];
                std::string const kept = "ABC";
                std::vector<int> const old = {5, 9, 2};
                if (auto const place = kept.find(text[0]); place != std::string::npos) {
                    EXPECT_EQ(index, old[place]) << text;
                }
            }
            EXPECT_EQ(order, chosen[0] + chosen[1] + chosen[2]) << "slot order";
            for (int const index : {5, 9, 2}) {
                std::string const where
                    = " WHERE member_id = " + std::to_string(member) + " AND class_index = ";
                bool const held = indexes.contains(index);
                EXPECT_EQ(Count("workouts" + where + std::to_string(index)), held ? 1 : 0);
            }
            EXPECT_EQ(Count("body_compositions WHERE member_id = " + std::to_string(member)
                          + " AND class_index = 99"),
                3 - static_cast<int>(std::count_if(indexes.begin(), indexes.end(), [](int i) {
                    return i == 5 || i == 9 || i == 2;
                })));
        }
    }
}

TEST_F(MemberTest, ClassRenamedInPlaceKeepsItsRecords)
{
    AddMember(1);
    ASSERT_TRUE(UpdateClasses(1, Slot("A"), Slot("B"), {}));
    EXPECT_EQ(Classes(1), (Rows{{1, "A Course"}, {2, "B Course"}}));
    ASSERT_TRUE(UpdateClasses(1, Slot("Z", 1), Slot("B", 1), {}));
    auto const rows = Classes(1);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0], (std::pair<int, std::string>{1, "Z Course"}));
    EXPECT_NE(rows[1].first, 1) << "given twice: the later slot gets a fresh one";
}

TEST_F(MemberTest, FreshIndexIsNobodysElse)
{
    AddMember(1);
    ASSERT_TRUE(UpdateClasses(1, Slot("A", 97), {}, {}));
    AddWorkout(1, 98);
    AddBodyComp(1, 1);
    AddEvaluation(1, 2);
    CDAOCls set;
    EXPECT_EQ(set.GenerateIndex(1, 97), 3);
    EXPECT_EQ(set.GenerateIndex(1, 101), 3);
    EXPECT_EQ(set.GenerateIndex(1, 50), 50);
    for (std::uint8_t index = 3; index <= 96; ++index) {
        AddWorkout(1, index);
    }
    EXPECT_EQ(set.GenerateIndex(1, 1), 0);
    EXPECT_FALSE(UpdateClasses(1, Slot("A", 97), Slot("B"), {})) << "no index is left";
    EXPECT_EQ(Classes(1), (Rows{{97, "A Course"}})) << "and nothing was changed";
}

TEST_F(MemberTest, ReplacingAClassKeepsOrDeletesItsRecords)
{
    AddMember(1);
    AddMember(2);
    for (std::int32_t const member : {1, 2}) {
        ASSERT_TRUE(UpdateClasses(member, Slot("A", 5), Slot("B", 6), {}));
        AddWorkout(member, 5);
        AddWorkout(member, 6);
        AddEvaluation(member, 5);
    }
    EXPECT_TRUE(ReplaceClass(1, 5, Slot("Z"), true));
    EXPECT_EQ(Classes(1), (Rows{{5, "Z Course"}, {6, "B Course"}}));
    EXPECT_EQ(Count("workouts"), 4);
    EXPECT_TRUE(ReplaceClass(2, 5, Slot("Z"), false));
    EXPECT_EQ(Count("workouts WHERE member_id = 2 AND class_index = 6"), 1);
    EXPECT_EQ(Count("workouts"), 3);
    EXPECT_EQ(Count("evaluations"), 1);
    EXPECT_FALSE(ReplaceClass(2, 50, Slot("Z"), false));
    EXPECT_EQ(Count("workouts"), 3);
}

TEST_F(MemberTest, DeletingAClassMovesOrDeletesItsRecordsOrDoesNothing)
{
    for (std::int32_t const member : {1, 2}) {
        AddMember(member);
        ASSERT_TRUE(UpdateClasses(member, Slot("A", 5), Slot("B", 6), {}));
        for (auto const index : {std::uint8_t(5), std::uint8_t(6)}) {
            AddWorkout(member, index);
            AddEvaluation(member, index);
            AddBodyComp(member, index);
        }
    }
    auto const records = [](std::string const& where) {
        return Count("workouts WHERE " + where) + Count("evaluations WHERE " + where)
            + Count("body_compositions WHERE " + where);
    };
    // The last of the tables refuses; what was done to the others before is undone.
    Run(DataFile::member,
        "CREATE TRIGGER t BEFORE UPDATE ON body_compositions BEGIN SELECT RAISE(ABORT, 'no'); END");
    Run(DataFile::member,
        "CREATE TRIGGER u BEFORE DELETE ON body_compositions BEGIN SELECT RAISE(ABORT, 'no'); END");
    for (bool const withRecords : {false, true}) {
        EXPECT_EQ(DeleteClass(1, "A", "Course", "", withRecords).Error(), DbError::constraint);
        EXPECT_EQ(Classes(1), (Rows{{5, "A Course"}, {6, "B Course"}}));
        EXPECT_EQ(records("member_id = 1 AND class_index = 5"), 3);
    }
    Run(DataFile::member, "DROP TRIGGER t");
    Run(DataFile::member, "DROP TRIGGER u");

    EXPECT_TRUE(DeleteClass(1, "A", "Course", "", false));
    EXPECT_EQ(Classes(1), (Rows{{6, "B Course"}}));
    EXPECT_EQ(records("member_id = 1 AND class_index = 99"), 3);
    EXPECT_TRUE(DeleteClass(2, "B", "Course", "", true));
    EXPECT_EQ(Classes(2), (Rows{{5, "A Course"}}));
    EXPECT_EQ(records("member_id = 2 AND class_index = 5"), 3);
    EXPECT_EQ(records("1"), 9);
    EXPECT_EQ(DeleteClass(2, "B", "Course", "", true).Error(), DbError::gone);
    EXPECT_EQ(records("1"), 9);
}

TEST_F(MemberTest, EnrollmentAndMessageServices)
{
    AddMember(2);
    CEFOleDateTime const from(2026, 2, 1);
    CEFOleDateTime const to(2027, 2, 1);
    EXPECT_TRUE(UpdateEnrollment(2, from, to, 3, 1, 1));
    EXPECT_FALSE(UpdateEnrollment(3, from, to, 3, 1, 1));
    CDAOMem whole;
    whole.FindMember(CDAOSmMem::idMember, 2);
    EXPECT_EQ(whole.m_ExpireDate, to);
    EXPECT_EQ(whole.m_Status, 1);
    CDAOMsg message;
    auto const stored = [&] {
        return message.FindMessages(2) == 1 ? message.m_Message : std::string("none or several");
    };
    EXPECT_EQ(corv_apiPostMemberMessage("", 2, false), apiSuccess);
    EXPECT_EQ(corv_apiPostMemberMessage("one", 2, false), apiSuccess) << "an empty one is none";
    EXPECT_EQ(corv_apiPostMemberMessage("two", 2, false), apiSuccess);
    EXPECT_EQ(stored(), "one");
    EXPECT_EQ(corv_apiPostMemberMessage("three", 2, true), apiSuccess);
    EXPECT_EQ(stored(), "three");
    EXPECT_EQ(corv_apiPostMemberMessage("x", 3, true), apiNoMember);
    CDatabaseSession::Get().SetDataFolder("/nonexistent");
    EXPECT_EQ(corv_apiPostMemberMessage("x", 2, true), apiStoreError);
}

TEST_F(MemberTest, KnowsTheClassesOfTheCatalogue)
{
    Run(DataFile::center, "INSERT INTO categories (number, name) VALUES (1, 'Dance'), (2, 'Gym')");
    Run(DataFile::center, "INSERT INTO courses (number, category, name) VALUES (10, 1, 'Salsa')");
    Run(DataFile::center, "INSERT INTO sections (number, course, name) VALUES (5, 10, 'Mon')");
    EXPECT_TRUE(IsCurrentClass("Dance", "Salsa", "Mon"));
    EXPECT_TRUE(IsCurrentClass("Gym", "", ""));
    EXPECT_FALSE(IsCurrentClass("Gym", "Salsa", "Mon"));
    EXPECT_FALSE(IsCurrentClass("Dance", "", "Mon"));
    EXPECT_FALSE(IsCurrentClass("", "", ""));
}

TEST_F(MemberTest, SearchMeetsAllCriteria)
{
    AddMember(1, "M\xC3\xBCller", "Ana", {1990, 11, 16});
    AddMember(2, "M\xC3\x9CLLER-Ortiz", "ben", {1990, 11, 17});
    AddMember(3, "Muller", "Cy", {2000, 2, 29});
    auto const by = [](auto... values) {
        Search search;
        search.SetSearchCriteria(values...);
        return Found(search);
    };
    auto const text = [&](Search::search criterion, char const* value) {
        return by(
            criterion, value, static_cast<char const*>(nullptr), static_cast<char const*>(nullptr));
    };
    EXPECT_EQ(Found({}).size(), 3U);
    EXPECT_EQ(text(Search::sLastName, "m\xC3\xBC"), (Ids{1, 2})) << "case, but not accents";
    EXPECT_EQ(text(Search::sLastName, "MUL"), (Ids{3}));
    EXPECT_EQ(text(Search::sLastName, "%"), (Ids{}));
    EXPECT_EQ(text(Search::sFirstName, "BEN"), (Ids{2}));
    EXPECT_EQ(text(Search::sState, "il").size(), 3U);
    EXPECT_EQ(text(Search::sState, "i").size(), 0U);
    EXPECT_EQ(by(Search::sMemberID, std::int32_t(2)), (Ids{2}));
    EXPECT_EQ(by(Search::sWorkoutNumber, std::int32_t(503)), (Ids{3}));
    EXPECT_EQ(by(Search::sAge, 36, 36), (Ids{1})) << "36 today";
    EXPECT_EQ(by(Search::sAge, 35, 36), (Ids{1, 2}));
    EXPECT_EQ(by(Search::sAge, 26, 26), (Ids{3}));
    EXPECT_EQ(by(Search::sAge, 40, 30), (Ids{}));
    EXPECT_EQ(by(Search::sSex, std::uint8_t(0)), (Ids{2}));
    EXPECT_EQ(by(Search::sGoals, std::int32_t(0x05)).size(), 3U);
    EXPECT_EQ(by(Search::sGoals, std::int32_t(0x15)).size(), 0U) << "every bit counts";
    EXPECT_EQ(by(Search::sMedicalHistory, std::int32_t(0x100001)).size(), 3U);
    EXPECT_EQ(
        by(Search::sExpireDate, CEFOleDateTime(2026, 12, 31, 8, 0), CEFOleDateTime(2026, 12, 31))
            .size(),
        3U)
        << "both days whole";
    Search both;
    both.SetSearchCriteria(Search::sLastName, "M", nullptr, nullptr);
    both.SetSearchCriteria(Search::sStatus, std::uint8_t(0));
    EXPECT_EQ(Found(both), (Ids{2}));
    both.SetSearchCriteria(Search::sStatus, std::uint8_t(1));
    EXPECT_EQ(Found(both).size(), 2U) << "set again replaces";
}

TEST_F(MemberTest, ClassSearchTellsWhichClassWasMet)
{
    AddMember(2, "B");
    AddMember(1, "A");
    ASSERT_TRUE(UpdateClasses(2, Slot("yoga", 3), {}, {}));
    ASSERT_TRUE(UpdateClasses(1, Slot("Yoga", 4), Slot("Gym", 7), {}));
    Search search;
    search.SetSearchCriteria(Search::sClass, "YOGA", "course", "");
    CDAOMemCls set;
    ASSERT_EQ(set.FindMembers(search, true, true), 2);
    EXPECT_EQ(set.m_ClassIndex, 4);
    EXPECT_EQ(MemberIDOf(set), 1) << "counts as a member set";
    set.Op(CDAOEFSet::opMoveNext);
    EXPECT_EQ(set.m_ClassIndex, 3);
    CDAOMem plain;
    EXPECT_EQ(plain.FindMembers(search, true, true), 2);
}
