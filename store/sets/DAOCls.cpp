#include "store/sets/DAOCls.h"

#include <array>

CRecordClass const* CDAOCls::GetThisClass()
{
    static CRecordClass const record = {"CDAOCls", nullptr, DataFile::member, "classes"};
    return &record;
}

int CDAOCls::FindClasses(std::int32_t memberID)
{
    return FindFew("WHERE member_id = ? ORDER BY id", memberID);
}

int CDAOCls::FindClasses(std::int32_t memberID, std::string_view category, std::string_view course,
    std::string_view section)
{
    return FindFew("WHERE member_id = ? AND category = ? AND course = ? AND section = ? "
                   "ORDER BY id",
        memberID, category, course, section);
}

std::uint8_t CDAOCls::GenerateIndex(std::int32_t memberID, std::uint8_t seed)
{
    std::array<bool, kLargestIndex + 1> taken = {};
    auto* const database = Database();
    CRowBlock rows;
    std::int64_t const id = memberID;
    std::vector<DbValue> const values(4, id);
    if (database == nullptr
        || !Do(database->Query("SELECT class_index FROM classes WHERE member_id = ? "
                               "UNION SELECT class_index FROM workouts WHERE member_id = ? "
                               "UNION SELECT class_index FROM evaluations WHERE member_id = ? "
                               "UNION SELECT class_index FROM body_compositions "
                               "WHERE member_id = ?",
            values, rows))) {
        return 0;
    }
    for (std::size_t i = 0; i < rows.Rows(); ++i) {
        auto const index = rows.Row(i).Cell(0).integerValue;
        if (index >= 1 && index <= kLargestIndex) {
            taken[static_cast<std::size_t>(index)] = true;
        }
    }
    std::uint8_t const first = seed >= 1 && seed <= kLargestIndex ? seed : std::uint8_t(1);
    for (unsigned step = 0; step < kLargestIndex; ++step) {
        auto const index = (first - 1U + step) % kLargestIndex + 1U;
        if (!taken[index]) {
            return static_cast<std::uint8_t>(index);
        }
    }
    return 0;
}

bool CDAOCls::MoveToEnd()
{
    auto const key = CurrentKey();
    auto* const database = key ? Database() : nullptr;
    if (database == nullptr) {
        return false;
    }
    std::string columns;
    for (auto const& column : Columns()) {
        columns += (columns.empty() ? "" : ", ") + column.name;
    }
    std::vector<DbValue> const values = {*key};
    std::int64_t copied = 0;
    return Do(database->Execute("INSERT INTO classes (" + columns + ") SELECT " + columns
                   + " FROM classes "
                     "WHERE id = ?",
               values, copied))
        && copied == 1 && DelCurrent();
}

int CDAOCls::GetClassIndexString(std::uint8_t index, std::string& text)
{
    text = index == kUnknown   ? "Unknown"
        : index == kAllClasses ? "All Categories/Courses/Sections"
                               : "";
    return static_cast<int>(text.size());
}

int CDAOCls::BuildClassString(std::string& text) const
{
    text.clear();
    for (auto const* part : {&m_Category, &m_Course, &m_Section}) {
        if (!part->empty()) {
            text += (text.empty() ? "" : " ") + *part;
        }
    }
    return static_cast<int>(text.size());
}

void CDAOCls::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_MemberID);
    fx.Field("class_index", m_ClassIndex);
    fx.Field("category", m_Category);
    fx.Field("course", m_Course);
    fx.Field("section", m_Section);
    fx.Field("grade_status", m_GradeStat);
    fx.Field("orientation", m_Orient);
    fx.Field("re_evaluations", m_ReEval);
    fx.Field("other_bonuses", m_Other);
}
