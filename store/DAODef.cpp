#include "store/DAODef.h"

#include <array>

CRecordClass const* CDAODef::GetThisClass()
{
    static CRecordClass const record = {"CDAODef", nullptr, DataFile::center, "defaults"};
    return &record;
}

char const* CDAODef::GetGrdStatStr(gradestat status)
{
    constexpr std::array kTexts
        = {"None", "In Progress", "Satisfactory", "Incomplete", "Withdrawn"};
    auto const index = static_cast<std::size_t>(status);
    return index < kTexts.size() ? kTexts[index] : "";
}

char const* CDAODef::GetEnrPerStr(enrollper period)
{
    constexpr std::array kTexts = {"1 Month", "3 Months", "6 Months", "1 Year"};
    auto const index = static_cast<std::size_t>(period);
    return index < kTexts.size() ? kTexts[index] : "";
}

void CDAODef::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("grade_status", m_nDefGradeStat);
    fx.Field("re_eval_bonuses", m_nDefReEvalBonuses);
    fx.Field("other_bonuses", m_nDefOtherBonuses);
    fx.Field("flags", m_nDefFlags);
}
