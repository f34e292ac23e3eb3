#include "store/HeartRate.h"

#include <algorithm>

CHeartRate::CHeartRate(sex const& memberSex, int const& age, double const& restingHR)
    : m_dMaximum(std::max(0.0, memberSex == sFemale ? 206 - 0.88 * age : 220.0 - age))
    , m_dRest(restingHR)
{
}

double CHeartRate::AtPercent(int percent) const
{
    // Dividing last keeps whole results whole.
    return m_dRest + std::max(0.0, m_dMaximum - m_dRest) * percent / 100;
}
