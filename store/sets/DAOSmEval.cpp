#include "store/sets/DAOSmEval.h"

#include <algorithm>
#include <limits>

CRecordClass const* CDAOSmEval::GetThisClass()
{
    static CRecordClass const record = {"CDAOSmEval", nullptr, DataFile::member, "evaluations"};
    return &record;
}

int CDAOSmEval::FindEvals(id kind, std::int32_t number)
{
    if (kind == idEval) {
        return FindFew("WHERE eval_id = ?", number);
    }
    return number == 0 ? Find("ORDER BY eval_date, id")
                       : Find("WHERE member_id = ? ORDER BY eval_date, id", number);
}

int CDAOSmEval::FindEvals(std::int32_t memberID, std::uint8_t classIndex)
{
    return Find(
        "WHERE member_id = ? AND class_index = ? ORDER BY eval_date, id", memberID, classIndex);
}

int CDAOSmEval::FindEvals(std::int32_t memberID, CEFOleDateTime const& when)
{
    return FindFew("WHERE member_id = ? AND eval_date = ? ORDER BY id", memberID, when);
}

std::int32_t CDAOSmEval::GenerateIDNum(std::int64_t above)
{
    auto const highest = std::max(above, Ask("SELECT max(eval_id) FROM evaluations", {}));
    if (!LastStatus()) {
        return 0;
    }
    if (highest < std::numeric_limits<std::int32_t>::max()) {
        return static_cast<std::int32_t>(highest + 1);
    }
    // Another program used the largest number: take the first free one.
    return static_cast<std::int32_t>(
        Ask("SELECT min(n) FROM (SELECT 1 AS n UNION ALL SELECT eval_id + 1 FROM evaluations "
            "WHERE eval_id BETWEEN 1 AND 2147483646) "
            "WHERE n NOT IN (SELECT eval_id FROM evaluations)",
            {}));
}

void CDAOSmEval::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("eval_id", m_lEvalID);
    fx.Field("member_id", m_lMemberID);
    fx.Field("eval_date", m_dtEvalDate);
    fx.Field("class_index", m_nClassIndex);
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
