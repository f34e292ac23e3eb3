#pragma once

#include "doc/CorvanaDoc.h"
#include "store/services/RecordTransfer.h"

/// Writes the rows of an open set into a data file, or into one on each of several disks, and
/// deletes them again for an archive, with the windows and messages that belong to it.
class CDataFileJob
{
public:
    /// A path that begins with the letter a is that of a drive for disks.
    CDataFileJob(CCorvanaDoc& doc, CDAOFileSet& set, CTransfer mode, QString path);

    /// How many records stand in files, and were deleted for an archive; what went wrong is told.
    int Run();

private:
    bool WriteDisks(int count);
    bool WriteDisk(int count, int room); ///< the bar shows how much of the room is taken
    bool DeleteWritten();

    CCorvanaDoc& m_doc;
    CDAOFileSet& m_set;
    QString const m_strPath;
    bool const m_bArchive;
    bool const m_bDisks;
    CRecordTransfer m_transfer;
};
