#pragma once

#include <cstdint>

class CDropDown;
class QComboBox;
class QLabel;

/// The three drop-down lists of a class and their labels, as the document fills them. Entries of
/// categories and courses carry the number of the catalogue as their data; 0 is no entry of the
/// catalogue: the empty one, or a stored class that the catalogue does not have any more.
struct CClassLists
{
    CDropDown* m_pCategory;
    CDropDown* m_pCourse;
    CDropDown* m_pSection;
    QLabel* m_pCategoryLabel;
    QLabel* m_pCourseLabel;
    QLabel* m_pSectionLabel;
};

/// Takes the class index of the entry selected in a list of a member's classes, as
/// CCorvanaDoc::FillMemberClassList fills it; refused with a message when none is.
bool TakeMemberClass(QComboBox& list, std::uint8_t& classIndex);
