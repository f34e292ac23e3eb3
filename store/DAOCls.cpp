#include "store/DAOCls.h"

CRecordClass const* CDAOCls::GetThisClass()
{
    static CRecordClass const record = {"CDAOCls", nullptr, DataFile::member, "classes"};
    return &record;
}

int CDAOCls::FindClasses(std::int32_t memberID)
{
    return FindFew("WHERE member_id = ? ORDER BY id", memberID);
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
