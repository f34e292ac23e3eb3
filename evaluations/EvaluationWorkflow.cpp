// Adding, editing, deleting and finding evaluations.
#include "doc/CorvanaDoc.h"

#include "doc/DocViews.h"
#include "evaluations/EvaluationBodyCompPg.h"
#include "evaluations/EvaluationEditor.h"
#include "evaluations/EvaluationFitTestPg.h"
#include "evaluations/EvaluationProfilePg.h"
#include "evaluations/EvaluationRecord.h"
#include "evaluations/EvaluationTrainingRgPg.h"
#include "evaluations/EvaluationWorkWtPg.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

namespace
{

void ShowChanged(CCorvanaDoc& doc, std::int32_t memberID, QString const& result)
{
    if (doc.Views() != nullptr) {
        doc.Views()->RefreshMemberNode(memberID, kEvaluationsNode, 0);
    }
    doc.ShowResult(result.arg(memberID));
}

void AddPages(CPropertySheet& sheet, CCorvanaDoc& doc, CEvaluationRecord& record)
{
    auto const tr = [](char const* text) { return CCorvanaDoc::tr(text); };
    sheet.AddPage(new CEvaluationProfilePg(doc, record), tr("Profile"));
    sheet.AddPage(new CEvaluationTrainingRgPg(record), tr("Training Range"));
    sheet.AddPage(new CEvaluationFitTestPg(record), tr("Fitness Tests"));
    sheet.AddPage(new CEvaluationBodyCompPg(record), tr("Body Composition"));
    sheet.AddPage(new CEvaluationWorkWtPg(doc.m_circuit, record), tr("Work Weights"));
}

} // namespace

bool CCorvanaDoc::AddEditEvaluation(CDAOEval* set)
{
    auto const memberID = set != nullptr ? set->m_lMemberID : AskMemberID(true);
    if (memberID == 0) {
        return false;
    }
    std::optional<CWaitCursor> waitCursor(std::in_place);
    std::optional<CWaitDlg> wait(std::in_place, tr("Loading data, please wait..."), Window());
    CEvaluationRecord record;
    record.m_member.m_lMemberID = memberID;
    CEvaluationEditor editor(*this, record, set != nullptr ? set->m_lEvalID : 0);
    bool const isRead = editor.Load();
    CPropertySheet sheet((set != nullptr ? tr("Edit Evaluation for Member ID %1")
                                         : tr("Add Evaluation for Member ID %1"))
                             .arg(memberID),
        Window());
    AddPages(sheet, *this, record);
    wait.reset();
    waitCursor.reset();
    if (!isRead) {
        Tell(Window(), tr("Error: the evaluation could not be read."), CMessageIcon::exclamation,
            ToQt(editor.Status().Text()));
        return false;
    }
    sheet.SetFinish([&] {
        return SaveForm(
            sheet, tr("evaluation"), tr("Saving evaluation data, please wait..."), editor);
    });
    if (sheet.exec() != QDialog::Accepted) {
        return false;
    }
    ShowChanged(*this, memberID, tr("The evaluation of member ID %1 was saved."));
    return true;
}

bool CCorvanaDoc::DeleteEvaluation(CDAOEval const& set)
{
    auto const memberID = set.m_lMemberID;
    if (memberID == 0
        || !Ask(Window(),
            tr("Are you sure you want to delete the evaluation\nfor Member ID: %1 dated %2?")
                .arg(QString::number(memberID), ToQt(set.m_dtEvalDate.DateStrLongYear())),
            CQuestion::destroying)) {
        return false;
    }
    CWaitCursor const wait;
    auto& evaluations = m_setSmEval;
    CSetCloser const close(evaluations);
    bool const isDeleted
        = evaluations.FindEvals(CDAOSmEval::idEval, set.m_lEvalID) > 0 && evaluations.DelCurrent();
    if (!evaluations.LastStatus()) {
        return Fail(tr("Error: the evaluation was not deleted."), evaluations);
    }
    ShowChanged(*this, memberID,
        isDeleted ? tr("The evaluation of member ID %1 was deleted.")
                  : tr("Member ID %1 does not have this evaluation any more."));
    return isDeleted;
}
