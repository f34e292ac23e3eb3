#pragma once

#include "platform/db/Status.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A published norm for one test or measurement: for each sex and age how the scale of the values
/// is cut into bands.
class CNorm
{
public:
    enum class Better : std::uint8_t
    {
        neither, ///< what is good lies in between, or is not known
        higher,
        lower
    };
    struct CBand
    {
        std::string m_strName; ///< "above average"
        std::string m_strRemark; ///< what a trainer can say to it
    };
    /// The people who share one row of the table.
    struct CRow
    {
        bool m_bMen = false;
        bool m_bWomen = false;
        int m_nFromAge = 0; ///< whole years, both included
        int m_nToAge = 0;
        /// Where each band but the first begins: a value on a border belongs to the band that
        /// begins there, one just below it to the band before. So there are no gaps, whatever the
        /// decimals of a value.
        std::vector<double> m_lstBorders;

        /// The place of the band of a value, from 0 on; no number of the value is no place.
        std::size_t BandOf(double value) const;
    };

    /// The row for somebody; null when the norm has none for that sex and age.
    CRow const* Find(bool isMale, int age) const;
    /// How far a value lies outside the band to aim at, 0 within it; empty when there is none.
    std::optional<double> OutsideAim(CRow const& row, double value) const;
    /// "Golding, Myers and Sinning (YMCA of the USA), 1986".
    std::string ShortSource() const;
    /// That with title, publisher and for whom the norm holds.
    std::string FullSource() const;

    std::string m_strTest;
    std::string m_strTitle; ///< "Sit-ups"
    std::string m_strUnit; ///< "in a minute"; empty for none
    Better m_better = Better::neither;
    std::optional<std::size_t> m_nAim = {}; ///< the band that is good, where "neither" is better
    bool m_bWhole = false; ///< values are counts
    std::string m_strNone; ///< why there is no norm at all; the rest is empty then
    double m_dScaleFrom = 0.0; ///< what a picture of it shows; values can lie outside
    double m_dScaleTo = 0.0;
    std::string m_strAuthors;
    int m_nYear = 0;
    std::string m_strSourceTitle;
    std::string m_strPublisher;
    std::string m_strPopulation;
    std::vector<CBand> m_lstBands; ///< in the order of the scale
    std::vector<CRow> m_lstRows;
};

/// Reads the text of a norm file (docs/norms.md). The first thing that is wrong with it, with its
/// line, is the status; the norm is only whole when there is none.
CDbStatus ParseNorm(std::string_view text, CNorm& norm);
