#include "tests/store/MemberFixture.h"

#include <algorithm>
#include <set>
#include <sstream>

namespace
{

using Rows = std::vector<std::pair<int, std::string>>;

class MemberServicesTest : public CMemberTest
{
protected:
    /// "A5 B0": one slot each, with its index.
    static std::vector<CClassSlot> Slots(std::string const& text)
    {
        std::vector<CClassSlot> slots;
        std::istringstream words(text);
        for (std::string word; words >> word;) {
            slots.push_back(
                Slot(word.substr(0, 1), static_cast<std::uint8_t>(std::stoi(word.substr(1)))));
        }
        return slots;
    }

    /// Adds a row that has no field without a value.
    static void FillTable(CDAOEFSet& set)
    {
        std::string columns;
        std::string values;
        for (auto const& column : set.Columns()) {
            bool const isText = column.type == ColumnType::text;
            columns += (columns.empty() ? "" : ", ") + column.name;
            values += (values.empty() ? "" : ", ") + std::string(isText ? "'x'" : "77");
        }
        Run(DataFile::member,
            "INSERT INTO " + std::string(set.GetClass()->table) + " (" + columns + ") VALUES ("
                + values + ")");
    }

    static CClassSlot FullSlot(std::uint8_t index)
    {
        return {.category = "Z",
            .course = "Y",
            .section = "X",
            .gradeStat = 3,
            .orientBonus = true,
            .reEvalBonuses = 7,
            .otherBonuses = -2,
            .classIndex = index};
    }

    static void ExpectFirstClass(std::int32_t member, CClassSlot const& slot, std::uint8_t index)
    {
        CDAOCls set;
        EXPECT_GT(set.FindClasses(member), 0);
        EXPECT_EQ(set.m_ClassIndex, index);
        EXPECT_EQ(set.m_Category + set.m_Course + set.m_Section,
            slot.category + slot.course + slot.section);
        EXPECT_EQ(set.m_GradeStat, slot.gradeStat);
        EXPECT_EQ(set.m_Orient, slot.orientBonus ? 1 : 0);
        EXPECT_EQ(set.m_ReEval, slot.reEvalBonuses);
        EXPECT_EQ(set.m_Other, slot.otherBonuses);
    }

    /// What the slots of a save know of the indexes that the records carry.
    enum class Known
    {
        nothing,
        byName,
        byPlace
    };

    /// Saves three of the classes A, B and C, which have records, D and none in the slots.
    static void ExpectMove(std::int32_t member, std::vector<std::size_t> const& chosen, Known known)
    {
        std::vector<std::string> const names = {"A", "B", "C", "D", ""};
        std::vector<std::uint8_t> const indexes = {5, 9, 2};
        ASSERT_TRUE(UpdateClasses(member, Slot("A", 5), Slot("B", 9), Slot("C", 2)));
        for (auto const index : indexes) {
            AddRecords(member, index);
        }
        std::vector<CClassSlot> slots;
        Rows expected; // of index 0 where it is a fresh one or depends on what is left over
        for (std::size_t i = 0; i < chosen.size(); ++i) {
            auto const place = known == Known::byPlace ? i : chosen[i];
            bool const isRepeated = known != Known::byPlace
                && std::count(chosen.begin(), chosen.begin() + std::ptrdiff_t(i), place) > 0;
            auto const index = place < indexes.size() ? indexes[place] : std::uint8_t(0);
            slots.push_back(Slot(names[chosen[i]], known == Known::nothing ? 0 : index));
            if (!slots.back().IsEmpty()) {
                expected.emplace_back(isRepeated ? 0 : index, names[chosen[i]] + " Course");
            }
        }
        ASSERT_TRUE(UpdateClasses(member, slots[0], slots[1], slots[2]));
        auto const found = Classes(member);
        ASSERT_EQ(found.size(), expected.size());
        std::set<int> held;
        for (std::size_t i = 0; i < found.size(); ++i) {
            EXPECT_EQ(found[i].second, expected[i].second) << "slot order";
            EXPECT_TRUE(expected[i].first == 0 || found[i].first == expected[i].first);
            EXPECT_TRUE(held.insert(found[i].first).second) << "two classes of one index";
        }
        int unknown = 0;
        for (auto const index : indexes) {
            unknown += held.contains(index) ? 0 : 111;
            EXPECT_EQ(Records(member, index), held.contains(index) ? 111 : 0);
        }
        EXPECT_EQ(Records(member, CDAOCls::kUnknown), unknown);
    }

