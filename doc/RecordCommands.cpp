#include "doc/RecordCommands.h"

#include "doc/CorvanaDoc.h"
#include "doc/DocViews.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

namespace
{

QString Tr(char const* text)
{
    return QCoreApplication::translate("RecordCommands", text);
}

} // namespace

bool CRecordCommands::UseAt(
    std::int32_t memberID, QString const& date, std::function<bool()> const& use) const
{
    auto const when = CEFOleDateTime::Parse(FromQt(date));
    if (!when.ChkStatus()) {
        return false;
    }
    CSetCloser const close(m_set);
    if (m_fnFindAt(memberID, when) > 0) {
        return use();
    }
    if (!m_set.LastStatus()) {
        return m_doc.Fail(Tr("Error: the %1 could not be read.").arg(m_strOne), m_set);
    }
    ShowGone(memberID); // another program has deleted it, and the tree does not know
    return false;
}

bool CRecordCommands::ConfirmDeletion(std::int32_t memberID, CEFOleDateTime const& date) const
{
    auto const text = Tr("Are you sure you want to delete the %1\nfor Member ID: %2 dated %3?");
    return memberID != 0
        && Ask(m_doc.Window(),
            text.arg(m_strOne, QString::number(memberID), ToQt(date.DateStrLongYear())),
            CQuestion::destroying);
}

bool CRecordCommands::DeleteRow(CDAOEFSet& set) const
{
    CWaitCursor const wait;
    auto const memberID = MemberIDOf(set);
    // One that another program has deleted meanwhile is as good as deleted.
    if (!set.DelCurrent() && !set.LastStatus()) {
        return m_doc.Fail(Tr("Error: the %1 was not deleted.").arg(m_strOne), set);
    }
    ShowChanged(memberID,
        Tr("The %1 of member ID %2 was deleted.").arg(m_strOne, QString::number(memberID)));
    return true;
}

void CRecordCommands::ShowOfMember(
    std::function<int(std::int32_t, std::optional<std::uint8_t>)> const& find,
    std::function<void(std::int32_t, CClassChoice const&)> const& show) const
{
    auto const memberID = m_doc.AskMemberID(true);
    auto const choice = memberID != 0 ? m_doc.AskMemberClass(memberID) : std::nullopt;
    if (!choice) {
        return;
    }
    std::optional<CWaitCursor> wait(std::in_place);
    CSetCloser const close(m_set);
    int const count = choice->m_nClassIndex == CDAOCls::kAllClasses
        ? find(memberID, std::nullopt)
        : find(memberID, choice->m_nClassIndex);
    wait.reset();
    if (AreFound(count,
            Tr("No %1 are recorded for Member ID %2 under %3")
                .arg(m_strMany, QString::number(memberID), ToQt(choice->m_strClass)))) {
        show(memberID, *choice);
    }
}

bool CRecordCommands::AreFound(int count, QString const& none) const
{
    if (!m_set.LastStatus()) {
        return m_doc.Fail(Tr("Error: the %1 could not be read.").arg(m_strMany), m_set);
    }
    if (count == 0) {
        Tell(m_doc.Window(), none);
    }
    return count > 0;
}

void CRecordCommands::ShowSaved(std::int32_t memberID) const
{
    ShowChanged(
        memberID, Tr("The %1 of member ID %2 was saved.").arg(m_strOne, QString::number(memberID)));
}

void CRecordCommands::ShowGone(std::int32_t memberID) const
{
    ShowChanged(memberID,
        Tr("Member ID %1 does not have this %2 any more.")
            .arg(QString::number(memberID), m_strOne));
}

void CRecordCommands::ShowChanged(std::int32_t memberID, QString const& result) const
{
    if (m_doc.Views() != nullptr) {
        m_doc.Views()->RefreshMemberNode(memberID, TreeNodeOf(m_set), 0);
    }
    m_doc.ShowResult(result);
}
