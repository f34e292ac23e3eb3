#include "transfer/DataFileJob.h"

#include "transfer/RecordKinds.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/ProgressDlg.h"
#include "ui/WaitCursor.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr int kDiskRecords = 5000;

QString Tr(char const* text)
{
    return QCoreApplication::translate("DataFileJob", text);
}

bool IsDrive(QString const& path)
{
    return path.startsWith(u'a', Qt::CaseInsensitive);
}

CRecordTransfer::Mode ModeOf(CTransfer mode, QString const& path)
{
    using Mode = CRecordTransfer::Mode;
    return mode == CTransfer::backup ? Mode::backup
        : IsDrive(path)              ? Mode::archiveDisks
                                     : Mode::archive;
}

} // namespace

CDataFileJob::CDataFileJob(CCorvanaDoc& doc, CDAOFileSet& set, CTransfer mode, QString path)
    : m_doc(doc)
    , m_set(set)
    , m_strPath(std::move(path))
    , m_bArchive(mode == CTransfer::archive)
    , m_bDisks(IsDrive(m_strPath))
    , m_transfer(set, ModeOf(mode, m_strPath))
{
}

int CDataFileJob::Run()
{
    CWaitCursor const wait;
    int count = 0;
    if (auto const status = m_transfer.Begin(count); !status) {
        m_doc.Fail(Tr("Error: the records could not be archived."), status);
    }
    if (count == 0) {
        return 0;
    }
    bool const isWritten = m_bDisks ? WriteDisks(count) : WriteDisk(count, count);
    return !m_bArchive || (isWritten && DeleteWritten()) ? m_transfer.Records() : 0;
}

bool CDataFileJob::WriteDisks(int count)
{
    Tell(m_doc.Window(), Tr("Insert a blank formatted disk then click \"OK\"."));
    for (int left = count; left > 0; left -= kDiskRecords) {
        if (left < count) {
            Tell(m_doc.Window(), Tr("Insert another blank formatted\ndisk then click \"OK\"."));
        }
        if (!WriteDisk(std::min(left, kDiskRecords), std::min(count, kDiskRecords))) {
            return false;
        }
    }
    return true;
}

bool CDataFileJob::WriteDisk(int count, int room)
{
    CDbStatus status;
    {
        CProgressDlg progress(m_doc.Window(),
            m_bArchive ? Tr("Archiving, please wait...") : Tr("Backing up, please wait..."), room,
            CStoppable::yes);
        status = m_transfer.WriteFile(FromQt(m_strPath), count, [&] {
            progress.Step();
            return !progress.IsStopped();
        });
    }
    if (status.Error() == DbError::stopped) {
        return false; // by the user, who need not be told
    }
    return status || m_doc.Fail(Tr("Error: file already exists\nor cannot write to file"), status);
}

bool CDataFileJob::DeleteWritten()
{
    std::vector<std::int32_t> members;
    CDbStatus status;
    {
        CWaitDlg const wait(Tr("Updating records, please wait..."), m_doc.Window());
        status = m_transfer.DeleteWritten(members);
    }
    if (!status) {
        return m_doc.Fail(Tr("Error: the records were written, but none was deleted."), status);
    }
    FinishDeletion(m_doc, m_set, std::move(members));
    return true;
}
