#include "store/sets/DAOProf.h"

#include "store/sets/EnumText.h"

CRecordClass const* CDAOProf::GetThisClass()
{
    static CRecordClass const record = {"CDAOProf", nullptr, DataFile::member, "profiles"};
    return &record;
}

char const* CDAOProf::GetGoalStr(int bit)
{
    return TextAt({"Increase Strength", "Improve Flexibility", "Gain Weight", "Firm Up/Lose Inches",
                      "Lose Weight", "Improve Cardiovascular Fitness",
                      "Reduce Stress/Feel More Relaxed", "Feel Better/Have More Energy"},
        bit);
}

char const* CDAOProf::GetMedHistStr(int bit)
{
    return TextAt({"Disabilities/Limitations", "Current Shoulder Problem", "Shoulder Surgery",
                      "Shoulder Injury", "Current Knee Problem", "Knee Surgery", "Knee Injury",
                      "Current Back Problem", "Back Surgery", "Back Injury", "Back Problems",
                      "Blood Pressure/Heart Medication", "Stroke", "Diagnosed Heart Problem",
                      "Diabetes Type II", "Diabetes Type I", "High Blood Pressure",
                      "History of Family Heart Problems", "Little Exercise in Past 6 Months",
                      "20 or More lbs Overweight", "Smoke or Chew Tobacco"},
        bit);
}

std::int32_t CDAOProf::FindProfile(std::int32_t memberID)
{
    return FindFew("WHERE member_id = ?", memberID);
}

void CDAOProf::ExchangeFields(CFieldExchange& fx)
{
    fx.Field("member_id", m_MemberID);
    fx.Field("address", m_Address);
    fx.Field("city", m_City);
    fx.Field("state", m_State);
    fx.Field("zip", m_Zip);
    fx.Field("phone", m_Phone);
    fx.Field("email", m_Email);
    fx.Field("emergency_name", m_EmergName);
    fx.Field("emergency_phone", m_EmergPhone);
    fx.Field("physician", m_Physician);
    fx.Field("release", m_Release);
    fx.Field("employee", m_Employee);
    fx.Field("birthday", m_Birthday);
    fx.Field("sex", m_Sex);
    fx.Field("goals", m_Goals);
    fx.Field("medical_history", m_MedHist);
}
