#pragma once

#include "platform/db/Database.h"
#include "store/sets/DatabaseSession.h"
#include "store/sets/FieldExchange.h"
#include "store/sets/SortKey.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What kind of record set an object is, and where its rows are.
struct CRecordClass
{
    std::string_view name; ///< "CDAOWk"
    CRecordClass const* base; ///< the record set it derives from, null for most
    DataFile file;
    std::string_view table; ///< or the view of a record set that is only read
    bool readOnly = false;
};

/// The base of all record sets: a typed cursor over one table. The fields of the current row are
/// public members of the derived class; they keep the values of the last row read until the next
/// move or find, also after opClose and after a find that selected nothing.
///
/// A find reads the keys of the selected rows, in order; their number is its result. Rows are read
/// in blocks as the cursor moves, so that no read stays open. A row that another program deleted
/// meanwhile keeps its turn: moving to it gives cleared fields and false.
///
/// Nothing here throws. A failure shows as 0 or false, and LastStatus() tells what it was.
class CDAOEFSet
{
public:
    enum op
    {
        opAddNew = 0, ///< begins a new row with cleared fields
        opEdit = 1, ///< begins a change of the current row as it is stored now
        opUpdate = 2, ///< writes the row begun; of a changed row only what differs
        opDelete = 3, ///< deletes the current row
        opMoveFirst = 4,
        opMoveNext = 5,
        opRequery = 8, ///< runs the selection again
        opClose = 9,
    };

    /// Null, as everywhere in the program: the centre's own file, by the session.
    explicit CDAOEFSet(CDatabase* database = nullptr)
        : m_pDatabase(database)
    {
    }
    virtual ~CDAOEFSet() = default;
    CDAOEFSet(CDAOEFSet const&) = delete;
    CDAOEFSet& operator=(CDAOEFSet const&) = delete;

    virtual CRecordClass const* GetClass() const = 0;
    /// True for the class itself and for those it derives from.
    bool IsKindOf(CRecordClass const* kind) const;

    /// Selects all rows in the table's order and returns their number (true), or opens the set for
    /// adding rows and returns 0 (false).
    int OpenSet(bool rows);
    /// Returns whether it did what it was asked; for a move, whether there is a row now.
    bool Op(op operation);
    /// Goes to a row by its place in the selection, from 0 on; reads it afresh. False when there is
    /// no such row, or it was deleted meanwhile.
    bool MoveSet(std::int32_t const& position);
    /// The number of rows selected, deleted ones included until the next opRequery; goes to the
    /// first row.
    int CountSet();
    /// Deletes the current row, and by the tables' rules what depends on it.
    virtual bool DelCurrent();
    /// Deletes all rows of the selection in one transaction; how many there still were, or 0.
    virtual int DelAll();
    /// Deletes all rows of the table, selected or not, if there are just so many, at a small part
    /// of what single rows cost. False when there are not, or when it failed: in a transaction,
    /// which then is to be given up. A set that is only read deletes none.
    bool DelTable(std::int64_t rows);
    /// Deletes a row by its place in the selection.
    virtual bool Del(std::int32_t const& position);
    /// Not zero when the cursor is on no row: closed, empty, or moved past the last.
    virtual int IsEOF() const;
    /// The full path of the file that holds the table.
    virtual std::string GetDefaultDBName() const;

    // What lists show of the selection, beside the cursor, which stays where it is with its fields.
    // Places count from 0 on in the order of the find.

    /// The key of the row of a place, 0 when there is no such place.
    std::int64_t KeyAt(std::int32_t place) const;
    /// The place of the row of a key, -1 when it is not selected. Looks through the keys.
    std::int32_t PlaceOf(std::int64_t key) const;
    /// All places in the order of the keys, which is the one in which many rows are read fastest.
    std::vector<std::int32_t> PlacesByKey() const;
    /// Reads the rows of some places, at most CDatabase::kBlockRows, as they are stored now, with
    /// the columns of another set over the same table. False when they could not be read, or the
    /// selection is closed.
    bool ReadPlaces(std::span<std::int32_t const> places, CDAOEFSet& as, CRowBlock& rows);
    /// Shows in the fields a row that another set has read with this one's columns.
    void ShowFields(CRowView const& row);
    /// All places in another order, rows that are equal in it as they were found. Rows that another
    /// program deleted come last. Costs one ordered pass over the selection's keys.
    bool Sort(CSortKey const& by, bool down, std::vector<std::int32_t>& places);

