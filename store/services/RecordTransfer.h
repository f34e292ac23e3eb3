#pragma once

#include "store/sets/DAOFileSet.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Deletes the rows of an open set in one transaction: from the first one on, up to a row without a
/// member. Adds the member of each row that was deleted. Nothing is deleted when it failed.
CDbStatus DeleteRows(CDAOEFSet& set, std::vector<std::int32_t>& members);

/// Takes what was deleted out of the log of the member file as well. Somebody who reads for long
/// keeps it there until the next time.
void EmptyLog();

/// Writes the rows of an open set into data files, one behind the other, and deletes them again for
/// an archive. Made for one run.
///
/// An archive is one transaction: nothing is deleted before all rows stand in files that were put
/// on the disk and read back, and then exactly those rows, as they stand there. With several files
/// the rows are written before the transaction, since it must not wait while disks are changed;
/// they are compared with what was written when it begins. Members are not archived while any of
/// their records are there, which would go with them.
class CRecordTransfer
{
public:
    enum class Mode
    {
        backup,
        archive,
        archiveDisks ///< in several files
    };

    /// The set stands on found rows and stays there, open, as long as this lives.
    CRecordTransfer(CDAOFileSet& set, Mode mode);

    /// Begins the transaction of an archive, and goes to the first row; count is their number.
    CDbStatus Begin(int& count);
    /// Writes the next rows of the set into a file of that name, which must not exist, and calls
    /// step for each; false stops. Rows that are gone are passed over; without any row there is no
    /// file. After a failure there is no file, and nothing more can be written or deleted.
    CDbStatus WriteFile(std::string const& path, int rows, std::function<bool()> const& step);
    /// Deletes what was written; gives the members. Call once, after the last file.
    CDbStatus DeleteWritten(std::vector<std::int32_t>& members);

    int Records() const { return static_cast<int>(m_written.size()); } ///< in files

private:
    CDbStatus BeginTransaction();
    CDbStatus CompareWithFiles();
    CDbStatus End(CDbStatus status);

    CDAOFileSet& m_set;
    Mode const m_mode;
    std::optional<CTransaction> m_transaction;
    std::vector<std::int64_t> m_written; ///< keys of the rows in files, in the set's order
    std::vector<std::int32_t> m_members; ///< of these rows
    std::uint32_t m_nSum = 0; ///< of all lines in files
};
