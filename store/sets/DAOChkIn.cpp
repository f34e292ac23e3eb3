#include "store/sets/DAOChkIn.h"

CRecordClass const* CDAOChkIn::GetThisClass()
{
    static CRecordClass const record = {"CDAOChkIn", nullptr, DataFile::checkIn, "check_ins"};
    return &record;
}

int CDAOChkIn::FindChkIns()
{
    return Select("ORDER BY check_in, id", {}, Extent::mostlyFew);
}

void CDAOChkIn::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_lMemberID);
    fx.Field("workout_number", m_lWorkoutNo);
    fx.Field("first_name", m_strFirstName);
    fx.Field("last_name", m_strLastName);
    fx.Field("check_in", m_dtCheckIn);
}
