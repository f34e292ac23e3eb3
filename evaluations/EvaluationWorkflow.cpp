// Adding, editing, deleting and finding evaluations.
#include "doc/CorvanaDoc.h"

#include "doc/RecordCommands.h"
#include "evaluations/EvaluationBodyCompPg.h"
#include "evaluations/EvaluationEditor.h"
#include "evaluations/EvaluationFitTestPg.h"
#include "evaluations/EvaluationListDlg.h"
#include "evaluations/EvaluationProfilePg.h"
#include "evaluations/EvaluationRecord.h"
#include "evaluations/EvaluationTrainingRgPg.h"
#include "evaluations/EvaluationWorkWtPg.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

namespace
{

CRecordCommands CommandsOf(CCorvanaDoc& doc)
{
    return {doc, doc.m_setEval,
        [&doc](std::int32_t memberID, CEFOleDateTime const& date) {
            return doc.m_setEval.FindEvals(memberID, date);
        },
        CCorvanaDoc::tr("evaluation"), CCorvanaDoc::tr("evaluations")};
}

bool Load(CCorvanaDoc& doc, CEvaluationEditor& editor)
{
    CWaitCursor const waitCursor;
    CWaitDlg const wait(CCorvanaDoc::tr("Loading data, please wait..."), doc.Window());
    return editor.Load();
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
    CEvaluationRecord record;
    record.m_member.m_lMemberID = memberID;
    CEvaluationEditor editor(*this, record, set != nullptr ? set->m_lEvalID : 0);
    if (!Load(*this, editor)) {
        return Fail(tr("Error: the evaluation could not be read."), editor.Status());
    }
    auto const caption = set != nullptr ? tr("Edit Evaluation for Member ID %1")
                                        : tr("Add Evaluation for Member ID %1");
    CPropertySheet sheet(caption.arg(memberID), Window());
    AddPages(sheet, *this, record);
    sheet.SetFinish([&] {
        return SaveForm(
            sheet, tr("evaluation"), tr("Saving evaluation data, please wait..."), editor);
    });
    if (sheet.exec() != QDialog::Accepted) {
        return false;
    }
    CommandsOf(*this).ShowSaved(memberID);
    return true;
}

bool CCorvanaDoc::DeleteEvaluation(CDAOEval const& set)
{
    auto const commands = CommandsOf(*this);
    if (!commands.ConfirmDeletion(set.m_lMemberID, set.m_dtEvalDate)) {
        return false;
    }
    CWaitCursor const wait;
    CSetCloser const close(m_setSmEval);
    if (m_setSmEval.FindEvals(CDAOSmEval::idEval, set.m_lEvalID) > 0) {
        return commands.DeleteRow(m_setSmEval);
    }
    if (!m_setSmEval.LastStatus()) {
        return Fail(tr("Error: the evaluation was not deleted."), m_setSmEval);
    }
    commands.ShowGone(set.m_lMemberID);
    return false;
}

bool CCorvanaDoc::EditEvaluationAt(std::int32_t memberID, QString const& date)
{
    return CommandsOf(*this).UseAt(
        memberID, date, [this] { return AddEditEvaluation(&m_setEval); });
}

bool CCorvanaDoc::DeleteEvaluationAt(std::int32_t memberID, QString const& date)
{
    return CommandsOf(*this).UseAt(memberID, date, [this] { return DeleteEvaluation(m_setEval); });
}

void CCorvanaDoc::ShowMemberEvaluations()
{
    CommandsOf(*this).ShowOfMember(
        [this](std::int32_t memberID, std::optional<std::uint8_t> classIndex) {
            return classIndex ? m_setEval.FindEvals(memberID, *classIndex)
                              : m_setEval.FindEvals(CDAOSmEval::idMember, memberID);
        },
        [this](std::int32_t memberID, CClassChoice const& choice) {
            m_nEvalMemberSel = memberID;
            m_nEvalClassSel = choice.m_nClassIndex;
            using List = CEvaluationListDlg;
            List list(*this, m_setEval);
            list.m_strTitle = tr("Evaluations for Member ID %1, %2")
                                  .arg(QString::number(memberID), ToQt(choice.m_strClass));
            list.m_nColumns &= ~(List::colName | List::colMemberID);
            list.exec();
        });
}
