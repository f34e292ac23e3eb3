#include "store/sets/DAOFileSet.h"

#include "store/text/Text.h"
#include "store/text/TextReader.h"

#include <exception>

namespace
{

/// Reads all records of a file of that kind, each once, into the only row of a block, which take
/// may move away. False when a line is not right or there is no record, and when take returns
/// false: the status is then as before.
template <typename Take>
bool ReadRecords(
    CRecordLine const& line, std::istream& stream, char separator, CDbStatus& status, Take&& take)
{
    CTextReader reader(stream, separator);
    CRecordKeys keys;
    CRowBlock block;
    while (reader.Next()) {
        if (reader.Kind() != line.Kind()) {
            reader.RefuseField("is another kind of record than " + std::string(line.Kind()));
            break;
        }
        if (!line.Read(reader, block)) {
            break;
        }
        auto const row = block.Row(0);
        auto const found = keys.Add(line.MemberOf(row), line.TimeOf(row), reader.CheckSum());
        if (found == CRecordKeys::Found::different && !line.HasTime()) {
            reader.RefuseLine("holds a member that an earlier line holds otherwise");
            break;
        }
        if (found != CRecordKeys::Found::same && !take(block)) {
            return false;
        }
    }
    if (reader.Status() && keys.Size() == 0) {
        reader.RefuseLine("there is no record");
    }
    status = reader.Status();
    return status.IsOK();
}

void Assign(DbValue& value, CCell const& cell, CRowView const& row)
{
    switch (cell.type) {
    case CCell::integer:
        value = cell.integerValue;
        break;
    case CCell::real:
        value = cell.realValue;
        break;
    case CCell::null:
        value = std::monostate();
        break;
    default:
        if (auto* const text = std::get_if<std::string>(&value)) {
            *text = row.Text(cell);
        } else {
            value = std::string(row.Text(cell));
        }
        break;
    }
}

CDbStatus NoMemory(std::exception const& error)
{
    return {DbError::failed, std::string("There is not enough memory (") + error.what() + ")."};
}

} // namespace

// ---- writing

bool CDAOFileSet::Save(CText& text)
{
    try {
        auto const row = LineCells(m_lineCells);
        return row && Do(GetLine().Write(text, *row));
    } catch (std::exception const& error) {
        return Do(NoMemory(error));
    }
}

std::optional<CRowView> CDAOFileSet::LineCells(CRowBlock& /*block*/)
{
    return CurrentCells();
}

std::optional<CRowView> CDAOFileSet::JoinedCells(CTableInfo const& joined, CRowBlock& block)
{
    auto* const database = Database();
    auto const key = CurrentKey();
    if (database == nullptr) {
        return std::nullopt;
    }
    if (key && !Do(database->ReadRows(joined, std::span(&*key, 1), block))) {
        return std::nullopt;
    }
    if (!key || !block.IsPresent(0)) {
        Do({DbError::gone, "There is no such record any more."});
        return std::nullopt;
    }
    if (block.Row(0).Cell(joined.columns.size() - 1).integerValue != 1) {
        Do({DbError::failed,
            "A record could not be written: it has more classes or messages than there may be, "
            "and a data file has no place for them."});
        return std::nullopt;
    }
    return block.Row(0);
}

// ---- reading

bool CDAOFileSet::Test(std::istream& stream, char separator) const
{
    try {
        CDbStatus status;
        ReadRecords(GetLine(), stream, separator, status, [](CRowBlock&) { return true; });
        return Do(std::move(status));
    } catch (std::exception const& error) {
        return Do(NoMemory(error));
    }
}

int CDAOFileSet::Restore(
    std::istream& stream, char separator, std::int32_t memberID, bool keepExisting)
{
    m_nStored = 0;
    m_nSkipped = 0;
    bool done = false;
    try {
        done = RestoreAll(stream, separator, memberID, keepExisting);
    } catch (std::exception const& error) {
        Do(NoMemory(error));
    }
    EndRestore();
    if (!done) {
        m_nStored = 0;
        m_nSkipped = 0;
    }
    return m_nStored;
}

