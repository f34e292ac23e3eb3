#pragma once

#include "ui/ListDlg.h"

#include <cstdint>
#include <string>
#include <unordered_map>

class CCorvanaDoc;
class CDAOFileSet;

/// What the lists of all kinds of record share beyond any list: the document's operations on the
/// rows found, and the names of members.
class CRecordListDlg : public CListDlg
{
    Q_OBJECT
protected:
    CRecordListDlg(
        CCorvanaDoc& doc, CDAOFileSet& found, std::unique_ptr<CDAOEFSet> row, CListTexts texts);

    void AddDeleteAllButton();
    /// Print, Backup and Archive; the list closes when anything was archived.
    void AddLastButtons();
    struct CName
    {
        std::string m_strFirst;
        std::string m_strMiddle;
        std::string m_strLast;
    };
    /// The columns that every record of a member begins with, and their widths on paper. The number
    /// of the member is a field of the row.
    void AddMemberColumns(std::int32_t const& memberID, int printedName, int printedID,
        std::string (*printedText)(CName const&) = nullptr);

    void Forget() override { m_names.clear(); }

    CCorvanaDoc& m_doc;

private:
    CName const& NameOf(std::int32_t memberID);

    CDAOFileSet& m_found;
    std::unordered_map<std::int32_t, CName> m_names; ///< looked up so far
};

/// "Last, First M"
std::string ListName(
    std::string const& last, std::string const& first, std::string const& middleInit);
