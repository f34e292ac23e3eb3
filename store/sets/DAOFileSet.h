#pragma once

#include "store/sets/DAOEFSet.h"
#include "store/text/RecordKeys.h"
#include "store/text/RecordLine.h"

#include <functional>
#include <iosfwd>
#include <unordered_map>

class CText;

/// A record set whose records can be copied to data files and back, one record a line.
/// docs/data-files.md describes the lines.
///
/// Nothing here throws; LastStatus() tells in a sentence for the user what failed, for a file with
/// the number of its line and field.
class CDAOFileSet : public CDAOEFSet
{
public:
    using CDAOEFSet::CDAOEFSet;

    /// Writes the current row as one line, with all that belongs to it in further tables, as it is
    /// stored: what the fields were set to does not count. A row that was read with those before it
    /// can be up to a second old; in a transaction begun before CountSet() it is what is stored.
    /// False, with nothing written, when there is no such row any more or no line can carry it;
    /// false as well when the stream did not take it.
    virtual bool Save(CText& text);

    /// Reads a whole file, strictly. True when every line is a right one of this kind, there is at
    /// least one, and no two hold the same member otherwise. The set and the database stay as they
    /// are. Some 20 to 60 bytes a record, and one line, are kept in memory.
    virtual bool Test(std::istream& stream, char separator) const;

    /// Adds the records of a file to the database, those of one member or of all when memberID is
    /// 0, and returns how many. All of it is one transaction: when one line is wrong or cannot be
    /// stored, 0 are, and LastStatus() tells.
    ///
    /// A record of the same member and time as one in the database is left out and not counted, a
    /// line that stands in the file twice counts once. A member that is there already is left as
    /// well, or replaced whole when keepExisting is false; the member's records stay in either
    /// case. LastSkipped() counts what cannot be added. In memory it keeps what Test does, and
    /// whole the members that cannot be replaced before the file ends, since others have their
    /// numbers.
    virtual int Restore(
        std::istream& stream, char separator, std::int32_t memberID, bool keepExisting);

    /// Is called for each record of a restore, and ends it with false: nothing is restored then,
    /// and LastStatus() says that it was stopped. Empty for none.
    void SetWatch(std::function<bool()> goOn) { m_fnGoOn = std::move(goOn); }

    /// How many records the last Restore could not add: those of members that are not there, and
    /// members whose workout number another member has who is not replaced.
    int LastSkipped() const { return m_nSkipped; }

    /// What a line of this kind consists of.
    virtual CRecordLine const& GetLine() const = 0;

protected:
    enum class Outcome
    {
        stored,
        kept, ///< it is there already
        skipped,
        waits, ///< for those behind it in the file
        failed ///< LastStatus() tells
    };

    /// The current row as the cells of a line, read into the block where they are not at hand.
    /// Empty when it cannot be had: LastStatus() tells.
    virtual std::optional<CRowView> LineCells(CRowBlock& block);
    /// Reads the current row out of a joined table made by CRecordLine::Joined.
    std::optional<CRowView> JoinedCells(CTableInfo const& joined, CRowBlock& block);

    // A restore calls these within its transaction, the first two for each record in turn.

    /// Sees a record of the file, whether it is to be restored or not.
    virtual void SeeRecord(CRowView const& /*row*/) { }
    /// Stores the only row of a block, or takes it away to do so later: here, stores it when its
    /// member is there and no record of the same member and time.
    virtual Outcome RestoreRecord(CRowBlock& record, bool keepExisting);
    /// Stores what waits for the end of the file, and counts it. False when that failed.
    virtual bool RestoreRest() { return true; }
    /// Forgets what the restore noted, however it ended.
    virtual void EndRestore();
    /// Counts a record; false when it failed.
    bool Count(Outcome outcome);
    /// Adds a record that is not there yet: here, the row of its first part.
    virtual bool AddRecord(CRowView const& row);
    /// Adds the row of a part, when there is one; the link is the value that ties it to the first.
    bool AddPart(CRowView const& row, std::size_t part, DbValue const& link);
    /// Runs one statement that writes, with the values given, and the cells behind them.
    bool Run(std::string_view sql, std::span<DbValue const> values,
        CRowView const& row = {nullptr, nullptr}, std::span<CCell const> cells = {});

private:
    bool RestoreAll(std::istream& stream, char separator, std::int32_t memberID, bool keepExisting);
    std::optional<bool> Meet(std::int32_t member);

    std::function<bool()> m_fnGoOn;
    CRowBlock m_lineCells;
    std::vector<DbValue> m_bound; ///< to a statement; they keep their memory
    int m_nStored = 0; ///< by the last restore
    int m_nSkipped = 0;
    // During a restore: the members met so far, whether they are there, and their records that are.
    std::unordered_map<std::int32_t, bool> m_members;
    CRecordKeys m_there;
};
