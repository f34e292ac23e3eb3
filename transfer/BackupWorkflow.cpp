// Backup and archive of records.
#include "doc/CorvanaDoc.h"

#include "store/sets/SetCloser.h"
#include "transfer/DataFileJob.h"
#include "transfer/RecordKinds.h"
#include "ui/Convert.h"
#include "ui/FileDialogs.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

#include <array>

namespace
{

int Retrieve(CCorvanaDoc& doc, CRecordKind kind)
{
    CWaitCursor const cursor;
    CWaitDlg const wait(
        CCorvanaDoc::tr("Retrieving %1, please wait...").arg(NameOf(kind)), doc.Window());
    return FindAll(doc, kind);
}

/// Members go last: their records would go with them.
bool HaveNoRecords(CCorvanaDoc& doc)
{
    constexpr std::array kKinds
        = {CRecordKind::evaluations, CRecordKind::bodyComps, CRecordKind::workouts};
    std::array const names = {CCorvanaDoc::tr("evaluation"), CCorvanaDoc::tr("body composition"),
        CCorvanaDoc::tr("workout")};
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
        CWaitCursor const wait;
        auto& set = SetOf(doc, kKinds[i]);
        CSetCloser const close(set);
        int const count = FindAll(doc, kKinds[i]);
        if (!set.LastStatus()) {
            return doc.Fail(
                CCorvanaDoc::tr("Error: the %1 could not be read.").arg(NameOf(kKinds[i])), set);
        }
        if (count > 0) {
            Tell(doc.Window(),
                CCorvanaDoc::tr("All %1 records must be archived before archiving members.")
                    .arg(names[i]));
            return false;
        }
    }
    return true;
}

bool ConfirmArchive(CCorvanaDoc& doc)
{
    return doc.VerifyPassword()
        && Ask(doc.Window(),
            CCorvanaDoc::tr("Warning: archiving records will permanently remove\n"
                            "the records from the database. Do you still want to\n"
                            "proceed with the archive?"),
            CQuestion::destroying, CMessageIcon::exclamation);
}

void TransferAll(CCorvanaDoc& doc, CRecordKind kind, CTransfer mode)
{
    auto& set = SetOf(doc, kind);
    CSetCloser const close(set);
    int const count = Retrieve(doc, kind);
    if (!set.LastStatus()) {
        doc.Fail(CCorvanaDoc::tr("Error: the %1 could not be read.").arg(NameOf(kind)), set);
    } else if (count == 0) {
        Tell(doc.Window(),
            mode == CTransfer::backup ? CCorvanaDoc::tr("No records are available for backup.")
                                      : CCorvanaDoc::tr("No records are available for archive."));
    } else {
        doc.BackupRecords(set, mode);
    }
}

} // namespace

void CCorvanaDoc::BackUpAll(CRecordKind kind)
{
    TransferAll(*this, kind, CTransfer::backup);
}

void CCorvanaDoc::ArchiveAll(CRecordKind kind)
{
    if (kind != CRecordKind::members || HaveNoRecords(*this)) {
        TransferAll(*this, kind, CTransfer::archive);
    }
}

int CCorvanaDoc::BackupRecords(CDAOFileSet& set, CTransfer mode)
{
    bool const isArchive = mode == CTransfer::archive;
    bool const isMembers = set.IsKindOf(CDAOMem::GetThisClass());
    if (isArchive && ((isMembers && !HaveNoRecords(*this)) || !ConfirmArchive(*this))) {
        return 0;
    }
    auto const path = AskForFile(Window(),
        {isArchive ? tr("Archive Records") : tr("Back Up Records"), {}, DataFileFilter(), true});
    if (path.isEmpty()) {
        return 0;
    }
    int const count = WriteDataFile(set, mode, path);
    Tell(Window(),
        (isArchive ? tr("You have archived %1 record(s).") : tr("You have backed up %1 record(s)."))
            .arg(count));
    return count;
}

int CCorvanaDoc::WriteDataFile(CDAOFileSet& set, CTransfer mode, QString const& path)
{
    return CDataFileJob(*this, set, mode, path).Run();
}
