#include "tests/store/MemberFixture.h"

#include <sstream>

namespace
{

using namespace std::string_literals;

/// What the fields of a record set are to hold.
template <typename... Fields>
std::vector<DbValue> Values(Fields... fields)
{
    return {DbValue(
        std::conditional_t<std::is_integral_v<Fields>, std::int64_t, std::string>(fields))...};
}

class MemberServicesTest : public CMemberTest
{
protected:
    /// "A5 B0 -0": the names of three slots, with their indexes.
    static std::vector<CClassSlot> Slots(std::string const& text)
    {
        std::vector<CClassSlot> slots;
        std::istringstream words(text);
        for (std::string word; words >> word;) {
            auto const index = static_cast<std::uint8_t>(std::stoi(word.substr(1)));
            slots.push_back(Slot(word[0] == '-' ? "" : word.substr(0, 1), index));
            slots.back().orientBonus = true;
        }
        return slots;
    }

    /// Stores a class of the last member whose further values fit no field, with its records.
    void AddClass(CClassSlot const& slot) const
    {
        Run(DataFile::member,
            "INSERT INTO classes (member_id, class_index, category, course, section, grade_status, "
            "orientation, re_evaluations, other_bonuses) "
            "VALUES (?1, ?2, ?3, 'Course', '', 300 + unicode(?3), 7, 99999, -99999)",
            {std::int64_t(m_nMember), std::int64_t(slot.classIndex), slot.category});
        AddRecords(m_nMember, slot.classIndex, {2026, 1, 1, slot.category[0] - 'A', 0});
    }

    /// The letters of the classes whose records these are, by the hours of the workouts.
    std::string Owners(std::int64_t index) const
    {
        std::string owners;
        CDAOWk set;
        for (int n = set.FindWks(m_nMember, static_cast<std::uint8_t>(index)); n > 0; --n) {
            owners += static_cast<char>('A' + set.m_dtCheckIn.Hour());
            set.Op(CDAOEFSet::opMoveNext);
        }
        EXPECT_EQ(Records(m_nMember, static_cast<int>(index)), 111 * std::ssize(owners));
        return owners;
    }

    /// What becomes of a member's classes when these are saved: "Z5Aa" is Z with index 5, with the
    /// records of A and in the row of A. Behind the classes come the records of index 99.
    std::string Saved(std::string const& stored, std::string const& given)
    {
        AddMember(++m_nMember);
        for (auto const& slot : Slots(stored)) {
            AddClass(slot);
        }
        auto slots = Slots(given);
        slots.resize(3);
        EXPECT_TRUE(UpdateClasses(m_nMember, slots[0], slots[1], slots[2]));
        CRowBlock rows;
        EXPECT_TRUE(Database(DataFile::member)
                        .Query("SELECT class_index, category || class_index, iif(orientation = 7 "
                               "AND re_evaluations = 99999 AND other_bonuses = -99999, "
                               "char(grade_status - 268), '') FROM classes WHERE member_id = ? "
                               "ORDER BY id",
                            std::vector<DbValue>{std::int64_t(m_nMember)}, rows));
        std::string found;
        for (std::size_t i = 0; i < rows.Rows(); ++i) {
            auto const row = rows.Row(i);
            found.append(row.Text(row.Cell(1))).append(Owners(row.Cell(0).integerValue));
            found.append(row.Text(row.Cell(2))).append(" ");
        }
        return found + Owners(CDAOCls::kUnknown);
    }

    std::int32_t m_nMember = 0;
};

} // namespace

// A record stays with the class it was for; where a slot knows an index, with the class that has it
// now. So does what fits no field.
TEST_F(MemberServicesTest, RecordsStayWithTheirClass)
{
    using Case = std::array<char const*, 4>;
    for (auto const& [what, stored, given, expected] : {
             Case{"one index in two slots", "A1 B2", "Z1 B1", "Z1Aa B3Bb "},
             {"moved, by names", "A5 B9 C2", "C0 A0 B0", "C2Cc A5Aa B9Bb "},
             {"moved, one is new", "A5 B9 C2", "C2 D0 A5", "C2Cc D9Bb A5Aa "},
             {"new names, fewer", "A5 B9 C2", "D0 -0 A0", "D9Bb A5Aa C"},
             {"the same names twice", "A5 B9 C2", "B0 B0 C0", "B9Bb B1 C2Cc A"},
             {"all deleted", "A5 B9 C2", "", "ABC"},
             {"none, given back in its place", "A150 B0 C3", "A150 B0 C3", "A150Aa B0Bb C3Cc "},
             {"one index in two slots, with new names", "A1 B2", "Z1 Y1", "Z1Aa Y3 B"},
             {"one index in two rows, not told", "A1 B1", "A1 B0", "A1ABa B2b "},
             {"its own index is another's now", "A1 B2", "Z1 A0", "Z1Aa A3 B"},
             {"what is left over, in its order", "A1 B2", "Y0 Z0", "Y1Aa Z2Bb "},
             {"new, and nothing chosen", "A1 B2", "A1 N100 B2", "A1Aa N3 B2Bb "},
             {"none beside one that is deleted", "A150 B0 C3", "B0 C3", "B1Bb C3Cc A"},
             {"that of deleted ones", "A150 B99 C3", "B99 C3", "B1b C3Cc AB"},
             {"none is left over", "A0 B3", "N0 B3", "N1 B3Bb A"},
         }) {
        EXPECT_EQ(Saved(stored, given), expected) << what;
    }
}

