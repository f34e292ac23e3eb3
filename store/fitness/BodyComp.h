#pragma once

#include <cstdint>

/// A result of a calculator, and what it rests on.
struct CBodyFat
{
    double m_dPercent = 0.0; ///< 0 to 99
    double m_dDensity = 0.0; ///< of the body, g/mL; 0 where the equation goes without it
    char const* m_source = ""; ///< whose equation it is, "Jackson and Pollock, three sites"
};

/// What the calculators of body fat share.
class CBodyComp
{
public:
    enum sex : std::uint8_t
    {
        sFemale = 0,
        sMale = 1
    };

    /// Percent fat from body density in g/mL: Siri 1956, 495 / D - 450.
    static double Siri(double density);
    /// Percent fat from body density in g/mL: Brozek, Grande, Anderson & Keys 1963,
    /// 457 / D - 414.2.
    static double Brozek(double density);
    /// The result of an equation that gives a density in g/mL, by Siri.
    static CBodyFat FromDensity(double density, char const* source);
    /// What can be shown and stored of a result: 0 when it is no finite number, else 0 to 99.
    static double Limited(double percentFat);
};
