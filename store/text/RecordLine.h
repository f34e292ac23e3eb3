#pragma once

#include "platform/db/Database.h"
#include "store/sets/FieldExchange.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class CDAOEFSet;
class CText;
class CTextReader;

/// How a record stands in a line of a data file: the columns of its tables one after the other, as
/// the record sets of these tables list them. The column that ties the row of a further table to
/// the first one is left out, since it repeats what stands there already.
///
/// A row of cells is a line's columns in its order. The cells of a table whose row is missing are
/// null, and none of them otherwise.
class CRecordLine
{
public:
    /// A table of the record.
    struct Part
    {
        std::string table;
        std::string link; ///< the column that ties its row to the first table, empty in that one
        std::vector<CColumn> columns; ///< without it
        /// Follows the same table in the line, which must have a row when this one has: the next of
        /// several rows.
        bool next = false;
        std::string insert; ///< the statement that adds a row: the link, then the columns
    };

    static Part PartOf(CDAOEFSet&& set, std::string_view link = {});

    /// The time is the column of the first table that tells the records of a member apart, empty
    /// where there is one record a member.
    CRecordLine(std::string_view kind, std::string_view time, std::vector<Part> parts);

    std::string_view Kind() const { return m_kind; }
    std::vector<Part> const& Parts() const { return m_parts; }
    std::size_t Columns() const { return m_nColumns; }
    std::size_t TimeColumn() const { return m_nTime; } ///< behind all where there is none
    bool HasTime() const { return m_nTime < m_nColumns; }
    std::span<CCell const> Cells(CRowView const& row, std::size_t part) const;
    /// Is there a row of that table?
    bool Has(CRowView const& row, std::size_t part) const;
    std::int32_t MemberOf(CRowView const& row) const; ///< from 1 to 999999999
    std::int64_t TimeOf(CRowView const& row) const; ///< in seconds, 0 where there is none

    /// Writes a row as a line. Fails, with nothing written, when a cell holds what no line can
    /// carry, and when the stream did not take it: the status tells the field, never what it holds.
    CDbStatus Write(CText& text, CRowView const& row) const;
    /// Reads the fields of the line that the reader stands on into the only row of a block. False
    /// when one is not right: the reader's status tells.
    bool Read(CTextReader& reader, CRowBlock& rows) const;

    /// The rows as one table, for a database to read: FROM takes the parts as p0, p1, ...; the key
    /// and a condition that must be 1 for a line to hold all of a record, which is the last column,
    /// are expressions over them.
    CTableInfo Joined(std::string_view from, std::string_view key, std::string_view complete) const;

private:
    bool ReadPart(CTextReader& reader, Part const& part, CRowBlock& rows, CCell*& cell) const;

    std::string_view m_kind;
    std::vector<Part> m_parts;
    std::vector<std::size_t> m_firsts; ///< the first column of each part
    std::size_t m_nColumns = 0;
    std::size_t m_nMember = 0;
    std::size_t m_nTime = 0; ///< m_nColumns where there is none
};
