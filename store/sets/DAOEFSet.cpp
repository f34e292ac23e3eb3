#include "store/sets/DAOEFSet.h"

#include "platform/db/RoughTime.h"
#include "store/sets/KeyPlaces.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <limits>
#include <map>
#include <utility>

namespace
{

constexpr std::size_t kFirstBlock = 16;
constexpr std::size_t kFewRows = 512; // that are worth reading at once
// A walk that takes its time between rows must not act on what another program changed long ago.
constexpr auto kBlockAge = std::chrono::seconds(1);

int ToCount(std::size_t count)
{
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
    return static_cast<int>(std::min(count, kMost));
}

} // namespace

bool CDAOEFSet::IsKindOf(CRecordClass const* kind) const
{
    for (auto const* mine = GetClass(); mine != nullptr; mine = mine->base) {
        if (mine == kind) {
            return true;
        }
    }
    return false;
}

int CDAOEFSet::OpenSet(bool rows)
{
    if (rows) {
        return Find("ORDER BY id");
    }
    Close();
    m_strClause = "WHERE 0";
    m_values.clear();
    m_extent = Extent::few;
    m_bOpen = Database() != nullptr;
    return 0;
}

bool CDAOEFSet::Op(op operation)
{
    switch (operation) {
    case opMoveNext:
        return GoTo(m_nPosition + 1, false, kFirstBlock);
    case opMoveFirst:
        return GoTo(0, true, kFirstBlock);
    case opAddNew:
        return BeginAdding();
    case opEdit:
        return BeginChange();
    case opUpdate:
        return Update();
    case opDelete:
        return CDAOEFSet::DelCurrent();
    case opRequery:
        if (m_strClause.empty()) {
            return false;
        }
        RunSelection();
        return m_status.IsOK();
    case opClose:
        Close();
        return true;
    }
    return false;
}

bool CDAOEFSet::MoveSet(std::int32_t const& position)
{
    // Who asks for one row seldom wants those behind it.
    return position >= 0 && GoTo(static_cast<std::size_t>(position), true, 1);
}

int CDAOEFSet::CountSet()
{
    GoTo(0, true, kFirstBlock);
    return HasSelection() ? ToCount(m_keys.Size()) : 0;
}

bool CDAOEFSet::DelCurrent()
{
    auto* const database = Database();
    if (database == nullptr || !m_bOnRow || !HasSelection() || GetClass()->readOnly) {
        return false;
    }
    std::int64_t removed = 0;
    m_status = database->Remove(Table(), m_keys[m_nPosition], removed);
    if (m_status) {
        m_bOnRow = false; // it keeps its turn, and its values, until the next move
    }
    return m_status && removed == 1;
}

int CDAOEFSet::DelAll()
{
    auto* const database = Database();
    if (database == nullptr || !HasSelection() || GetClass()->readOnly) {
        return 0;
    }
    std::int64_t removed = 0;
    m_status = database->Remove(Table(), m_keys, removed);
    m_bOnRow = m_bOnRow && !m_status;
    return ToCount(static_cast<std::size_t>(removed));
}

bool CDAOEFSet::DelTable(std::int64_t rows)
{
    auto* const database = GetClass()->readOnly ? nullptr : Database();
    bool done = false;
    if (database != nullptr) {
        m_status = database->RemoveAll(Table(), rows, done);
    }
    m_bOnRow = m_bOnRow && !done;
    return done;
}

bool CDAOEFSet::Del(std::int32_t const& position)
{
    return MoveSet(position) && DelCurrent();
}

int CDAOEFSet::IsEOF() const
{
    return !m_bOpen || m_nPosition >= m_keys.Size() ? 1 : 0;
}

std::string CDAOEFSet::GetDefaultDBName() const
{
    return CDatabaseSession::Get().PathOf(GetClass()->file);
}

CDatabase* CDAOEFSet::Database()
{
    m_status = {};
    return m_pDatabase != nullptr ? m_pDatabase
                                  : CDatabaseSession::Get().Open(GetClass()->file, m_status);
}

