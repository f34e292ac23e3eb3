#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// One cell of a row as it was read: its storage type and its value.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): of a union one member is initialised
struct CCell
{
    enum Type : std::uint8_t
    {
        null,
        integer,
        real,
        text,
        blob
    };

    Type type = null;
    std::uint32_t size = 0; ///< bytes of a text or blob
    union
    {
        std::int64_t integerValue = 0;
        double realValue;
        std::size_t offset; ///< of a text or blob in the block's bytes
    };
};

/// A row of a block. Valid until the block is read again.
class CRowView
{
public:
    CRowView(CCell const* cells, char const* bytes)
        : m_pCells(cells)
        , m_pBytes(bytes)
    {
    }

    CCell const* Cells() const { return m_pCells; }
    char const* Bytes() const { return m_pBytes; } ///< what the offsets of texts count from
    CCell const& Cell(std::size_t column) const { return m_pCells[column]; }
    std::string_view Text(CCell const& cell) const { return {m_pBytes + cell.offset, cell.size}; }

private:
    CCell const* m_pCells;
    char const* m_pBytes;
};

/// Rows copied out of the database in one go, so that no read stays open while they are used.
/// A row that was not there any more when the block was read is marked absent.
class CRowBlock
{
public:
    /// Makes room for rows of so many columns, all absent; keeps the memory.
    void Reset(std::size_t columns, std::size_t rows)
    {
        m_nColumns = columns;
        m_present.assign(rows, 0);
        m_cells.resize(columns * rows);
        m_bytes.clear();
    }

    std::size_t Columns() const { return m_nColumns; }
    std::size_t Rows() const { return m_present.size(); }
    bool IsPresent(std::size_t row) const { return m_present[row] != 0; }

    CRowView Row(std::size_t row) const
    {
        assert(row < Rows());
        return {m_cells.data() + row * m_nColumns, m_bytes.data()};
    }

    /// For the engine: the cells of a row to fill, which is present from now on.
    CCell* FillRow(std::size_t row)
    {
        m_present[row] = 1;
        return m_cells.data() + row * m_nColumns;
    }

    /// For the engine: one more row at the end.
    CCell* AddRow()
    {
        m_present.push_back(1);
        m_cells.resize(m_cells.size() + m_nColumns);
        return m_cells.data() + m_cells.size() - m_nColumns;
    }

    /// For the engine: keeps the bytes of a text or blob.
    void SetBytes(CCell& cell, std::span<char const> bytes)
    {
        cell.offset = m_bytes.size();
        cell.size = static_cast<std::uint32_t>(bytes.size());
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    }

private:
    std::size_t m_nColumns = 0;
    std::vector<std::uint8_t> m_present;
    std::vector<CCell> m_cells;
    std::vector<char> m_bytes;
};
