#include "store/sets/DAOMsg.h"

CRecordClass const* CDAOMsg::GetThisClass()
{
    static CRecordClass const record = {"CDAOMsg", nullptr, DataFile::member, "messages"};
    return &record;
}

int CDAOMsg::FindMessages(std::int32_t memberID)
{
    return FindFew("WHERE member_id = ? ORDER BY id", memberID);
}

void CDAOMsg::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_MemberID);
    fx.Field("message", m_Message);
}
