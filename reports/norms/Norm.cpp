#include "reports/norms/Norm.h"

#include <algorithm>
#include <cassert>
#include <cmath>

std::size_t CNorm::CRow::BandOf(double value) const
{
    assert(!std::isnan(value));
    return static_cast<std::size_t>(
        std::upper_bound(m_lstBorders.begin(), m_lstBorders.end(), value) - m_lstBorders.begin());
}

CNorm::CRow const* CNorm::Find(bool isMale, int age) const
{
    auto const found = std::find_if(m_lstRows.begin(), m_lstRows.end(), [&](CRow const& row) {
        return (isMale ? row.m_bMen : row.m_bWomen) && row.m_nFromAge <= age && age <= row.m_nToAge;
    });
    return found == m_lstRows.end() ? nullptr : &*found;
}

std::optional<double> CNorm::OutsideAim(CRow const& row, double value) const
{
    if (!m_nAim) {
        return std::nullopt;
    }
    // The border above is the first value outside.
    constexpr double kJustOutside = 1e-9;
    auto const band = row.BandOf(value);
    return band < *m_nAim ? row.m_lstBorders[*m_nAim - 1] - value
        : band > *m_nAim  ? value - row.m_lstBorders[*m_nAim] + kJustOutside
                          : 0.0;
}

std::string CNorm::ShortSource() const
{
    return m_strAuthors + ", " + std::to_string(m_nYear);
}

std::string CNorm::FullSource() const
{
    return m_strTitle + ": " + ShortSource() + ", " + m_strSourceTitle + ", " + m_strPublisher
        + ". For " + m_strPopulation + ".";
}
