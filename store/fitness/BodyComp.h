#pragma once

#include <cstdint>

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
    /// What can be shown and stored of a result: 0 when it is no finite number, else 0 to 99.
    static double Limited(double percentFat);
};
