// Restoring records from data files.
#include "doc/CorvanaDoc.h"

#include "doc/DocViews.h"
#include "store/text/DataFileWriter.h"
#include "transfer/RecordKinds.h"
#include "ui/Convert.h"
#include "ui/FileDialogs.h"
#include "ui/Messages.h"
#include "ui/ProgressDlg.h"
#include "ui/WaitCursor.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <system_error>
#include <vector>

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

/// Of which each is a record.
int CountLines(std::ifstream& file)
{
    file.clear();
    file.seekg(0);
    std::vector<char> buffer(std::size_t(1) << 20U);
    std::ptrdiff_t lines = 0;
    while (file.read(buffer.data(), std::ssize(buffer)) || file.gcount() > 0) {
        lines += std::count(buffer.begin(), buffer.begin() + file.gcount(), '\n');
    }
    return static_cast<int>(std::min<std::ptrdiff_t>(lines, std::numeric_limits<int>::max()));
}

/// Restores with a bar, and stops when the user wants it.
int Restore(CCorvanaDoc& doc, CDAOFileSet& set, std::ifstream& file, int lines, char separator,
    std::int32_t memberID, bool keepExisting)
{
    CProgressDlg progress(
        doc.Window(), CCorvanaDoc::tr("Restoring, please wait..."), lines, CStoppable::yes);
    set.SetWatch([&progress] {
        progress.Step();
        return !progress.IsStopped();
    });
    int const count = set.Restore(file, separator, memberID, keepExisting);
    set.SetWatch({});
    return count;
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

struct CRestored
{
    int records = 0;
    int skipped = 0;
};

/// All of it or, after a message, nothing.
CRestored ReadFile(CCorvanaDoc& doc, CDAOFileSet& set, std::int32_t memberID, bool keepExisting,
    QString const& path, char separator)
{
    CWaitCursor const cursor;
    std::ifstream file;
    if (!CanRead(path, file)) {
        Tell(doc.Window(), CCorvanaDoc::tr("Error: file does not exist\nor cannot read from file"));
        return {};
    }
    if (!set.Test(file, separator)) {
        doc.Fail(
            CCorvanaDoc::tr("Error: empty file, incompatible file format, or corrupt data"), set);
        return {};
    }
    int const lines = CountLines(file);
    file.close();
    if (!CanRead(path, file)) {
        Tell(doc.Window(), CCorvanaDoc::tr("Error: cannot read from file"));
        return {};
    }
    int const count = Restore(doc, set, file, lines, separator, memberID, keepExisting);
    if (set.LastStatus().Error() == DbError::stopped) {
        return {}; // by the user, who need not be told
    }
    if (!set.LastStatus()) {
        doc.Fail(CCorvanaDoc::tr("Error: the records were not restored."), set);
    } else {
        RefreshTree(doc, set, memberID);
    }
    return {count, set.LastSkipped()};
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
    auto const [count, skipped]
        = ReadFile(*this, set, memberID, !overwrite, path, CLineSum::kSeparator);
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
    return ReadFile(*this, set, memberID, keepExisting, path, separator).records;
}
