#pragma once

#include "store/fitness/BodyComp.h"

/// Body fat in percent, 0 to 99, from weighing under water.
class CHydroStat
{
public:
    enum calcmethod
    {
        cmSiri = 0,
        cmBrozek = 1
    };

    /// Age in years, weights in pounds, height in inches, water in degrees Fahrenheit. The wet
    /// weight is the scale's reading with chair and belt, the tare weight that of chair and belt
    /// alone; their difference may be negative.
    CHydroStat(CBodyComp::sex const& sex, int const& age, double const& weight,
        double const& height, double const& waterTemp, double const& wetWeight,
        double const& tareWeight);

    /// Density from the volume of displaced water, less residual volume and 0.1 L of gut gas
    /// (Buskirk 1961). 0 when the volume comes out as none.
    double PercentFat(calcmethod const& method) const { return Fat(method).m_dPercent; }
    /// The same with what it rests on.
    CBodyFat Fat(calcmethod method) const;

private:
    double m_dVolume; ///< of the body, litres
    double m_dWeight; ///< kilograms
};
