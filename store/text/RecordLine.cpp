#include "store/text/RecordLine.h"

#include "store/sets/DAOSmMem.h"
#include "store/text/Text.h"
#include "store/text/TextReader.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <limits>

namespace
{

constexpr std::string_view kNoNull = "is no null, as those before it";
constexpr std::string_view kNoRowBefore = "belongs to a row whose row before it is missing";

struct Range
{
    std::int64_t least;
    std::int64_t most;

    bool Has(std::int64_t value) const { return value >= least && value <= most; }
};

template <typename T>
constexpr Range RangeOfType()
{
    return {std::numeric_limits<T>::min(), std::numeric_limits<T>::max()};
}

/// The numbers that fit a field, by its type; those of masks as well.
constexpr auto kRanges = [] {
    std::array<Range, static_cast<std::size_t>(ColumnType::date) + 1> ranges = {};
    auto const of
        = [&](ColumnType type) -> Range& { return ranges[static_cast<std::size_t>(type)]; };
    of(ColumnType::flag) = {0, 1};
    of(ColumnType::byte) = RangeOfType<std::uint8_t>();
    of(ColumnType::int16) = RangeOfType<std::int16_t>();
    of(ColumnType::int32) = RangeOfType<std::int32_t>();
    of(ColumnType::memberNumber) = {1, CDAOSmMem::kLargestNumber}; // the tables hold to it
    of(ColumnType::mask) = RangeOfType<std::uint32_t>();
    return ranges;
}();

constexpr Range const& RangeOf(ColumnType type)
{
    return kRanges[static_cast<std::size_t>(type)];
}

CCell::Type StoredAs(ColumnType type)
{
    return type == ColumnType::text ? CCell::text
        : type == ColumnType::real  ? CCell::real
                                    : CCell::integer;
}

// What writes a cell tells what keeps it out of a line, as no table of ours lets it be, in words
// that a sentence can end with, and nothing otherwise.

std::string_view WriteNull(CText& text, CCell const& cell)
{
    text.Null();
    return cell.type == CCell::null ? std::string_view() : kNoNull;
}

std::string_view WriteNumber(CText& text, ColumnType type, std::int64_t value)
{
    if (!RangeOf(type).Has(value)) {
        if (type == ColumnType::memberNumber) {
            return "is out of range";
        }
        text.Unfit(value);
    } else if (type == ColumnType::mask) {
        text.Mask(static_cast<std::uint32_t>(value));
    } else {
        text.Integer(value);
    }
    return {};
}

std::string_view WriteCell(CText& text, ColumnType type, CCell const& cell, CRowView const& row)
{
    if (cell.type != StoredAs(type)) {
        return "is not of its column's type";
    }
    switch (type) {
    case ColumnType::text:
        text.Text(row.Text(cell));
        return {};
    case ColumnType::real:
        text.Real(cell.realValue);
        return {};
    case ColumnType::date:
        text.Date(CEFOleDateTime::FromSeconds(cell.integerValue));
        return {};
    default:
        return WriteNumber(text, type, cell.integerValue);
    }
}

CDbStatus NotWritten(std::string const& reason)
{
    return {DbError::failed, "A record could not be written: " + reason + "."};
}

bool ReadText(CTextReader& reader, CCell& cell, CRowBlock& rows)
{
    std::string_view text;
    if (!reader.Text(text)) {
        return false;
    }
    rows.SetBytes(cell, text);
    cell.type = CCell::text;
    return true;
}

bool ReadCell(CTextReader& reader, ColumnType type, CCell& cell, CRowBlock& rows)
{
    auto const& range = RangeOf(type);
    cell.type = CCell::integer;
    switch (type) {
    case ColumnType::text:
        return ReadText(reader, cell, rows);
    case ColumnType::real:
        cell.type = CCell::real;
        return reader.Real(cell.realValue);
    case ColumnType::date:
        return reader.Date(cell.integerValue);
    case ColumnType::mask:
        return reader.Mask(cell.integerValue);
    case ColumnType::memberNumber:
        return reader.Number(range.least, range.most, cell.integerValue);
    default:
        return reader.Integer(range.least, range.most, cell.integerValue);
    }
}

std::string InsertInto(CRecordLine::Part const& part)
{
    std::string names = part.link;
    std::string values = part.link.empty() ? "" : "?";
    for (auto const& column : part.columns) {
        names += (names.empty() ? "" : ", ") + column.name;
        values += values.empty() ? "?" : ", ?";
    }
    return "INSERT INTO " + part.table + " (" + names + ") VALUES (" + values + ")";
}

} // namespace

