#include "doc/AppCommands.h"
#include "doc/CorvanaDoc.h"
#include "store/text/EFFile.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

#include <QStringList>

#include <array>
#include <filesystem>

namespace
{

/// Deletes the rows that a find has left in a set and closes it. Empty, or why it could not.
QString DeleteFound(CDAOEFSet& set, int count)
{
    QString reason;
    if (count > 0) {
        set.DelAll();
        reason = ToQt(set.LastStatus().Text());
    }
    set.Op(CDAOEFSet::opClose);
    return reason;
}

/// The files that could not be compacted, and why.
struct CLeftFiles
{
    QStringList names;
    QStringList reasons;
};

CLeftFiles CompactFiles(std::array<CDAOEFSet const*, kDataFiles.size()> const& sets)
{
    CLeftFiles left;
    for (auto const* const set : sets) {
        auto path = set->GetDefaultDBName();
        CEFFile::ParsePathFileName(path);
        if (auto const status = CompactDatabaseFile(path, DataFileSchema(set->GetClass()->file));
            !status) {
            left.names += ToQt(std::filesystem::path(path).filename().string());
            left.reasons += ToQt(status.Text());
        }
    }
    return left;
}

} // namespace

void CCorvanaDoc::CompactDatabase()
{
    if (!Ask(Window(),
            tr("You have selected to compact your database. Before proceeding,\n"
               "ensure that:\n\n"
               "\t1. There are no members checked into your facility;\n\n"
               "\t2. There are no reports pending to be printed; and\n\n"
               "\t3. All other Corvana software, including Corvana Touchscreen\n"
               "\trunning on all check-in stations and any Report Server running on\n"
               "\tanother computer, is stopped.\n\n"
               "Proceeding without complying with these pre-requisites could\n"
               "result in loss or corruption of data."),
            CQuestion::destroyingOkCancel)) {
        return;
    }
    CWaitCursor const wait;
    CLeftFiles left;
    QString checkInsLeft;
    QString reportsLeft;
    {
        CWaitDlg const window(tr("Compacting database, please wait..."), Window());
        m_app.StopReportServer();
        checkInsLeft = DeleteFound(m_setChkIn, m_setChkIn.FindChkIns());
        reportsLeft = DeleteFound(m_setReport, m_setReport.FindReports());
        // No set can be used from here on: that is why the program ends, whatever the outcome.
        CDatabaseSession::Get().ShutDown();
        left = CompactFiles({&m_setChkIn, &m_setReport, &m_setCenter, &m_setMem});
    }
    if (!checkInsLeft.isEmpty()) {
        Tell(Window(), tr("Error: the check-ins could not be deleted."), {}, checkInsLeft);
    }
    if (!reportsLeft.isEmpty()) {
        Tell(Window(), tr("Error: the pending reports could not be deleted."), {}, reportsLeft);
    }
    if (!left.names.isEmpty()) {
        Tell(Window(), tr("Error: could not compact %1.").arg(left.names.join(tr(", "))), {},
            left.reasons.join(u'\n') + tr("\n\nWhat is named here is left as it was."));
    }
    Tell(Window(),
        tr("Database compaction is complete. When you click \"OK,\"\n"
           "Corvana will exit, and you will need to manually\n"
           "restart the Corvana software to continue operations."));
    m_app.Exit();
}
