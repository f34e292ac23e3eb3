#include "store/sets/DAOEvalBodyComp.h"

CRecordClass const* CDAOEvalBodyComp::GetThisClass()
{
    static CRecordClass const record = {"CDAOEvalBodyComp", nullptr, DataFile::member, "skinfolds"};
    return &record;
}

int CDAOEvalBodyComp::FindEvalBodyComp(std::int32_t evalID)
{
    return FindFew("WHERE eval_id = ?", evalID);
}

void CDAOEvalBodyComp::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("eval_id", m_lEvalID);
    fx.Field("percent_fat", m_dPercentFat);
    fx.Field("thigh", m_dThigh);
    fx.Field("chest", m_dChest);
    fx.Field("abdomen", m_dAbdomen);
    fx.Field("triceps", m_dTriceps);
    fx.Field("suprailiac", m_dSuprailiac);
    fx.Field("midaxillary", m_dMidaxillary);
    fx.Field("subscapular", m_dSubscapular);
}
