#include "store/sets/DAOBodyComp.h"

#include "store/sets/EnumText.h"

CRecordClass const* CDAOBodyComp::GetThisClass()
{
    static CRecordClass const record
        = {"CDAOBodyComp", nullptr, DataFile::member, "body_compositions"};
    return &record;
}

CRecordLine const& CDAOBodyComp::GetLine() const
{
    static CRecordLine const line("BC1", "body_comp_date", {CRecordLine::PartOf(CDAOBodyComp())});
    return line;
}

int CDAOBodyComp::FindBodyComps(std::int32_t memberID)
{
    return memberID == 0 ? Find("ORDER BY body_comp_date, id")
                         : Find("WHERE member_id = ? ORDER BY body_comp_date, id", memberID);
}

int CDAOBodyComp::FindBodyComps(std::int32_t memberID, std::uint8_t classIndex)
{
    return Find("WHERE member_id = ? AND class_index = ? ORDER BY body_comp_date, id", memberID,
        classIndex);
}

int CDAOBodyComp::FindBodyComps(std::int32_t memberID, CEFOleDateTime const& when)
{
    return FindFew("WHERE member_id = ? AND body_comp_date = ? ORDER BY id", memberID, when);
}

char const* CDAOBodyComp::GetActLevelStr(actlevel level)
{
    return TextAt(
        {"Sedentary", "Lightly Active", "Moderately Active", "Active", "Very Active"}, level);
}

char const* CDAOBodyComp::GetActLevelStrAbbr(actlevel level)
{
    return TextAt({"Sed", "Light", "Mod", "Active", "VeryAct"}, level);
}

char const* CDAOBodyComp::GetMethodStr(method measured)
{
    return TextAt({"Body Measurements", "Skinfolds", "Hydrostatic Weighing", "Other"}, measured);
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