CRecordLine::Part CRecordLine::PartOf(CDAOEFSet&& set, std::string_view link)
{
    auto columns = set.Columns();
    std::erase_if(columns, [&](CColumn const& column) { return column.name == link; });
    for (auto& column : columns) {
        bool const isNumber = column.name == "member_id" || column.name == "workout_number";
        column.type = isNumber ? ColumnType::memberNumber : column.type;
    }
    Part part;
    part.table = set.GetClass()->table;
    part.link = link;
    part.columns = std::move(columns);
    part.insert = InsertInto(part);
    return part;
}

CRecordLine::CRecordLine(std::string_view kind, std::string_view time, std::vector<Part> parts)
    : m_kind(kind)
    , m_parts(std::move(parts))
{
    std::string_view before;
    for (auto& part : m_parts) {
        part.next = part.table == before;
        before = part.table;
        m_firsts.push_back(m_nColumns);
        m_nColumns += part.columns.size();
    }
    auto const& columns = m_parts.front().columns;
    auto const placeOf = [&](std::string_view name) {
        auto const found = std::find_if(columns.begin(), columns.end(),
            [&](CColumn const& column) { return column.name == name; });
        return static_cast<std::size_t>(found - columns.begin());
    };
    m_nMember = placeOf("member_id");
    m_nTime = time.empty() ? m_nColumns : placeOf(time);
    assert(m_nMember < columns.size() && (time.empty() || m_nTime < columns.size()));
}

std::span<CCell const> CRecordLine::Cells(CRowView const& row, std::size_t part) const
{
    return {row.Cells() + m_firsts[part], m_parts[part].columns.size()};
}

bool CRecordLine::Has(CRowView const& row, std::size_t part) const
{
    return Cells(row, part).front().type != CCell::null;
}

std::int32_t CRecordLine::MemberOf(CRowView const& row) const
{
    return static_cast<std::int32_t>(row.Cell(m_nMember).integerValue);
}

std::int64_t CRecordLine::TimeOf(CRowView const& row) const
{
    return HasTime() ? row.Cell(m_nTime).integerValue : 0;
}

CDbStatus CRecordLine::Write(CText& text, CRowView const& row) const
{
    text.Begin(m_kind);
    auto const* cell = row.Cells();
    bool hadRow = true;
    for (auto const& part : m_parts) {
        bool const hasRow = cell->type != CCell::null || &part == &m_parts.front();
        bool const follows = !part.next || !hasRow || hadRow;
        for (auto const& column : part.columns) {
            auto const fault = !follows ? kNoRowBefore
                : hasRow                ? WriteCell(text, column.type, *cell, row)
                                        : WriteNull(text, *cell);
            if (!fault.empty()) {
                auto const field = std::to_string(cell - row.Cells() + 2); // the kind is field 1
                return NotWritten("field " + field + " of " + std::string(m_kind) + ", "
                    + column.name + " in " + part.table + ", " + std::string(fault));
            }
            ++cell;
        }
        hadRow = hasRow;
    }
    if (text.End()) {
        return {};
    }
    return NotWritten(text.IsTooLong()
            ? "it is longer than a line of " + std::string(m_kind) + " can be"
            : "the data file cannot be written or has no room for it");
}

bool CRecordLine::Read(CTextReader& reader, CRowBlock& rows) const
{
    rows.Reset(m_nColumns, 0);
    auto* cell = rows.AddRow();
    bool hadRow = true;
    for (auto const& part : m_parts) {
        auto const* const first = cell;
        if (!ReadPart(reader, part, rows, cell)) {
            return false;
        }
        bool const hasRow = first->type != CCell::null;
        if (part.next && hasRow && !hadRow) {
            return reader.RefuseField(kNoRowBefore);
        }
        hadRow = hasRow;
    }
    return reader.IsAtEnd();
}

bool CRecordLine::ReadPart(
    CTextReader& reader, Part const& part, CRowBlock& rows, CCell*& cell) const
{
    bool const missing = &part != &m_parts.front() && reader.TakeNull();
    bool first = true;
    for (auto const& column : part.columns) {
        if (!missing) {
            if (!ReadCell(reader, column.type, *cell, rows)) {
                return false;
            }
        } else {
            cell->type = CCell::null;
            if (!first && !reader.TakeNull()) {
                return reader.RefuseNext(kNoNull);
            }
        }
        first = false;
        ++cell;
    }
    return true;
}

CTableInfo CRecordLine::Joined(
    std::string_view from, std::string_view key, std::string_view complete) const
{
    CTableInfo table;
    std::string select = "(SELECT " + std::string(key) + " AS id";
    for (std::size_t part = 0; part < m_parts.size(); ++part) {
        for (auto const& column : m_parts[part].columns) {
            auto const name = "c" + std::to_string(table.columns.size());
            select += ", p" + std::to_string(part) + "." + column.name + " AS " + name;
            table.columns.push_back(name);
        }
    }
    select += ", " + std::string(complete) + " AS complete FROM " + std::string(from) + ")";
    table.columns.emplace_back("complete");
    table.name = std::move(select);
    return table;
}
