// Restoring records from data files.
#include "doc/CorvanaDoc.h"

#include "doc/DocViews.h"
#include "store/text/DataFileWriter.h"
#include "transfer/RecordKinds.h"
#include "ui/Convert.h"
#include "ui/FileDialogs.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace
{

bool CanRead(QString const& path, std::ifstream& file)
{
    std::error_code ignored;
    // A folder can be opened too, and a pipe would wait for somebody to write.
    if (std::filesystem::is_regular_file(FromQt(path), ignored)) {
        file.open(FromQt(path), std::ios::binary);
    }
    return file.is_open();
}

void RefreshTree(CCorvanaDoc& doc, CDAOEFSet const& set, std::int32_t memberID)
{
    auto* const views = doc.Views();
    if (views == nullptr) {
        return;
    }
    if (memberID == 0) {
        views->ResetTree();
    } else if (!views->RefreshMemberNode(memberID, TreeNodeOf(set), 0)) {
        views->AddMemberNode(memberID);
    }
}

} // namespace

void CCorvanaDoc::RestoreAll(CRecordKind kind)
{
    RestoreRecords(SetOf(*this, kind));
}

int CCorvanaDoc::RestoreRecords(CDAOFileSet& set)
{
    bool const isMembers = set.IsKindOf(CDAOMem::GetThisClass());
    std::int32_t memberID = 0;
    if (Ask(Window(), tr("Do you want to restore records for a specific member?"))) {
        memberID = AskMemberID(!isMembers);
        if (memberID == 0) {
            return 0;
        }
    }
    bool const overwrite = isMembers
        && Ask(Window(),
            tr("In the case of duplicate members, do you want to overwrite existing members?"),
            CQuestion::destroying);
    auto const path = AskForFile(Window(), {tr("Restore Records"), {}, DataFileFilter()});
    if (path.isEmpty()) {
        return 0;
    }
    int const count = ReadDataFile(set, memberID, !overwrite, path, CLineSum::kSeparator);
    int const skipped = set.LastSkipped();
    Tell(Window(), tr("You have restored %1 record(s).").arg(count), CMessageIcon::none,
        skipped == 0 ? QString()
            : isMembers
            ? tr("%1 member(s) were skipped: their workout numbers belong to others.").arg(skipped)
            : tr("%1 record(s) were skipped: their members are not in the database.").arg(skipped));
    return count;
}

int CCorvanaDoc::ReadDataFile(
    CDAOFileSet& set, std::int32_t memberID, bool keepExisting, QString const& path, char separator)
{
    CWaitCursor const cursor;
    std::ifstream file;
    if (!CanRead(path, file)) {
        Tell(Window(), tr("Error: file does not exist\nor cannot read from file"));
        return 0;
    }
    if (!set.Test(file, separator)) {
        Fail(tr("Error: empty file, incompatible file format, or corrupt data"), set);
        return 0;
    }
    file.close();
    int count = 0;
    {
        CWaitDlg const wait(tr("Restoring, please wait..."), Window());
        if (CanRead(path, file)) {
            count = set.Restore(file, separator, memberID, keepExisting);
        }
    }
    if (!file.is_open()) {
        Tell(Window(), tr("Error: cannot read from file"));
    } else if (!set.LastStatus()) {
        Fail(tr("Error: the records were not restored."), set);
    } else {
        RefreshTree(*this, set, memberID);
    }
    return count;
}
