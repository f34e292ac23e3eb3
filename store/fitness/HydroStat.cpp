#include "store/fitness/HydroStat.h"

#include "store/fitness/Convert.h"

#include <algorithm>

namespace
{

constexpr double kGutGas = 0.1; // litres: Buskirk 1961

/// Density of water in g/mL at degrees Celsius, 0 to 150: Kell 1975, J Chem Eng Data 20:97-105.
double WaterDensity(double t)
{
    double const mass = 999.83952
        + t
            * (16.945176
                + t
                    * (-7.9870401e-3
                        + t * (-46.170461e-6 + t * (105.56302e-9 - t * 280.54253e-12))));
    return mass / (1 + 16.879850e-3 * t) / 1000;
}

/// Litres of air left in the lungs, from age in years and height in centimetres: Goldman &
/// Becklake 1959, Am Rev Tuberc Pulm Dis 79:457-467. None for the very small, where the line would
/// cross zero.
double ResidualVolume(bool male, double age, double height)
{
    double const volume
        = male ? 0.017 * age + 0.027 * height - 3.447 : 0.009 * age + 0.032 * height - 3.900;
    return std::max(0.0, volume);
}

} // namespace

CHydroStat::CHydroStat(CBodyComp::sex const& sex, int const& age, double const& weight,
    double const& height, double const& waterTemp, double const& wetWeight,
    double const& tareWeight)
    : m_dWeight(CConvert::PoundsToKilograms(weight))
{
    double const inWater = CConvert::PoundsToKilograms(wetWeight - tareWeight);
    double const displaced
        = (m_dWeight - inWater) / WaterDensity(CConvert::FahrenheitToCelsius(waterTemp));
    double const residual
        = ResidualVolume(sex == CBodyComp::sMale, age, CConvert::InchesToCentimetres(height));
    m_dVolume = displaced - residual - kGutGas;
}

CBodyFat CHydroStat::Fat(calcmethod method) const
{
    if (!(m_dVolume > 0)) {
        return {};
    }
    double const density = m_dWeight / m_dVolume;
    return method == cmBrozek
        ? CBodyFat{CBodyComp::Limited(CBodyComp::Brozek(density)), density, "Brozek"}
        : CBodyComp::FromDensity(density, "Siri");
}
