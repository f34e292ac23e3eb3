#include "doc/ClassLists.h"
#include "doc/CorvanaDoc.h"
#include "doc/MemberClassDlg.h"
#include "platform/qt/DropDown.h"
#include "store/services/MemberServices.h"
#include "store/sets/SetCloser.h"
#include "ui/Convert.h"
#include "ui/FieldExchange.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"
#include "ui/WaitDlg.h"

#include <QLabel>

namespace
{

/// Calls addRow on each row of a selection that is still there.
template <typename AddRow>
void AddRows(CDAOEFSet& set, int count, AddRow const& addRow)
{
    bool isThere = count > 0;
    for (int row = 0; row < count; ++row) {
        if (isThere) {
            addRow();
        }
        isThere = set.Op(CDAOEFSet::opMoveNext);
    }
}

void SelectFirst(QComboBox& list)
{
    list.setCurrentIndex(list.count() > 0 ? 0 : -1);
}

void AddCategories(CDAOCat& set, QComboBox& list)
{
    CSetCloser const close(set);
    AddRows(
        set, set.FindCategories(0), [&] { list.addItem(ToQt(set.m_strCatName), set.m_nCatID); });
}

/// The courses of the selected category, none when that is not one of the catalogue; selects the
/// first one.
void AddCourses(CDAOCour& set, CClassLists const& lists)
{
    CSetCloser const close(set);
    auto const category = lists.m_pCategory->currentData().toInt();
    if (category != 0) {
        AddRows(set, set.FindCourses(category, 0),
            [&] { lists.m_pCourse->addItem(ToQt(set.m_strCourName), set.m_nCourID); });
    }
    SelectFirst(*lists.m_pCourse);
}

void AddSections(CDAOSec& set, CClassLists const& lists)
{
    CSetCloser const close(set);
    auto const course = lists.m_pCourse->currentData().toInt();
    if (course != 0) {
        AddRows(set, set.FindSections(course),
            [&] { lists.m_pSection->addItem(ToQt(set.m_strSecName)); });
    }
    SelectFirst(*lists.m_pSection);
}

void Empty(CClassLists const& lists)
{
    for (auto* const list : {lists.m_pCategory, lists.m_pCourse, lists.m_pSection}) {
        list->clear();
    }
}

void ShowFilled(CClassLists const& lists)
{
    for (auto const& [label, list] : {std::pair(lists.m_pCategoryLabel, lists.m_pCategory),
             {lists.m_pCourseLabel, lists.m_pCourse}, {lists.m_pSectionLabel, lists.m_pSection}}) {
        label->setVisible(list->count() > 0);
        list->setVisible(list->count() > 0);
    }
}

/// Selects a stored name, the first entry for an empty one. A name that the catalogue lacks, or
/// that stands below such a one, becomes a last entry. Returns whether the parts so far are of the
/// catalogue.
bool SelectStored(QComboBox& list, std::string const& name, bool isKnownSoFar)
{
    if (name.empty()) {
        SelectFirst(list);
        return isKnownSoFar;
    }
    if (isKnownSoFar && SelectBeginning(list, ToQt(name))) {
        return true;
    }
    list.addItem(ToQt(name), 0);
    list.setCurrentIndex(list.count() - 1);
    return false;
}

} // namespace

bool TakeMemberClass(QComboBox& list, std::uint8_t& classIndex)
{
    if (list.currentIndex() < 0) {
        return Refuse(&list,
            QCoreApplication::translate("ClassLists", "Error: select a category, course, section"));
    }
    classIndex = static_cast<std::uint8_t>(list.currentData().toUInt());
    return true;
}

void CCorvanaDoc::FillCategoryList(CClassLists const& lists)
{
    CWaitCursor const wait;
    Empty(lists);
    lists.m_pCategory->addItem(QString(), 0);
    AddCategories(m_setCat, *lists.m_pCategory);
    lists.m_pCategory->setCurrentIndex(0);
    ShowFilled(lists);
}

void CCorvanaDoc::FillCourseList(CClassLists const& lists)
{
    CWaitCursor const wait;
    lists.m_pCourse->clear();
    AddCourses(m_setCour, lists);
    FillSectionList(lists);
}

