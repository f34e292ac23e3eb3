#include "store/DAOBodyComp.h"

CRecordClass const* CDAOBodyComp::GetThisClass()
{
    static CRecordClass const record
        = {"CDAOBodyComp", nullptr, DataFile::member, "body_compositions"};
    return &record;
}

void CDAOBodyComp::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_lMemberID);
    fx.Field("body_comp_date", m_dtBodyCompDate);
    fx.Field("class_index", m_nClassIndex);
    fx.Field("height", m_dHeight);
    fx.Field("weight", m_dWeight);
    fx.Field("activity_level", m_nActLevel);
    fx.Field("method", m_nMethod);
    fx.Field("percent_fat", m_dPercentFat);
    fx.Field("waist", m_dWaist);
    fx.Field("wrist", m_dWrist);
    fx.Field("hip", m_dHip);
    fx.Field("thigh", m_dThigh);
    fx.Field("chest", m_dChest);
    fx.Field("abdomen", m_dAbdomen);
    fx.Field("triceps", m_dTriceps);
    fx.Field("suprailiac", m_dSuprailiac);
    fx.Field("midaxillary", m_dMidaxillary);
    fx.Field("subscapular", m_dSubscapular);
    fx.Field("water_temperature", m_dWaterTemp);
    fx.Field("wet_weight", m_dWetWeight);
    fx.Field("tare_weight", m_dTareWeight);
    fx.Field("units", m_dwUnits);
}
