#include "store/fitness/HeartRate.h"

#include <algorithm>

namespace
{

double Maximum(bool female, int age)
{
    return female ? 206 - 0.88 * age // Gulati et al. 2010
                  : 220.0 - age; // Fox, Naughton & Haskell 1971
}

} // namespace

CHeartRate::CHeartRate(sex const& memberSex, int const& age, double const& restingHR)
    : m_dMaximum(std::max(0.0, Maximum(memberSex == sFemale, age)))
    , m_dRest(restingHR)
    , m_source(memberSex == sFemale ? "Gulati et al.; Karvonen, 60, 80 and 85 %"
                                    : "Fox, Naughton and Haskell; Karvonen, 60, 80 and 85 %")
{
}

double CHeartRate::AtPercent(int percent) const
{
    // Karvonen, Kentala & Mustala 1957. Dividing last keeps whole results whole.
    return m_dRest + std::max(0.0, m_dMaximum - m_dRest) * percent / 100;
}
