#pragma once

#include "store/sets/SortKey.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <string>

/// One column of a list, and of what is printed of the list.
struct CListColumn
{
    /// Writes, from the fields of the row that is read, what stands in a cell.
    using CText = std::function<std::string()>;

    std::uint32_t m_nBit; ///< of the words that choose columns; several may share one
    QString m_strHeading; ///< empty for a column that is only printed
    int m_nWidth; ///< in pixels, where an average letter has 6
    CText m_fnText;
    CSortKey m_sort = {};
    QString m_strPrinted; ///< heading on paper
    int m_nPrinted = 0; ///< width on paper in letters; 0 for the rest of the line
    CText m_fnPrinted = {}; ///< when it is not the same as on the screen

    std::string PrintedText() const { return m_fnPrinted ? m_fnPrinted() : m_fnText(); }
};