    static void AddClass(std::int32_t member, CClassSlot const& slot)
    {
        Run(DataFile::member,
            "INSERT INTO classes (member_id, class_index, category, course, section, grade_status, "
            "orientation, re_evaluations, other_bonuses) VALUES (?, ?, ?, ?, '', 0, 0, 0, 0)",
            {std::int64_t(member), std::int64_t(slot.classIndex), slot.category, slot.course});
    }

    /// The letters of the classes that a class's workouts were added for, by their hours.
    static std::string Owners(std::int32_t member, int index)
    {
        std::string owners;
        CDAOWk set;
        for (int n = set.FindWks(member, static_cast<std::uint8_t>(index)); n > 0; --n) {
            owners += static_cast<char>('A' + set.m_dtCheckIn.Hour());
            set.Op(CDAOEFSet::opMoveNext);
        }
        return owners;
    }
};

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
    for (CDAOEFSet* set :
        std::initializer_list<CDAOEFSet*>{&members, &enrollments, &profiles, &classes, &messages}) {
        FillTable(*set);
        ASSERT_EQ(set->OpenSet(true), 1) << "the member before";
    }
    ASSERT_TRUE(ResetMember(members, enrollments, profiles, classes, messages));
    std::int64_t const today = CEFOleDateTime(2027, 1, 31).Seconds();
    using Values = std::vector<DbValue>;
    auto const none = std::int64_t(0);
    EXPECT_EQ(members.FieldValues(), (Values{none, none, "", "", "", std::int64_t(1)}));
    EXPECT_EQ(enrollments.FieldValues(),
        (Values{none, today, CEFOleDateTime(2027, 2, 28).Seconds(), none, none}));
    EXPECT_EQ(profiles.FieldValues(),
        (Values{none, "", "", "", "", "", "", "", "", "", none, none, today, std::int64_t(1), none,
            none}));
    EXPECT_EQ(classes.FieldValues(),
        (Values{none, std::int64_t(1), "", "", "", std::int64_t(2), std::int64_t(1),
            std::int64_t(3), std::int64_t(4)}));
    EXPECT_EQ(messages.FieldValues(), (Values{none, ""}));
}

// Whatever becomes of three classes in their slots, a record stays with the class it was for; where
// the slots know their indexes by their places, with the class that is in the place now.
TEST_F(MemberServicesTest, RecordsStayWithTheirClassInAllMoves)
{
    std::int32_t member = 0;
    for (auto const known : {Known::nothing, Known::byName, Known::byPlace}) {
        for (std::size_t move = 0; move < 125; ++move) {
            std::vector<std::size_t> const chosen = {move % 5, move / 5 % 5, move / 25};
            SCOPED_TRACE(testing::PrintToString(chosen));
            AddMember(++member);
            ASSERT_NO_FATAL_FAILURE(ExpectMove(member, chosen, known));
        }
    }
}

