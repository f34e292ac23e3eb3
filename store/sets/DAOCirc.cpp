#include "store/sets/DAOCirc.h"

namespace
{

constexpr std::array<std::string_view, CDAOCirc::kStations> kColumns
    = {"lift1", "lift2", "lift3", "lift4", "lift5", "lift6", "lift7", "lift8", "lift9", "lift10",
        "lift11", "lift12", "lift13", "lift14", "lift15", "lift16", "lift17", "lift18", "lift19",
        "lift20", "lift21", "lift22", "lift23", "lift24"};

} // namespace

CRecordClass const* CDAOCirc::GetThisClass()
{
    static CRecordClass const record = {"CDAOCirc", nullptr, DataFile::member, "lifts"};
    return &record;
}

int CDAOCirc::FindCircuit(std::int32_t evalID)
{
    return FindFew("WHERE eval_id = ?", evalID);
}

double CDAOCirc::GetStnVal(int station) const
{
    return station >= 0 && station < kStations ? m_values[static_cast<std::size_t>(station)] : 0.0;
}

void CDAOCirc::SetStnVal(int station, double value)
{
    if (station >= 0 && station < kStations) {
        m_values[static_cast<std::size_t>(station)] = value;
    }
}

std::string_view CDAOCirc::ColumnName(std::size_t station)
{
    return kColumns[station];
}

void CDAOCirc::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("eval_id", m_lEvalID);
    for (std::size_t i = 0; i < m_values.size(); ++i) {
        fx.Field(kColumns[i], m_values[i]);
    }
}