bool CDAOFileSet::RestoreAll(
    std::istream& stream, char separator, std::int32_t memberID, bool keepExisting)
{
    auto* const database = Database();
    if (database == nullptr) {
        return false;
    }
    CTransaction transaction(*database);
    if (!Do(transaction.Status())) {
        return false;
    }
    auto const take = [&](CRowBlock& record) {
        if (m_fnGoOn && !m_fnGoOn()) {
            return Do({DbError::stopped, "The restore was stopped."});
        }
        SeeRecord(record.Row(0));
        bool const wanted = memberID == 0 || GetLine().MemberOf(record.Row(0)) == memberID;
        return !wanted || Count(RestoreRecord(record, keepExisting));
    };
    CDbStatus status;
    bool const whole = ReadRecords(GetLine(), stream, separator, status, take);
    if (!status) {
        Do(std::move(status)); // of the file; that of the database stands there already
    }
    return whole && RestoreRest() && Do(transaction.Commit());
}

bool CDAOFileSet::Count(Outcome outcome)
{
    m_nStored += outcome == Outcome::stored ? 1 : 0;
    m_nSkipped += outcome == Outcome::skipped ? 1 : 0;
    return outcome != Outcome::failed;
}

void CDAOFileSet::EndRestore()
{
    m_members = {};
    m_there = {};
}

CDAOFileSet::Outcome CDAOFileSet::RestoreRecord(CRowBlock& record, bool /*keepExisting*/)
{
    auto const row = record.Row(0);
    auto const member = GetLine().MemberOf(row);
    auto const met = m_members.find(member);
    auto const known = met != m_members.end() ? std::optional(met->second) : Meet(member);
    if (!known) {
        return Outcome::failed;
    }
    if (!*known) {
        return Outcome::skipped;
    }
    if (m_there.Has(member, GetLine().TimeOf(row))) {
        return Outcome::kept;
    }
    return AddRecord(row) ? Outcome::stored : Outcome::failed;
}

/// Notes whether a member is there, and the member's records: one look at a member costs less than
/// one at each record. Empty when they cannot be read.
std::optional<bool> CDAOFileSet::Meet(std::int32_t member)
{
    auto const& part = GetLine().Parts().front();
    std::vector<DbValue> const values = {std::int64_t(member)};
    bool const known = Ask("SELECT count(*) FROM members WHERE member_id = ?", values) != 0;
    auto* const database = LastStatus() ? Database() : nullptr;
    CRowBlock times;
    if (database == nullptr
        || !Do(database->Query("SELECT " + part.columns[GetLine().TimeColumn()].name + " FROM "
                + part.table + " WHERE member_id = ?",
            values, times))) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < times.Rows(); ++i) {
        m_there.Add(member, times.Row(i).Cell(0).integerValue, 0);
    }
    m_members.emplace(member, known);
    return known;
}

bool CDAOFileSet::AddRecord(CRowView const& row)
{
    return Run(GetLine().Parts().front().insert, {}, row, GetLine().Cells(row, 0));
}

bool CDAOFileSet::AddPart(CRowView const& row, std::size_t part, DbValue const& link)
{
    return !GetLine().Has(row, part)
        || Run(
            GetLine().Parts()[part].insert, std::span(&link, 1), row, GetLine().Cells(row, part));
}

bool CDAOFileSet::Run(std::string_view sql, std::span<DbValue const> values, CRowView const& row,
    std::span<CCell const> cells)
{
    auto* const database = Database();
    if (database == nullptr) {
        return false;
    }
    m_bound.resize(values.size() + cells.size());
    std::copy(values.begin(), values.end(), m_bound.begin());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        Assign(m_bound[values.size() + i], cells[i], row);
    }
    std::int64_t changed = 0;
    return Do(database->Execute(sql, m_bound, changed));
}
