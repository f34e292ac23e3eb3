// Deleting whole selections of records.
#include "doc/CorvanaDoc.h"

#include "doc/DocViews.h"
#include "store/services/RecordTransfer.h"
#include "store/sets/SetCloser.h"
#include "transfer/DeleteAllDlg.h"
#include "transfer/RecordKinds.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

#include <optional>

namespace
{

/// The set of rows to be deleted: evaluations go by their small set.
CDAOEFSet& RowsOf(CCorvanaDoc& doc, CRecordKind kind)
{
    return kind == CRecordKind::evaluations ? static_cast<CDAOEFSet&>(doc.m_setSmEval)
                                            : SetOf(doc, kind);
}

int Find(CCorvanaDoc& doc, CRecordKind kind, std::int32_t memberID)
{
    switch (kind) {
    case CRecordKind::workouts:
        return doc.m_setWk.FindWks(memberID);
    case CRecordKind::evaluations:
        return doc.m_setSmEval.FindEvals(CDAOSmEval::idMember, memberID);
    default:
        return doc.m_setBodyComp.FindBodyComps(memberID);
    }
}

QString CaptionOf(CRecordKind kind)
{
    return kind == CRecordKind::workouts   ? CCorvanaDoc::tr("Delete Workouts")
        : kind == CRecordKind::evaluations ? CCorvanaDoc::tr("Delete Evaluations")
                                           : CCorvanaDoc::tr("Delete Body Compositions");
}

QString DoneText(CRecordKind kind, int count)
{
    auto const text = kind == CRecordKind::workouts
        ? CCorvanaDoc::tr("You have deleted %1 workout record(s).")
        : kind == CRecordKind::evaluations
        ? CCorvanaDoc::tr("You have deleted %1 evaluation record(s).")
        : CCorvanaDoc::tr("You have deleted %1 body composition record(s).");
    return text.arg(count);
}

QString NoneText(CRecordKind kind, std::int32_t memberID)
{
    return memberID != 0 ? CCorvanaDoc::tr("No %1 are recorded for Member ID %2.")
                               .arg(NameOf(kind), QString::number(memberID))
                         : CCorvanaDoc::tr("No %1 have been recorded.").arg(NameOf(kind));
}

bool ConfirmDeletion(CCorvanaDoc& doc)
{
    return doc.VerifyPassword()
        && Ask(doc.Window(),
            CCorvanaDoc::tr("Are you sure you want to permanently\ndelete all of the records?"),
            CQuestion::destroying);
}

} // namespace

void CCorvanaDoc::DeleteAll(CRecordKind kind)
{
    if (!VerifyPassword()) {
        return;
    }
    CDeleteAllDlg dialog(CaptionOf(kind), Window());
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    auto const memberID = dialog.m_lMemberID;
    auto& set = RowsOf(*this, kind);
    CSetCloser const close(set);
    std::optional<CWaitCursor> wait(std::in_place);
    int const found = Find(*this, kind, memberID);
    wait.reset();
    if (!set.LastStatus()) {
        Fail(tr("Error: the %1 could not be read.").arg(NameOf(kind)), set);
        return;
    }
    auto const text
        = found > 0 ? DoneText(kind, DeleteRecords(set, false)) : NoneText(kind, memberID);
    if (memberID != 0 && m_pViews != nullptr) {
        m_pViews->RefreshMemberNode(memberID, TreeNodeOf(set), 0);
    }
    Tell(Window(), text);
}

int CCorvanaDoc::DeleteRecords(CDAOEFSet& set, bool confirm)
{
    bool const isEvals = set.IsKindOf(CDAOEval::GetThisClass());
    auto& rows = isEvals ? static_cast<CDAOEFSet&>(m_setSmEval) : set;
    std::optional<CSetCloser> close;
    if (isEvals) {
        close.emplace(m_setSmEval);
        if (m_nEvalClassSel == CDAOCls::kAllClasses) {
            m_setSmEval.FindEvals(CDAOSmEval::idMember, m_nEvalMemberSel);
        } else {
            m_setSmEval.FindEvals(m_nEvalMemberSel, m_nEvalClassSel);
        }
    }
    if (rows.CountSet() == 0 || (confirm && !ConfirmDeletion(*this))) {
        return 0;
    }
    std::vector<std::int32_t> members;
    CDbStatus status;
    {
        CWaitCursor const cursor;
        CWaitDlg const wait(tr("Updating records, please wait..."), Window());
        status = DeleteRows(rows, members);
    }
    if (!status) {
        Fail(tr("Error: the records were not deleted."), status);
        return 0;
    }
    FinishDeletion(*this, rows, members);
    return static_cast<int>(members.size());
}
