#include "store/fitness/TapeMsr.h"

#include "store/fitness/Convert.h"

#include <algorithm>

CTapeMsr::CTapeMsr(CBodyComp::sex const& sex, int const& age, double const& weight,
    double const& height, double const& waist, double const& wrist, double const& hip)
    : m_bMale(sex == CBodyComp::sMale)
    , m_dAge(age)
    , m_dWeight(CConvert::PoundsToKilograms(weight))
    , m_dHeight(CConvert::InchesToCentimetres(height))
    , m_dWaist(CConvert::InchesToCentimetres(waist))
    , m_dWrist(CConvert::InchesToCentimetres(wrist))
    , m_dHip(CConvert::InchesToCentimetres(hip))
{
}

CBodyFat CTapeMsr::Men() const
{
    // Penrose, Nelson & Fisher 1985.
    double const lean = 17.298 + 0.89946 * m_dWeight - 0.2783 * m_dAge + 0.002617 * m_dAge * m_dAge
        + 17.819 * m_dHeight / 100 - 0.6798 * (m_dWaist - m_dWrist);
    return {CBodyComp::Limited(100 * (m_dWeight - lean) / m_dWeight), 0.0,
        "Penrose, Nelson and Fisher"};
}

CBodyFat CTapeMsr::Women() const
{
    // Where the parabola turns: past it a larger waist would lower the result.
    constexpr double kWidestWaist = 115.6448;
    double const waist = std::min(m_dWaist, kWidestWaist);
    // Tran & Weltman 1989.
    double const density = 1.168297 - 0.002824 * waist + 0.0000122098 * waist * waist
        - 0.000733128 * m_dHip + 0.000510477 * m_dHeight - 0.000216161 * m_dAge;
    return CBodyComp::FromDensity(density, "Tran and Weltman");
}
