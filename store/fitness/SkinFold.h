#pragma once

#include "store/fitness/BodyComp.h"

/// Body fat in percent, 0 to 99, from skinfolds in millimetres by the generalised equations of
/// Jackson and Pollock. A site of 0 enters as 0.
class CSkinFold
{
public:
    /// Age in years, weight in pounds, height in inches (neither enters an equation).
    CSkinFold(CBodyComp::sex const& sex, int const& age, double const& weight, double const& height,
        double const& thigh, double const& chest, double const& abdomen, double const& triceps,
        double const& suprailiac, double const& midaxillary, double const& subscapular);

    /// With 3, 4 or 7 sites; any other number counts as 3.
    CBodyFat PercentFat(int sites) const;

    /// Men: chest, abdomen, thigh. Women: triceps, suprailiac, thigh. Jackson & Pollock 1978,
    /// Br J Nutr 40:497-504; Jackson, Pollock & Ward 1980, Med Sci Sports Exerc 12:175-181; both
    /// with Siri.
    double PercentFat_3() const { return PercentFat(3).m_dPercent; }
    /// Abdomen, suprailiac, triceps, thigh. Jackson & Pollock 1985, Phys Sportsmed 13(5):76-90.
    double PercentFat_4() const { return PercentFat(4).m_dPercent; }
    /// All seven; sources as for three sites.
    double PercentFat_7() const { return PercentFat(7).m_dPercent; }

private:
    CBodyFat Three() const;
    CBodyFat Four() const;
    CBodyFat Seven() const;

    bool m_bMale;
    double m_dAge;
    double m_dSum3;
    double m_dSum4;
    double m_dSum7;
};