// How slots come to their indexes, and whose records those are.
TEST_F(MemberServicesTest, SlotsTakeNoIndexThatIsAnothersOrNone)
{
    struct Case
    {
        std::string what;
        std::string stored; ///< name and index of each class
        std::string given;
        std::string expected; ///< behind each the records' classes; "?" is a fresh index
    };
    std::vector<Case> const cases = {
        {"renamed in its place", "A1 B2", "Z1 B2", "Z1A B2B"},
        {"one index in two slots", "A1 B2", "Z1 B1", "Z1A B?B"},
        {"one index in two slots, with new names", "A1 B2", "Z1 Y1", "Z1A Y? 99B"},
        {"one index in two rows", "A1 B1", "B1 A1", "B1AB A?"},
        {"one index in two rows, not told", "A1 B1", "A1 B0", "A1AB B?"},
        {"its own index is another's now", "A1 B2", "Z1 A0", "Z1A A? 99B"},
        {"a class given twice", "A1 B2", "A0 A0", "A1A A? 99B"},
        {"what is left over, in its order", "A1 B2", "Y0 Z0", "Y1A Z2B"},
        {"what is left over beside known ones", "A1 B2 C3", "N0 B2 C3", "N1A B2B C3C"},
        {"new beside known ones", "A1 B2", "A1 N0 B2", "A1A N? B2B"},
        {"new, and nothing chosen", "A1 B2", "A1 N100 B2", "A1A N? B2B"},
        {"none beside one that is deleted", "A150 B0 C3", "B0 C3", "B?B C3C 99A"},
        {"none, given back in its place", "A150 B0 C3", "A150 B0 C3", "A150A B0B C3C"},
        {"none is left over", "A0 B3", "N0 B3", "N? B3B 99A"},
        {"none at all is left over", "A100 B101", "Y0 Z0", "Y? Z? 99AB"},
    };
    std::int32_t member = 0;
    for (auto const& given : cases) {
        SCOPED_TRACE(given.what);
        AddMember(++member);
        auto const stored = Slots(given.stored);
        for (auto const& slot : stored) {
            AddClass(member, slot);
            AddWorkout(member, slot.classIndex, {2026, 1, 1, slot.category[0] - 'A', 0});
        }
        auto slots = Slots(given.given);
        slots.resize(3);
        EXPECT_TRUE(UpdateClasses(member, slots[0], slots[1], slots[2]));
        slots.insert(slots.end(), stored.begin(), stored.end());
        std::string found;
        for (auto const& [index, text] : Classes(member)) {
            bool const isKnown = std::ranges::count(slots, index, &CClassSlot::classIndex) > 0;
            EXPECT_TRUE(isKnown || (index >= 1 && index <= CDAOCls::kLargestIndex)) << index;
            found += found.empty() ? "" : " ";
            found += text[0];
            found += (isKnown ? std::to_string(index) : "?").append(Owners(member, index));
        }
        auto const unknown = Owners(member, CDAOCls::kUnknown);
        EXPECT_EQ(found.append(unknown.empty() ? "" : " 99").append(unknown), given.expected);
    }
}

TEST_F(MemberServicesTest, ClassesAreAddedAndChangedByAllFields)
{
    AddMember(1);
    for (auto const& slot : {FullSlot(5), Slot("A", 5), FullSlot(5)}) {
        ASSERT_TRUE(UpdateClasses(1, slot, {}, {}));
        ExpectFirstClass(1, slot, 5);
    }
}

TEST_F(MemberServicesTest, BonusesThatDoNotFitChangeNothing)
{
    AddMember(1);
    CTransaction transaction(Database(DataFile::member));
    for (auto const field : {&CClassSlot::reEvalBonuses, &CClassSlot::otherBonuses}) {
        for (int const bonuses : {-40'000, -32'769, -32'768, 32'767, 32'768, 70'000}) {
            bool const fits = bonuses >= -32'768 && bonuses <= 32'767;
            auto slot = Slot("B", 5);
            slot.*field = bonuses;
            ASSERT_TRUE(UpdateClasses(1, Slot("A", 5), {}, {}));
            EXPECT_EQ(UpdateClasses(1, Slot("A", 4), slot, {}), fits) << bonuses;
            EXPECT_EQ(Classes(1).size(), fits ? 2U : 1U);
            EXPECT_EQ(ReplaceClass(1, 5, slot, true), fits) << bonuses;
            EXPECT_EQ(Classes(1).back().second, fits ? "B Course" : "A Course");
        }
    }
    EXPECT_TRUE(transaction.Commit()) << "refused before anything was begun";
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
    for (std::int32_t const member : {1, 2, 3}) {
        AddMember(member);
        ASSERT_TRUE(UpdateClasses(member, Slot("A", 5), Slot("B", 6), {}));
        AddRecords(member, 5);
        AddRecords(member, 6);
    }
    auto const other = FullSlot(50);
    for (bool const transfer : {true, false}) {
        std::int32_t const member = transfer ? 1 : 2;
        EXPECT_TRUE(ReplaceClass(member, 5, other, transfer));
        ExpectFirstClass(member, other, 5);
        EXPECT_EQ(Classes(member).back(), (std::pair(6, std::string("B Course"))));
        EXPECT_EQ(Records(member, 5), transfer ? 111 : 0);
        EXPECT_EQ(Records(member, 6), 111);
    }
    EXPECT_FALSE(ReplaceClass(2, 50, other, false));
    EXPECT_EQ(Classes(3), (Rows{{5, "A Course"}, {6, "B Course"}}));
    EXPECT_EQ(Records(3, 5) + Records(3, 6), 222);
}

