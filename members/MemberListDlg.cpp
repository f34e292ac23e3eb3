#include "members/MemberListDlg.h"

#include "doc/CorvanaDoc.h"
#include "members/MailingLabels.h"
#include "store/services/MemberServices.h"
#include "store/sets/DAOMemCls.h"
#include "ui/Convert.h"
#include "ui/PrintOut.h"

#include <QPushButton>

namespace
{

CListTexts Texts()
{
    auto const tr = [](char const* text) { return CMemberListDlg::tr(text); };
    using List = CMemberListDlg;
    return {"members_list", tr("Members"), tr("Loading members, please wait..."),
        tr("Total Members Listed:"), tr("No further member records are available."),
        tr("Error: the members could not be read."),
        tr("Select items to include in the printed\nlist of members."),
        {{List::colName, tr("&Name")}, {List::colMemberID, tr("Member &ID #")},
            {List::colWorkoutNum, tr("&Workout #")}, {List::colStatus, tr("Membership &Status")},
            {List::colExpiration, tr("&Expiration Date")}},
        QPageLayout::Portrait, 67};
}

/// Of the rows of a member search what the list shows: to look through the list reads no profiles.
class CListedMember : public CDAOEFSet
{
public:
    explicit CListedMember(CDAOMem const& found)
        : m_bOfClass(found.IsKindOf(CDAOMemCls::GetThisClass()))
    {
    }
    CRecordClass const* GetClass() const override
    {
        static CRecordClass const any
            = {"CListedMember", nullptr, DataFile::member, CDAOMem::GetThisClass()->table, true};
        static CRecordClass const ofClass
            = {"CListedMember", nullptr, DataFile::member, CDAOMemCls::GetThisClass()->table, true};
        return m_bOfClass ? &ofClass : &any;
    }

    std::int32_t m_MemberID = 0;
    std::int32_t m_WorkoutNum = 0;
    std::string m_FirstName;
    std::string m_MiddleInit;
    std::string m_LastName;
    std::uint8_t m_Status = 0;
    CEFOleDateTime m_ExpireDate;

protected:
    void ExchangeFields(CFieldExchange& fx) override
    {
        fx.Field("member_id", m_MemberID);
        fx.Field("workout_number", m_WorkoutNum);
        fx.Field("first_name", m_FirstName);
        fx.Field("middle_initial", m_MiddleInit);
        fx.Field("last_name", m_LastName);
        fx.Field("status", m_Status);
        fx.Field("expire_date", m_ExpireDate);
    }

private:
    bool const m_bOfClass;
};

} // namespace

CMemberListDlg::CMemberListDlg(CCorvanaDoc& doc, CDAOMem& found, bool isClassSearch)
    : CRecordListDlg(doc, found, std::make_unique<CListedMember>(found), Texts())
{
    AddColumns();
    auto const& row = static_cast<CListedMember const&>(Row());
    SetPictures([&row] { return IsUnexpired(row.m_Status, row.m_ExpireDate) ? 0 : 1; },
        tr("Current and unexpired member"), tr("Past or expired member"));
    SetNote(tr("Note: You can only use the \"Update Class\" function after you search by category, "
               "course, and section."));
    auto const record = tr("member");
    UseOnDoubleClick(AddRowButton(tr("&Edit"), "editButton", tr("edit a member"), record,
        [this, &found] { return m_doc.EditMember(found.m_MemberID); }));
    UseOnDeleteKey(
        AddRowButton(tr("&Delete"), "deleteButton", tr("delete a member"), record, [this, &found] {
            return m_doc.DeleteMember(found.m_MemberID, ToQt(found.m_ExpireDate.DateStrLongYear()));
        }));
    AddBatchButtons(found, isClassSearch);
    AddLastButtons();
}

void CMemberListDlg::AddColumns()
{
    auto const& row = static_cast<CListedMember const&>(Row());
    AddColumn({colName, tr("Name"), 190,
        [&row] { return ListName(row.m_LastName, row.m_FirstName, row.m_MiddleInit); },
        CDAOMem::byName, tr("Name"), 35});
    AddColumn({colMemberID, tr("ID #"), 70, [&row] { return std::to_string(row.m_MemberID); },
        CDAOMem::byMemberID, tr("ID #"), 11});
    AddColumn(
        {colWorkoutNum, tr("Workout #"), 70, [&row] { return std::to_string(row.m_WorkoutNum); },
            CDAOMem::byWorkoutNum, tr("Workout #"), 11});
    AddColumn({colStatus, tr("Status"), 70, [&row] { return CDAOMem::GetStatusStr(row.m_Status); },
        CDAOMem::byStatus, tr("Membership Status"), 19});
    AddColumn({colExpiration, tr("Expiration"), 65,
        [&row] { return row.m_ExpireDate.DateStrShortYear(); }, CDAOMem::byExpireDate,
        tr("Expiration")});
}

void CMemberListDlg::AddBatchButtons(CDAOMem& found, bool isClassSearch)
{
    AddChangeButton(tr("&Update Class"), "updateClassButton", [this, &found] {
        return ConfirmHiddenRows() && m_doc.UpdateClass(found);
    }).setEnabled(isClassSearch);
    AddChangeButton(tr("Update En&roll"), "updateEnrollButton",
        [this, &found] { return ConfirmHiddenRows() && m_doc.UpdateEnrollment(found); });
    AddButton(tr("Post &Message"), "postMessageButton", [this, &found] {
        if (ConfirmHiddenRows()) {
            m_doc.PostMessages(found);
        }
    });
    AddButton(tr("Mer&ge Letter"), "mergeLetterButton", [this, &found] {
        if (ConfirmHiddenRows()) {
            m_doc.PrintLetters(found);
        }
    });
    AddButton(tr("Mai&ling Labels"), "mailingLabelsButton", [this, &found] {
        if (ConfirmHiddenRows()) {
            m_doc.PrintLabels(found);
        }
    });
    AddKey(tr("Previe&w Labels..."), "previewLabelsAction", {},
        [this, &found] { ::Preview(this, MailingLabels(m_doc, found)); });
    AddKey(tr("Save L&abels as PDF..."), "pdfLabelsAction", {},
        [this, &found] { ::SaveAsPdf(this, MailingLabels(m_doc, found)); });
}
