#include "store/DAOEval.h"

CRecordClass const* CDAOEval::GetThisClass()
{
    static CRecordClass const record
        = {"CDAOEval", nullptr, DataFile::member, "evaluation_view", true};
    return &record;
}

void CDAOEval::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("eval_id", m_lEvalID);
    fx.Field("percent_fat", m_dPercentFat);
    fx.Field("member_id", m_lMemberID);
    fx.Field("eval_date", m_dtEvalDate);
    fx.Field("height", m_dHeight);
    fx.Field("weight", m_dWeight);
    fx.Field("activity_level", m_nActLevel);
    fx.Field("resting_heart_rate", m_nRestingHR);
    fx.Field("systolic", m_nSystolic);
    fx.Field("diastolic", m_nDiastolic);
    fx.Field("trunk_flexion", m_dTrunkFlexion);
    fx.Field("sit_ups", m_nSitUps);
    fx.Field("ab_crunches", m_nAbCrunches);
    fx.Field("step_test", m_nStepTest);
    fx.Field("run_seconds", m_nRunSeconds);
    fx.Field("ergometer", m_nErgometer);
}
