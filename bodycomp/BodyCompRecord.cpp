#include "bodycomp/BodyCompRecord.h"

#include "store/fitness/Convert.h"
#include "store/fitness/HydroStat.h"
#include "store/fitness/TapeMsr.h"

double CBodyCompValues::WaterTempF() const
{
    return m_bFahrenheit ? m_dWaterTemp : CConvert::CelsiusToFahrenheit(m_dWaterTemp);
}

double CBodyCompValues::WetPounds() const
{
    return m_bWetPounds ? m_dWetWeight : CConvert::KilogramsToPounds(m_dWetWeight);
}

double CBodyCompValues::TarePounds() const
{
    return m_bTarePounds ? m_dTareWeight : CConvert::KilogramsToPounds(m_dTareWeight);
}

CBodyFat FatByTape(CBodyCompRecord const& record)
{
    auto const& now = record.m_now;
    return CTapeMsr(record.m_member.Sex(), record.m_member.m_nAge, now.m_basics.m_dWeight,
        now.m_basics.m_dHeight, now.m_dWaist, now.m_dWrist, now.m_dHip)
        .Fat();
}

CBodyFat FatByWater(CBodyCompRecord const& record)
{
    auto const& now = record.m_now;
    return CHydroStat(record.m_member.Sex(), record.m_member.m_nAge, now.m_basics.m_dWeight,
        now.m_basics.m_dHeight, now.WaterTempF(), now.WetPounds(), now.TarePounds())
        .Fat(now.m_bBrozek ? CHydroStat::cmBrozek : CHydroStat::cmSiri);
}
