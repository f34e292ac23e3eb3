#include "doc/RecordListDlg.h"

#include "doc/CorvanaDoc.h"
#include "ui/Convert.h"

namespace
{

constexpr std::size_t kMostNames = 200'000; // some 20 MB

} // namespace

std::string ListName(
    std::string const& last, std::string const& first, std::string const& middleInit)
{
    auto name = last + ", " + first;
    return middleInit.empty() ? name : name + ' ' + middleInit;
}

CRecordListDlg::CRecordListDlg(
    CCorvanaDoc& doc, CDAOFileSet& found, std::unique_ptr<CDAOEFSet> row, CListTexts texts)
    : CListDlg(found, std::move(row), std::move(texts), ToQt(doc.m_setCenter.m_strCenterName),
        doc.Window())
    , m_doc(doc)
    , m_found(found)
{
}

void CRecordListDlg::AddDeleteAllButton()
{
    AddButton(tr("De&lete All"), "deleteAllButton", [this] {
        if (m_found.CountSet() > 0 && ConfirmHiddenRows()
            && m_doc.DeleteRecords(m_found, true) > 0) {
            accept();
        }
    });
}

void CRecordListDlg::AddLastButtons()
{
    AddPrintButton();
    AddButton(tr("&Backup"), "backupButton", [this] {
        if (ConfirmHiddenRows()) {
            m_doc.BackupRecords(m_found, CTransfer::backup);
        }
    });
    AddButton(tr("Arc&hive"), "archiveButton", [this] {
        if (ConfirmHiddenRows() && m_doc.BackupRecords(m_found, CTransfer::archive) != 0) {
            accept();
        }
    });
}

void CRecordListDlg::AddMemberColumns(std::int32_t const& memberID, int printedName, int printedID,
    std::string (*printedText)(CName const&))
{
    auto const text = [](CName const& name) {
        return name.m_strLast.empty() ? std::string()
                                      : ListName(name.m_strLast, name.m_strFirst, name.m_strMiddle);
    };
    AddColumn({1, tr("Name"), 150, [=, this, &memberID] { return text(NameOf(memberID)); },
        kByNameOfMember, tr("Name"), printedName,
        [=, this, &memberID] {
            return (printedText != nullptr ? printedText : text)(NameOf(memberID));
        }});
    AddColumn({2, tr("ID #"), 70, [&memberID] { return std::to_string(memberID); }, kByMemberID,
        tr("ID #"), printedID});
}

/// Empty for a number that no member has.
CRecordListDlg::CName const& CRecordListDlg::NameOf(std::int32_t memberID)
{
    auto const known = m_names.find(memberID);
    if (known != m_names.end()) {
        return known->second;
    }
    if (m_names.size() >= kMostNames) {
        m_names.clear();
    }
    auto& name = m_names[memberID];
    std::uint8_t status = 0;
    m_doc.m_setSmMem.GetMember(
        CDAOSmMem::idMember, memberID, name.m_strFirst, name.m_strMiddle, name.m_strLast, status);
    return name;
}