std::int64_t CDAOEFSet::Ask(std::string_view sql, std::vector<DbValue> const& values)
{
    auto* const database = Database();
    if (database == nullptr) {
        return 0;
    }
    CRowBlock rows;
    m_status = database->Query(sql, values, rows);
    if (!m_status || rows.Rows() == 0) {
        return 0;
    }
    auto const& cell = rows.Row(0).Cell(0);
    return cell.type == CCell::integer ? cell.integerValue : 0;
}

std::vector<CColumn> CDAOEFSet::Columns()
{
    std::vector<CColumn> columns;
    auto fx = CFieldExchange::Describe(columns);
    ExchangeFields(fx);
    return columns;
}

CTableInfo const& CDAOEFSet::Table()
{
    if (m_pTable == nullptr) {
        static std::map<CRecordClass const*, CTableInfo> tables;
        auto& table = tables[GetClass()];
        if (table.columns.empty()) {
            table.name = GetClass()->table;
            for (auto& column : Columns()) {
                table.columns.push_back(std::move(column.name));
            }
        }
        m_pTable = &table;
    }
    return *m_pTable;
}

// ---- the selection

int CDAOEFSet::Select(std::string_view clause, std::vector<DbValue> values, Extent extent)
{
    Close();
    m_strClause = clause;
    m_values = std::move(values);
    m_extent = extent;
    return RunSelection();
}

int CDAOEFSet::RunSelection()
{
    m_edit = Edit::none;
    m_bOnRow = false;
    m_bOpen = false;
    m_keys.Clear();
    m_block.Reset(0, 0);
    auto* const database = Database();
    if (database == nullptr) {
        return 0;
    }
    m_status = ReadSelection(*database);
    if (!m_status) {
        m_keys.Clear();
        return 0;
    }
    m_bOpen = true;
    m_nGeneration = CDatabaseSession::Get().Generation();
    m_nBlockFirst = 0;
    m_nPosition = 0;
    m_blockTime = RoughTime();
    m_nBlockMoment = database->Moment();
    if (m_keys.Size() > 0) {
        // A first row that cannot be read any more keeps its turn like every other.
        GoTo(0, m_block.Rows() == 0, kFirstBlock);
    }
    return ToCount(m_keys.Size());
}

/// Reads the keys, and the rows with them where they are few.
CDbStatus CDAOEFSet::ReadSelection(CDatabase& database)
{
    if (m_extent == Extent::few) {
        return database.FindRows(Table(), {m_strClause, m_values}, m_keys, m_block);
    }
    if (m_extent == Extent::mostlyFew) {
        auto const limited = m_strClause + " LIMIT " + std::to_string(kFewRows + 1);
        auto status = database.FindRows(Table(), {limited, m_values}, m_keys, m_block);
        if (!status || m_keys.Size() <= kFewRows) {
            return status;
        }
        m_block.Reset(0, 0);
    }
    return database.FindKeys(Table(), {m_strClause, m_values}, m_keys);
}

void CDAOEFSet::Close()
{
    m_edit = Edit::none;
    m_bOnRow = false;
    m_bOpen = false;
    m_strClause.clear();
    m_keys.Clear();
    m_block.Reset(0, 0);
    m_nPosition = 0;
}

bool CDAOEFSet::HasSelection() const
{
    return m_bOpen
        && (m_pDatabase != nullptr || m_nGeneration == CDatabaseSession::Get().Generation());
}

// ---- moving

/// What has to be read is read with so many rows from there on, in sequence with more and more.
bool CDAOEFSet::GoTo(std::size_t position, bool afresh, std::size_t most)
{
    m_edit = Edit::none;
    if (!m_bOpen || position >= m_keys.Size()) {
        m_nPosition = std::min(position, m_keys.Size());
        m_bOnRow = false;
        return false;
    }
    m_nPosition = position;
    if (!afresh && IsInFreshBlock(position)) {
        return ShowRow(position);
    }
    bool const inSequence = !afresh && position == m_nBlockFirst + m_block.Rows();
    m_nNextBlock
        = inSequence ? std::clamp(m_nNextBlock * 2, kFirstBlock, CDatabase::kBlockRows) : most;
    return ReadBlock(position, m_nNextBlock) ? ShowRow(position) : ShowNoRow();
}

