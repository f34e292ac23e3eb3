#include "store/fitness/SkinFold.h"

CSkinFold::CSkinFold(CBodyComp::sex const& sex, int const& age, double const& /*weight*/,
    double const& /*height*/, double const& thigh, double const& chest, double const& abdomen,
    double const& triceps, double const& suprailiac, double const& midaxillary,
    double const& subscapular)
    : m_bMale(sex == CBodyComp::sMale)
    , m_dAge(age)
    , m_dSum3(m_bMale ? chest + abdomen + thigh : triceps + suprailiac + thigh)
    , m_dSum4(abdomen + suprailiac + triceps + thigh)
    , m_dSum7(thigh + chest + abdomen + triceps + suprailiac + midaxillary + subscapular)
{
}

CBodyFat CSkinFold::PercentFat(int sites) const
{
    return sites == 4 ? Four() : sites == 7 ? Seven() : Three();
}

CBodyFat CSkinFold::Three() const
{
    double const s = m_dSum3;
    // Men: Jackson & Pollock 1978. Women: Jackson, Pollock & Ward 1980.
    double const density = m_bMale
        ? 1.10938 - 0.0008267 * s + 0.0000016 * s * s - 0.0002574 * m_dAge
        : 1.0994921 - 0.0009929 * s + 0.0000023 * s * s - 0.0001392 * m_dAge;
    return CBodyComp::FromDensity(density,
        m_bMale ? "Jackson and Pollock, three sites" : "Jackson, Pollock and Ward, three sites");
}

CBodyFat CSkinFold::Four() const
{
    double const s = m_dSum4;
    // Jackson & Pollock 1985.
    double const percent = m_bMale ? 0.29288 * s - 0.0005 * s * s + 0.15845 * m_dAge - 5.76377
                                   : 0.29669 * s - 0.00043 * s * s + 0.02963 * m_dAge + 1.4072;
    return {CBodyComp::Limited(percent), 0.0, "Jackson and Pollock, four sites"};
}

CBodyFat CSkinFold::Seven() const
{
    double const s = m_dSum7;
    // Men: Jackson & Pollock 1978. Women: Jackson, Pollock & Ward 1980.
    double const density = m_bMale
        ? 1.112 - 0.00043499 * s + 0.00000055 * s * s - 0.00028826 * m_dAge
        : 1.097 - 0.00046971 * s + 0.00000056 * s * s - 0.00012828 * m_dAge;
    return CBodyComp::FromDensity(density,
        m_bMale ? "Jackson and Pollock, seven sites" : "Jackson, Pollock and Ward, seven sites");
}
