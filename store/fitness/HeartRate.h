#pragma once

#include <cstdint>

/// The training range of heart rates, in beats per minute, from sex, age in years and resting heart
/// rate. Rest <= LowerLevel <= UpperLevel <= SafeMaximum whatever goes in. The program shows the
/// results truncated.
class CHeartRate
{
public:
    enum sex : std::uint8_t
    {
        sFemale = 0,
        sMale = 1
    }; ///< anything but 0 is male

    CHeartRate(sex const& memberSex, int const& age, double const& restingHR);

    /// Men: 220 - age (Fox, Naughton & Haskell 1971, Ann Clin Res 3:404-432). Women:
    /// 206 - 0.88 age (Gulati et al. 2010, Circulation 122:130-137). Never below 0.
    double PredictedMaximum() const { return m_dMaximum; }
    /// Whose equation that is, and whose the levels'.
    char const* Source() const { return m_source; }
    /// Rest plus a share of the reserve between rest and maximum (Karvonen, Kentala & Mustala 1957,
    /// Ann Med Exp Biol Fenn 35:307-315): 85, 60 and 80 %. A rest above the maximum leaves no
    /// reserve.
    double SafeMaximum() const { return AtPercent(85); }
    double LowerLevel() const { return AtPercent(60); }
    double UpperLevel() const { return AtPercent(80); }

private:
    double AtPercent(int percent) const;

    double m_dMaximum;
    double m_dRest;
    char const* m_source;
};