    /// The key of the current row, empty while there is none: the row's own for good, since keys
    /// are never given out twice.
    std::optional<std::int64_t> CurrentKey() const;
    /// Sets every field to no value: 0, "" or the zero date.
    void ClearFields();
    /// The fields as they are written, to tell whether a row is still as it was read.
    std::vector<DbValue> FieldValues();

    /// The outcome of the last operation that used the database or a data file.
    CDbStatus const& LastStatus() const { return m_status; }

    /// The columns of the table, in its order.
    std::vector<CColumn> Columns();

protected:
    /// Lists the columns, each once: reading, adding and changing all use this list.
    virtual void ExchangeFields(CFieldExchange& fx) = 0;

    /// Opens a selection: everything that follows the table's name, and the values of its question
    /// marks. Costs one pass over the index that serves it, and one block of rows.
    template <typename... Values>
    int Find(std::string_view clause, Values const&... values)
    {
        return Select(clause, {ToValue(values)...}, Extent::many);
    }
    /// The same for a find that gives at most a handful of rows: one statement reads them whole.
    template <typename... Values>
    int FindFew(std::string_view clause, Values const&... values)
    {
        return Select(clause, {ToValue(values)...}, Extent::few);
    }
    /// How many rows a find may give: a handful, any number, or mostly few that an index leads to.
    /// Of the last kind, those that turn out to be many are found a second time.
    enum class Extent
    {
        few,
        mostlyFew,
        many
    };
    int Select(std::string_view clause, std::vector<DbValue> values, Extent extent);

    /// The database of this set, null when it cannot be used: LastStatus() tells why.
    CDatabase* Database();
    /// For small questions that need no cursor: the first cell of a SELECT's first row, 0 when
    /// there is none.
    std::int64_t Ask(std::string_view sql, std::vector<DbValue> const& values);
    /// Keeps a status as LastStatus() and returns whether it is a success.
    bool Do(CDbStatus status) const
    {
        m_status = std::move(status);
        return m_status.IsOK();
    }

    /// The current row as the table has it, whatever its fields were set to since. Valid until the
    /// cursor moves. Empty, with the reason as LastStatus(), when the cursor is on no row.
    std::optional<CRowView> CurrentCells();

private:
    enum class Edit
    {
        none,
        adding,
        changing
    };
    using Clock = std::chrono::steady_clock;

    template <std::integral T>
    static DbValue ToValue(T value)
    {
        return static_cast<std::int64_t>(value);
    }
    static DbValue ToValue(CEFOleDateTime const& value) { return value.Seconds(); }
    static DbValue ToValue(std::string_view value) { return std::string(value); }

    CTableInfo const& Table();
    bool HasSelection() const;
    int RunSelection();
    CDbStatus ReadSelection(CDatabase& database);
    void Close();
    bool GoTo(std::size_t position, bool afresh, std::size_t most);
    bool ReadBlock(std::size_t position, std::size_t most);
    bool IsInFreshBlock(std::size_t position) const;
    bool ShowRow(std::size_t position);
    bool ShowNoRow();
    bool BeginAdding();
    bool BeginChange();
    bool Update();
    bool UpdateChanged(CDatabase& database);

    CDatabase* m_pDatabase;
    CTableInfo const* m_pTable = nullptr;
    mutable CDbStatus m_status; ///< a test of a data file leaves the set as it is, and tells

    std::string m_strClause;
    std::vector<DbValue> m_values;
    Extent m_extent = Extent::many;
    bool m_bOpen = false;
    unsigned m_nGeneration = 0; ///< of the session, when the selection was made

    CKeyset m_keys;
    std::size_t m_nPosition = 0;
    bool m_bOnRow = false;

    CRowBlock m_block;
    std::size_t m_nBlockFirst = 0; ///< place of its first row in the selection
    std::size_t m_nNextBlock = 0; ///< rows of the next block read in sequence
    Clock::time_point m_blockTime;
    std::uint64_t m_nBlockMoment = 0; ///< of the database, when the block was read

    Edit m_edit = Edit::none;
    std::vector<DbValue> m_before; ///< the row as it was read for a change
};

/// The member ID in the current row of a record set of any kind; 0 for kinds without one.
std::int32_t MemberIDOf(CDAOEFSet const& set);
