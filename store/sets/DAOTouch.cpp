#include "store/sets/DAOTouch.h"

CRecordClass const* CDAOTouch::GetThisClass()
{
    static CRecordClass const record = {"CDAOTouch", nullptr, DataFile::center, "touch"};
    return &record;
}

void CDAOTouch::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("panel_color", m_clrPanel);
    fx.Field("frame_color", m_clrFrame);
}
