#include "store/sets/DAODef.h"

#include "store/sets/EnumText.h"

CRecordClass const* CDAODef::GetThisClass()
{
    static CRecordClass const record = {"CDAODef", nullptr, DataFile::center, "defaults"};
    return &record;
}

char const* CDAODef::GetGrdStatStr(gradestat status)
{
    return TextAt({"None", "In Progress", "Satisfactory", "Incomplete", "Withdrawn"}, status);
}

char const* CDAODef::GetEnrPerStr(enrollper period)
{
    return TextAt({"1 Month", "3 Months", "6 Months", "1 Year"}, period);
}

void CDAODef::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("grade_status", m_nDefGradeStat);
    fx.Field("re_eval_bonuses", m_nDefReEvalBonuses);
    fx.Field("other_bonuses", m_nDefOtherBonuses);
    fx.Field("flags", m_nDefFlags);
}
