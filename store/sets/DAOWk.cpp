#include "store/sets/DAOWk.h"

namespace
{

constexpr std::array<std::string_view, CDAOWk::kStationValues> kColumns
    = {"circuits", "station1", "station2", "station3", "station4", "station5", "station6",
        "station7", "station8", "station9", "station10", "station11", "station12"};

} // namespace

CRecordClass const* CDAOWk::GetThisClass()
{
    static CRecordClass const record = {"CDAOWk", nullptr, DataFile::member, "workouts"};
    return &record;
}

CRecordLine const& CDAOWk::GetLine() const
{
    static CRecordLine const line("WK1", "check_in", {CRecordLine::PartOf(CDAOWk())});
    return line;
}

int CDAOWk::FindWks(std::int32_t const& memberID)
{
    return memberID == 0 ? Find("ORDER BY check_in, id")
                         : Find("WHERE member_id = ? ORDER BY check_in, id", memberID);
}

int CDAOWk::FindWks(std::int32_t const& memberID, std::uint8_t const& classIndex)
{
    return Find(
        "WHERE member_id = ? AND class_index = ? ORDER BY check_in, id", memberID, classIndex);
}

int CDAOWk::FindWks(std::int32_t const& memberID, CEFOleDateTime const& when)
{
    return FindFew("WHERE member_id = ? AND check_in = ? ORDER BY id", memberID, when);
}

int CDAOWk::FindWks(
    std::int32_t const& memberID, CEFOleDateTime const& from, CEFOleDateTime const& to, ok filter)
{
    std::string clause = "WHERE check_in BETWEEN ? AND ?";
    std::vector<DbValue> values = {from.Seconds(), to.Seconds()};
    if (memberID != 0) {
        clause += " AND member_id = ?";
        values.emplace_back(std::int64_t(memberID));
    }
    if (filter != okAll) {
        clause += " AND (workout_ok <> 0) = ?";
        values.emplace_back(std::int64_t(filter));
    }
    return Select(clause + " ORDER BY check_in, id", std::move(values), Extent::many);
}

int CDAOWk::CountToday()
{
    auto from = CEFOleDateTime::GetCurrentTime();
    auto to = from;
    from.Midnight();
    to.PreMidnight();
    return static_cast<int>(Ask("SELECT count(*) FROM workouts WHERE check_in BETWEEN ? AND ?",
        {from.Seconds(), to.Seconds()}));
}

std::int16_t CDAOWk::GetStnVal(int const& index) const
{
    return index >= 0 && index < kStationValues ? m_values[static_cast<std::size_t>(index)]
                                                : std::int16_t(0);
}

void CDAOWk::SetStnVal(int const& index, std::int16_t const& value)
{
    if (index >= 0 && index < kStationValues) {
        m_values[static_cast<std::size_t>(index)] = value;
    }
}

CSortKey CDAOWk::ByStnVal(int index)
{
    return index >= 0 && index < kStationValues
        ? CSortKey{{kColumns[static_cast<std::size_t>(index)]}}
        : CSortKey{};
}

void CDAOWk::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_lMemberID);
    fx.Field("workout_ok", m_bWorkoutOK);
    fx.Field("class_index", m_nClassIndex);
    fx.Field("check_in", m_dtCheckIn);
    fx.Field("check_out", m_dtCheckOut);
    for (std::size_t i = 0; i < m_values.size(); ++i) {
        fx.Field(kColumns[i], m_values[i]);
    }
}