TEST_F(MemberServicesTest, FreshIndexIsNobodysElse)
{
    AddMember(1);
    ASSERT_TRUE(UpdateClasses(1, Slot("A", 97), {}, {}));
    AddRecords(1, 98);
    Run(DataFile::member, "UPDATE body_compositions SET class_index = 1");
    Run(DataFile::member, "UPDATE evaluations SET class_index = 2");
    CDAOCls set;
    EXPECT_EQ(set.GenerateIndex(1, 97), 3);
    EXPECT_EQ(set.GenerateIndex(1, 101), 3);
    EXPECT_EQ(set.GenerateIndex(1, 50), 50);
    for (int index = 3; index <= 96; ++index) {
        AddRecord<CDAOWk>(1, index, {});
    }
    EXPECT_EQ(set.GenerateIndex(1, 1), 0);
    EXPECT_FALSE(UpdateClasses(1, Slot("A", 97), Slot("B"), {})) << "no index is left";
    EXPECT_EQ(Classes(1), "97A") << "and nothing was changed";
}

TEST_F(MemberServicesTest, ReplacingOrDeletingAClassTouchesNoOtherRecords)
{
    CClassSlot const other = {"Z", "Y", "X", 3, true, 32'767, -32'768, 50};
    for (std::int32_t member = 1; member <= 3; ++member) {
        AddMember(member);
        ASSERT_TRUE(UpdateClasses(member, Slot("A", 5), Slot("B", 6), {}));
        AddRecords(member, 5);
        AddRecords(member, 6);
    }
    EXPECT_TRUE(ReplaceClass(1, 5, other, true));
    EXPECT_TRUE(ReplaceClass(2, 5, other, false));
    EXPECT_FALSE(ReplaceClass(2, 50, other, false)) << "no such class";
    for (auto const field : {&CClassSlot::reEvalBonuses, &CClassSlot::otherBonuses}) {
        for (int const tooMuch : {-32'769, 32'768}) {
            auto slot = other;
            slot.*field = tooMuch;
            EXPECT_FALSE(ReplaceClass(1, 5, slot, true));
            EXPECT_FALSE(UpdateClasses(1, {}, slot, {}));
        }
    }
    EXPECT_TRUE(DeleteClass(3, "A", "Course", "", false));
    EXPECT_EQ(DeleteClass(3, "A", "Course", "", true).Error(), DbError::gone);
    using Found = std::tuple<std::string, std::int64_t, std::int64_t, std::int64_t>;
    for (auto const& [member, expected] : {std::pair(1, Found("5Z 6B", 111, 111, 0)),
             {2, {"5Z 6B", 0, 111, 0}}, {3, {"6B", 0, 111, 111}}}) {
        EXPECT_EQ(Found(Classes(member), Records(member, 5), Records(member, 6),
                      Records(member, CDAOCls::kUnknown)),
            expected);
    }
    CDAOCls set;
    ASSERT_EQ(set.FindClasses(1), 2);
    EXPECT_EQ(set.FieldValues(), Values(1, 5, "Z", "Y", "X", 3, 1, 32'767, -32'768));
}

TEST_F(MemberServicesTest, AMessageHasAtMostTwoHundredCharacters)
{
    AddMember(2);
    EXPECT_EQ(corv_apiPostMemberMessage("", 2, false), apiSuccess);
    // One that is no UTF-8 counts by its bytes.
    for (std::string const character : {"\u00FC", "\U0001F3CB", "\x80"}) {
        std::string text;
        while (text.size() < 200 * character.size()) {
            text += character;
        }
        EXPECT_EQ(corv_apiPostMemberMessage(text.c_str(), 2, true), apiSuccess);
        EXPECT_EQ(corv_apiPostMemberMessage((text + character).c_str(), 2, true), apiStoreError);
        CDAOMsg message;
        EXPECT_EQ(message.FindMessages(2), 1);
        EXPECT_EQ(message.m_Message, text);
    }
    EXPECT_EQ(corv_apiPostMemberMessage(nullptr, 2, true), apiSuccess);
    EXPECT_EQ(Count("messages WHERE message = ''"), 1);
    EXPECT_EQ(corv_apiPostMemberMessage("x", 3, true), apiNoMember);
}
