#pragma once

#include "store/fitness/BodyComp.h"

/// Body fat in percent, 0 to 99, from body measurements.
class CTapeMsr
{
public:
    /// Age in years, weight in pounds, height and circumferences in inches.
    CTapeMsr(CBodyComp::sex const& sex, int const& age, double const& weight, double const& height,
        double const& waist, double const& wrist, double const& hip);

    /// Men, from weight, age, height, waist and wrist: Penrose, Nelson & Fisher 1985, Med Sci
    /// Sports Exerc 17(2):189. Women, from waist, hip, height and age: Tran & Weltman 1989, Med
    /// Sci Sports Exerc 21:101-104, with Siri.
    double PercentFat() const { return Fat().m_dPercent; }
    /// The same with what it rests on.
    CBodyFat Fat() const { return m_bMale ? Men() : Women(); }

private:
    CBodyFat Men() const;
    CBodyFat Women() const;

    bool m_bMale;
    double m_dAge;
    double m_dWeight; ///< kilograms; lengths in centimetres
    double m_dHeight;
    double m_dWaist;
    double m_dWrist;
    double m_dHip;
};
