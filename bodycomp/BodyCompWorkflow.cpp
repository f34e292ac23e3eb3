// Adding, editing, deleting and finding body compositions.
#include "doc/CorvanaDoc.h"

#include "bodycomp/BodyCompBodyMeasr.h"
#include "bodycomp/BodyCompEditor.h"
#include "bodycomp/BodyCompHydrostaticPg.h"
#include "bodycomp/BodyCompListDlg.h"
#include "bodycomp/BodyCompMethodDlg.h"
#include "bodycomp/BodyCompOtherPg.h"
#include "bodycomp/BodyCompProfilePg.h"
#include "bodycomp/BodyCompRecord.h"
#include "bodycomp/BodyCompSkinFoldPg.h"
#include "doc/RecordCommands.h"
#include "ui/Convert.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

namespace
{

CRecordCommands CommandsOf(CCorvanaDoc& doc)
{
    return {doc, doc.m_setBodyComp,
        [&doc](std::int32_t memberID, CEFOleDateTime const& date) {
            return doc.m_setBodyComp.FindBodyComps(memberID, date);
        },
        CCorvanaDoc::tr("body composition"), CCorvanaDoc::tr("body compositions")};
}

bool AskMethod(CCorvanaDoc& doc, CBodyCompRecord& record)
{
    CBodyCompMethodDlg dialog(doc.Window());
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    record.m_now.m_nMethod = static_cast<std::uint8_t>(dialog.m_nMethod);
    return true;
}

bool Load(CCorvanaDoc& doc, CBodyCompEditor& editor)
{
    CWaitCursor const waitCursor;
    CWaitDlg const wait(CCorvanaDoc::tr("Loading data, please wait..."), doc.Window());
    return editor.Load();
}

/// The first page, and the one of the method.
void AddPages(CPropertySheet& sheet, CCorvanaDoc& doc, CBodyCompRecord& record)
{
    sheet.AddPage(new CBodyCompProfilePg(doc, record), CCorvanaDoc::tr("Profile"));
    switch (record.m_now.m_nMethod) {
    case CDAOBodyComp::mBodyMeasurements:
        sheet.AddPage(new CBodyCompBodyMeasr(record), CCorvanaDoc::tr("Body Measurement"));
        break;
    case CDAOBodyComp::mHydrostatic:
        sheet.AddPage(new CBodyCompHydrostaticPg(record), CCorvanaDoc::tr("Hydrostatic Weighing"));
        break;
    case CDAOBodyComp::mOther:
        sheet.AddPage(new CBodyCompOtherPg(record), CCorvanaDoc::tr("Body Fat Percentage"));
        break;
    default: // one that only another program knows as well
        sheet.AddPage(new CBodyCompSkinFoldPg(record), CCorvanaDoc::tr("Skin Folds"));
    }
}

} // namespace

bool CCorvanaDoc::AddEditBodyComp(CDAOBodyComp* set)
{
    bool const isNew = set == nullptr;
    CBodyCompRecord record;
    auto& memberID = record.m_member.m_lMemberID;
    memberID = isNew ? AskMemberID(true) : set->m_lMemberID;
    if (memberID == 0 || (isNew && !AskMethod(*this, record))) {
        return false;
    }
    CBodyCompEditor editor(*this, set, record);
    if (!Load(*this, editor)) {
        return Fail(tr("Error: the body composition could not be read."), editor.Status());
    }
    auto const caption = isNew ? tr("Add Body Composition for Member ID %1")
                               : tr("Edit Body Composition for Member ID %1");
    CPropertySheet sheet(caption.arg(memberID), Window());
    AddPages(sheet, *this, record);
    sheet.SetFinish([&] {
        return SaveForm(sheet, tr("body composition"),
            tr("Saving body composition data, please wait..."), editor);
    });
    bool const isSaved = sheet.exec() == QDialog::Accepted;
    if (isNew) {
        m_setBodyComp.Op(CDAOEFSet::opClose);
    }
    if (isSaved) {
        CommandsOf(*this).ShowSaved(memberID);
    }
    return isSaved;
}

bool CCorvanaDoc::DeleteBodyComp(CDAOBodyComp& set)
{
    auto const commands = CommandsOf(*this);
    return commands.ConfirmDeletion(set.m_lMemberID, set.m_dtBodyCompDate)
        && commands.DeleteRow(set);
}

bool CCorvanaDoc::EditBodyCompAt(std::int32_t memberID, QString const& date)
{
    return CommandsOf(*this).UseAt(
        memberID, date, [this] { return AddEditBodyComp(&m_setBodyComp); });
}

bool CCorvanaDoc::DeleteBodyCompAt(std::int32_t memberID, QString const& date)
{
    return CommandsOf(*this).UseAt(
        memberID, date, [this] { return DeleteBodyComp(m_setBodyComp); });
}

void CCorvanaDoc::ShowMemberBodyComps()
{
    CommandsOf(*this).ShowOfMember(
        [this](std::int32_t memberID, std::optional<std::uint8_t> classIndex) {
            return classIndex ? m_setBodyComp.FindBodyComps(memberID, *classIndex)
                              : m_setBodyComp.FindBodyComps(memberID);
        },
        [this](std::int32_t memberID, CClassChoice const& choice) {
            using List = CBodyCompListDlg;
            List list(*this, m_setBodyComp);
            list.m_strTitle = tr("Body Compositions for Member ID %1, %2")
                                  .arg(QString::number(memberID), ToQt(choice.m_strClass));
            list.m_nColumns &= ~(List::colName | List::colMemberID);
            list.exec();
        });
}