bool CDAOEFSet::IsInFreshBlock(std::size_t position) const
{
    return position >= m_nBlockFirst && position - m_nBlockFirst < m_block.Rows()
        && RoughTime() - m_blockTime < kBlockAge;
}

bool CDAOEFSet::ReadBlock(std::size_t position, std::size_t most)
{
    auto* const database = Database();
    if (database == nullptr || !HasSelection()) {
        return false;
    }
    std::array<std::int64_t, CDatabase::kBlockRows> keys = {};
    auto const count = std::min(most, m_keys.Size() - position);
    for (std::size_t i = 0; i < count; ++i) {
        keys[i] = m_keys[position + i];
    }
    m_status = database->ReadRows(Table(), std::span(keys).first(count), m_block);
    m_nBlockFirst = position;
    m_blockTime = RoughTime();
    m_nBlockMoment = database->Moment();
    if (!m_status) {
        m_block.Reset(0, 0);
        return false;
    }
    return true;
}

bool CDAOEFSet::ShowRow(std::size_t position)
{
    auto const row = position - m_nBlockFirst;
    if (!m_block.IsPresent(row)) {
        return ShowNoRow();
    }
    ShowFields(m_block.Row(row));
    m_bOnRow = true;
    return true;
}

/// The turn of a row that is not there any more: nobody shall take the row before it for it.
bool CDAOEFSet::ShowNoRow()
{
    ClearFields();
    m_bOnRow = false;
    return false;
}

std::optional<std::int64_t> CDAOEFSet::CurrentKey() const
{
    return m_bOnRow && HasSelection() ? std::optional(m_keys[m_nPosition]) : std::nullopt;
}

std::optional<CRowView> CDAOEFSet::CurrentCells()
{
    m_status = {};
    bool const there = CurrentKey() && (IsInFreshBlock(m_nPosition) || ReadBlock(m_nPosition, 1));
    if (there && m_block.IsPresent(m_nPosition - m_nBlockFirst)) {
        return m_block.Row(m_nPosition - m_nBlockFirst);
    }
    if (m_status) {
        m_status = {DbError::gone, "There is no such record any more."};
    }
    return std::nullopt;
}

void CDAOEFSet::ClearFields()
{
    auto fx = CFieldExchange::Clear();
    ExchangeFields(fx);
}

// ---- lists

std::int64_t CDAOEFSet::KeyAt(std::int32_t place) const
{
    auto const at = static_cast<std::size_t>(place);
    return place >= 0 && HasSelection() && at < m_keys.Size() ? m_keys[at] : 0;
}

std::int32_t CDAOEFSet::PlaceOf(std::int64_t key) const
{
    std::int32_t place = ToCount(HasSelection() ? m_keys.Size() : 0) - 1;
    while (place >= 0 && m_keys[static_cast<std::size_t>(place)] != key) {
        --place;
    }
    return place;
}

std::vector<std::int32_t> CDAOEFSet::PlacesByKey() const
{
    return HasSelection() ? CKeyPlaces(m_keys).ByKey() : std::vector<std::int32_t>();
}

bool CDAOEFSet::ReadPlaces(std::span<std::int32_t const> places, CDAOEFSet& as, CRowBlock& rows)
{
    assert(as.GetClass()->table == GetClass()->table);
    // By the keys of one table the rows of another would be somebody else's.
    bool const isSame = as.GetClass()->table == GetClass()->table;
    auto* const database = HasSelection() && isSame ? Database() : nullptr;
    std::array<std::int64_t, CDatabase::kBlockRows> keys = {};
    assert(places.size() <= keys.size());
    std::ranges::transform(places, keys.begin(), [this](auto place) { return KeyAt(place); });
    return database != nullptr
        && Do(database->ReadRows(as.Table(), std::span(keys).first(places.size()), rows));
}

