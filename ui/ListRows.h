#pragma once

#include "store/sets/DAOEFSet.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <span>
#include <utility>

/// The rows of a selection as a list reads them: beside the cursor of the set that found them, into
/// the fields of another set over the same table, which need not be open.
class CListRows
{
public:
    enum class Row
    {
        read,
        gone, ///< another program has deleted it since it was found
        unreadable
    };

    CListRows(CDAOEFSet& found, std::unique_ptr<CDAOEFSet> row)
        : m_found(found)
        , m_pRow(std::move(row))
    {
    }

    CDAOEFSet& Found() const { return m_found; }
    /// The set whose fields hold the row that was read last.
    CDAOEFSet& Fields() const { return *m_pRow; }

    /// Reads the rows at some places, in their order, and calls take for each with its index among
    /// them and what became of it. take ends the reading with false. False when some could not be
    /// read: the status of Found() tells why.
    template <typename Take>
    bool Read(std::span<std::int32_t const> places, Take const& take)
    {
        bool isRead = true;
        for (std::size_t from = 0; from < places.size(); from += CDatabase::kBlockRows) {
            auto const some
                = places.subspan(from, std::min(CDatabase::kBlockRows, places.size() - from));
            bool const isBlock = m_found.ReadPlaces(some, *m_pRow, m_block);
            isRead = isRead && isBlock;
            for (std::size_t i = 0; i < some.size(); ++i) {
                auto const row = !isBlock  ? Row::unreadable
                    : m_block.IsPresent(i) ? Row::read
                                           : Row::gone;
                if (row == Row::read) {
                    m_pRow->ShowFields(m_block.Row(i));
                }
                if (!take(from + i, row)) {
                    return isRead;
                }
            }
        }
        return isRead;
    }

private:
    CDAOEFSet& m_found;
    std::unique_ptr<CDAOEFSet> m_pRow;
    CRowBlock m_block;
};