TEST_F(MemberServicesTest, DeletingAClassMovesOrDeletesItsRecordsOrDoesNothing)
{
    for (std::int32_t const member : {1, 2}) {
        AddMember(member);
        ASSERT_TRUE(UpdateClasses(member, Slot("A", 5), Slot("B", 6), {}));
        AddRecords(member, 5);
        AddRecords(member, 6);
    }
    // The last of the tables refuses; what was done to the others before is undone.
    Run(DataFile::member,
        "CREATE TRIGGER t BEFORE UPDATE ON body_compositions BEGIN SELECT RAISE(ABORT, 'no'); END");
    Run(DataFile::member,
        "CREATE TRIGGER u BEFORE DELETE ON body_compositions BEGIN SELECT RAISE(ABORT, 'no'); END");
    for (bool const withRecords : {false, true}) {
        EXPECT_EQ(DeleteClass(1, "A", "Course", "", withRecords).Error(), DbError::constraint);
        EXPECT_EQ(Classes(1), (Rows{{5, "A Course"}, {6, "B Course"}}));
        EXPECT_EQ(Records(1, 5), 111);
    }
    Run(DataFile::member, "DROP TRIGGER t");
    Run(DataFile::member, "DROP TRIGGER u");

    EXPECT_TRUE(DeleteClass(1, "A", "Course", "", false));
    EXPECT_EQ(Classes(1), (Rows{{6, "B Course"}}));
    EXPECT_EQ(Records(1, 99), 111);
    EXPECT_EQ(Records(1, 6), 111);
    EXPECT_TRUE(DeleteClass(2, "B", "Course", "", true));
    EXPECT_EQ(Classes(2), (Rows{{5, "A Course"}}));
    EXPECT_EQ(Records(2, 5), 111);
    EXPECT_EQ(Records(2, 6) + Records(2, 99), 0);
    EXPECT_EQ(DeleteClass(2, "B", "Course", "", true).Error(), DbError::gone);
    EXPECT_EQ(Records(2, 5), 111);
}

TEST_F(MemberServicesTest, EnrollmentIsRewrittenOrAdded)
{
    AddMember(2);
    AddMember(4);
    CEFOleDateTime const from(2026, 2, 1);
    CEFOleDateTime const to(2027, 2, 1);
    CDAOEnr enrollment;
    CDAOSmMem member;
    for (bool const there : {true, false}) {
        EXPECT_TRUE(UpdateEnrollment(2, from, to, 3, 1, 1));
        ASSERT_EQ(enrollment.FindEnrollment(2), 1);
        EXPECT_EQ(enrollment.m_EnrollDate, from);
        EXPECT_EQ(enrollment.m_ExpireDate, to);
        EXPECT_EQ(enrollment.m_EnrollPer, 3);
        EXPECT_EQ(enrollment.m_Incentive, 1);
        ASSERT_EQ(member.FindMember(CDAOSmMem::idMember, 2), 1);
        EXPECT_EQ(member.m_Status, 1);
        if (there) {
            Run(DataFile::member, "UPDATE members SET status = 0");
            Run(DataFile::member, "DELETE FROM enrollments WHERE member_id = 2");
        }
    }
    EXPECT_FALSE(UpdateEnrollment(3, from, to, 3, 1, 1)) << "no such member";
    EXPECT_EQ(Count("enrollments"), 2);
    ASSERT_EQ(enrollment.FindEnrollment(4), 1);
    EXPECT_EQ(enrollment.m_EnrollPer, 1);
    ASSERT_EQ(member.FindMember(CDAOSmMem::idMember, 4), 1);
    EXPECT_EQ(member.m_Status, 0) << "another member's";
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