void CDAOEFSet::ShowFields(CRowView const& row)
{
    auto fx = CFieldExchange::Load(row);
    ExchangeFields(fx);
}

bool CDAOEFSet::Sort(CSortKey const& by, bool down, std::vector<std::int32_t>& places)
{
    constexpr std::string_view kOrder = "ORDER BY ";
    auto* const database = HasSelection() ? Database() : nullptr;
    auto const order = m_strClause.rfind(kOrder);
    if (database == nullptr || order == std::string::npos) {
        return false;
    }
    auto clause = m_strClause;
    std::string terms;
    for (auto const term : by.terms) {
        terms += term.empty() ? "" : std::string(term) + (down ? " DESC, " : ", ");
    }
    CKeyset sorted;
    clause.insert(order + kOrder.size(), terms).insert(0, by.join);
    if (!Do(database->FindKeys(Table(), {clause, m_values}, sorted))) {
        return false;
    }
    CKeyPlaces const known(m_keys);
    std::vector<bool> isThere(m_keys.Size());
    places.clear();
    places.reserve(m_keys.Size());
    for (std::size_t i = 0; i < sorted.Size(); ++i) {
        // Those that came meanwhile are not in the selection.
        if (auto const place = known.Of(sorted[i]); place >= 0) {
            places.push_back(place);
            isThere[static_cast<std::size_t>(place)] = true;
        }
    }
    for (std::size_t i = 0; i < isThere.size(); ++i) {
        if (!isThere[i]) {
            places.push_back(static_cast<std::int32_t>(i));
        }
    }
    return true;
}

// ---- writing

bool CDAOEFSet::BeginAdding()
{
    if (!m_bOpen || GetClass()->readOnly) {
        return false;
    }
    ClearFields();
    m_edit = Edit::adding;
    return true;
}

bool CDAOEFSet::BeginChange()
{
    if (!m_bOnRow || GetClass()->readOnly) {
        return false;
    }
    auto* const database = Database();
    bool const isStored = database != nullptr && HasSelection() && m_nBlockMoment != 0
        && m_nBlockMoment == database->Moment() && IsInFreshBlock(m_nPosition);
    if (!isStored && !ReadBlock(m_nPosition, 1)) {
        return false; // the cursor stays where it is, so that it can be tried again
    }
    if (!ShowRow(m_nPosition)) {
        return false;
    }
    m_before = FieldValues();
    m_edit = Edit::changing;
    return true;
}

bool CDAOEFSet::Update()
{
    auto* const database = m_edit == Edit::none ? nullptr : Database();
    if (database == nullptr) {
        return false;
    }
    // A failed write stays begun, so that it can be tried again.
    if (m_edit == Edit::adding) {
        std::int64_t key = 0;
        m_status = database->Insert(Table(), FieldValues(), key);
    } else {
        m_status = CDbStatus();
        if (!HasSelection() || !UpdateChanged(*database)) {
            return false;
        }
        // What was read before the change is not the row any more.
        m_block.Reset(0, 0);
        m_nBlockFirst = m_nPosition + 1;
    }
    if (m_status) {
        m_edit = Edit::none;
    }
    return m_status.IsOK();
}

bool CDAOEFSet::UpdateChanged(CDatabase& database)
{
    auto const values = FieldValues();
    std::vector<bool> changed(values.size());
    bool any = false;
    for (std::size_t i = 0; i < values.size(); ++i) {
        changed[i] = values[i] != m_before[i];
        any = any || changed[i];
    }
    if (any) {
        m_status = database.Update(Table(), m_keys[m_nPosition], values, changed);
    }
    return m_status.IsOK();
}

std::vector<DbValue> CDAOEFSet::FieldValues()
{
    std::vector<DbValue> values;
    values.reserve(Table().columns.size());
    auto fx = CFieldExchange::Store(values);
    ExchangeFields(fx);
    return values;
}