void CCorvanaDoc::FillSectionList(CClassLists const& lists)
{
    CWaitCursor const wait;
    lists.m_pSection->clear();
    AddSections(m_setSec, lists);
    ShowFilled(lists);
}

void CCorvanaDoc::FillClassLists(CClassLists const& lists, std::string const& category,
    std::string const& course, std::string const& section)
{
    CWaitCursor const wait;
    Empty(lists);
    AddCategories(m_setCat, *lists.m_pCategory);
    bool isKnown = SelectStored(*lists.m_pCategory, category, true);
    AddCourses(m_setCour, lists);
    isKnown = SelectStored(*lists.m_pCourse, course, isKnown);
    AddSections(m_setSec, lists);
    SelectStored(*lists.m_pSection, section, isKnown);
    ShowFilled(lists);
}

void CCorvanaDoc::FillMemberClassList(
    std::int32_t memberID, std::uint8_t classIndex, QComboBox& list, bool withUnknown, bool withAll)
{
    CWaitCursor const wait;
    CSetCloser const close(m_setCls);
    list.clear();
    int const count = m_setCls.FindClasses(memberID);
    if (count == 0) {
        return;
    }
    int selected = 0;
    std::string text;
    auto const addSpecial = [&](std::uint8_t index, bool wanted) {
        if (classIndex == index || wanted) {
            CDAOCls::GetClassIndexString(index, text);
            list.addItem(ToQt(text), index);
            selected = list.count() - 1;
        }
    };
    addSpecial(CDAOCls::kUnknown, withUnknown);
    addSpecial(CDAOCls::kAllClasses, withAll);
    AddRows(m_setCls, count, [&] {
        m_setCls.BuildClassString(text);
        list.addItem(ToQt(text), m_setCls.m_ClassIndex);
        if (m_setCls.m_ClassIndex == classIndex) {
            selected = list.count() - 1;
        }
    });
    list.setCurrentIndex(selected);
}

std::optional<CClassChoice> CCorvanaDoc::AskMemberClass(std::int32_t memberID)
{
    CMemberClassDlg dialog(*this, Window());
    dialog.m_lMemberID = memberID;
    dialog.m_bWithUnknown = true;
    dialog.m_bWithAll = true;
    {
        CWaitCursor const wait;
        CSetCloser const close(m_setCls);
        if (m_setCls.FindClasses(memberID) == 1) {
            dialog.m_nClassIndex = m_setCls.m_ClassIndex;
        }
        if (!m_setCls.LastStatus()) {
            Tell(Window(),
                tr("Error: the classes of Member ID %1 could not be read.").arg(memberID),
                CMessageIcon::none, ToQt(m_setCls.LastStatus().Text()));
            return std::nullopt;
        }
    }
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return CClassChoice{dialog.m_nClassIndex, dialog.m_strClass};
}

bool CCorvanaDoc::DeleteMemberClass(std::int32_t memberID, std::uint8_t,
    std::string const& category, std::string const& course, std::string const& section)
{
    CWaitCursor const wait;
    CSetCloser const close(m_setCls);
    bool const found = m_setCls.FindClasses(memberID, category, course, section) > 0;
    auto status = m_setCls.LastStatus();
    if (found) {
        if (!Ask(nullptr,
                tr("Are you sure you want to delete\nthe class: %1 %2 %3?")
                    .arg(ToQt(category), ToQt(course), ToQt(section)),
                CQuestion::destroying)) {
            return false;
        }
        bool const withRecords = Ask(nullptr,
            tr("Do you want to permanently delete the member's\n"
               "workout, evaluation, and body composition data\n"
               "that have been recorded for the class?"),
            CQuestion::destroying);
        CWaitDlg const window(tr("Updating member data, please wait..."));
        status = DeleteClass(memberID, category, course, section, withRecords);
    }
    if (!status) {
        Tell(nullptr,
            tr("Error: the class was not deleted.\n"
               "The member's data are as they were before."),
            CMessageIcon::none, ToQt(status.Text()));
    }
    return found && status;
}
