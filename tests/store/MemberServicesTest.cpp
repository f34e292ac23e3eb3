#include "store/DAOMem.h"
#include "tests/store/MemberFixture.h"

#include <algorithm>
#include <map>
#include <set>

namespace
{

using MemberServicesTest = CMemberTest;
using Rows = std::vector<std::pair<int, std::string>>;

} // namespace

TEST_F(MemberServicesTest, NewMemberStartsFromTheCentresDefaults)
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
TEST_F(MemberServicesTest, RecordsStayWithTheirClassInAllMoves)
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

TEST_F(MemberServicesTest, ClassRenamedInPlaceKeepsItsRecords)
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

TEST_F(MemberServicesTest, FreshIndexIsNobodysElse)
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

TEST_F(MemberServicesTest, ReplacingAClassKeepsOrDeletesItsRecords)
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

TEST_F(MemberServicesTest, DeletingAClassMovesOrDeletesItsRecordsOrDoesNothing)
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

TEST_F(MemberServicesTest, EnrollmentIsRewritten)
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
}

TEST_F(MemberServicesTest, MessageIsStoredWhereNoneIsOrReplaced)
{
    AddMember(2);
    auto const stored = [] {
        CDAOMsg message;
        return message.FindMessages(2) == 1 ? message.m_Message : std::string("none or several");
    };
    EXPECT_EQ(corv_apiPostMemberMessage("", 2, false), apiSuccess);
    EXPECT_EQ(corv_apiPostMemberMessage("one", 2, false), apiSuccess) << "an empty one is none";
    EXPECT_EQ(corv_apiPostMemberMessage("two", 2, false), apiSuccess);
    EXPECT_EQ(stored(), "one");
    EXPECT_EQ(corv_apiPostMemberMessage("three", 2, true), apiSuccess);
    EXPECT_EQ(stored(), "three");
    EXPECT_EQ(corv_apiPostMemberMessage("x", 3, true), apiNoMember);
    EXPECT_EQ(corv_apiPostMemberMessage(nullptr, 2, true), apiSuccess);
    EXPECT_EQ(stored(), "");
    CDatabaseSession::Get().SetDataFolder("/nonexistent");
    EXPECT_EQ(corv_apiPostMemberMessage("x", 2, true), apiStoreError);
}

TEST_F(MemberServicesTest, MessageHasTwoHundredCharactersAtMost)
{
    AddMember(2);
    auto const post = [](std::string const& character, int count) {
        std::string text;
        while (count-- > 0) {
            text += character;
        }
        auto const result = corv_apiPostMemberMessage(text.c_str(), 2, true);
        CDAOMsg message;
        EXPECT_EQ(message.FindMessages(2), 1);
        EXPECT_EQ(message.m_Message == text, result == apiSuccess);
        return result;
    };
    // The last one is no UTF-8: each of its bytes counts.
    for (std::string const character : {"x", "\xC3\xBC", "\xF0\x9F\x8F\x8B", "\x80"}) {
        EXPECT_EQ(post(character, 200), apiSuccess) << character;
        EXPECT_EQ(post(character, 201), apiStoreError) << character;
    }
}

TEST_F(MemberServicesTest, EveryServiceIsPartOfAnOpenTransaction)
{
    AddMember(1);
    AddMember(2);
    ASSERT_TRUE(UpdateClasses(1, Slot("A", 5), Slot("B", 6), {}));
    ASSERT_EQ(corv_apiPostMemberMessage("one", 1, false), apiSuccess);
    for (std::uint8_t const index : std::vector<std::uint8_t>{5, 6, 7, 8}) {
        AddWorkout(1, index);
    }
    {
        CTransaction transaction(Database(DataFile::member));
        ASSERT_TRUE(transaction.Status());
        EXPECT_TRUE(UpdateEnrollment(1, {}, {}, 3, 1, 0));
        EXPECT_TRUE(UpdateClasses(1, Slot("A", 5), Slot("B", 6), Slot("C", 9)));
        EXPECT_TRUE(ReplaceClass(1, 5, Slot("Z"), true));
        EXPECT_TRUE(DeleteClass(1, "B", "Course", "", true));
        EXPECT_TRUE(UpdateClassIndex(1, 7, CDAOCls::kUnknown));
        EXPECT_TRUE(DeleteClassData(1, 8));
        EXPECT_EQ(corv_apiPostMemberMessage("two", 1, false), apiSuccess) << "not replaced";
        EXPECT_EQ(corv_apiPostMemberMessage("two", 2, false), apiSuccess);
        EXPECT_TRUE(transaction.Commit()) << transaction.Status().Text();
    }
    EXPECT_EQ(Count("members WHERE member_id = 1 AND status = 0"), 1);
    EXPECT_EQ(Count("enrollments WHERE member_id = 1 AND period = 3"), 1);
    EXPECT_EQ(Classes(1), (Rows{{5, "Z Course"}, {9, "C Course"}}));
    EXPECT_EQ(Count("workouts WHERE class_index IN (5, 99)"), 2);
    EXPECT_EQ(Count("workouts"), 2);
    EXPECT_EQ(Count("messages WHERE (member_id, message) IN (VALUES (1, 'one'), (2, 'two'))"), 2);
}

TEST_F(MemberServicesTest, KnowsTheClassesOfTheCatalogue)
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
