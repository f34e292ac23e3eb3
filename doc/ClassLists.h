#pragma once

class CCorvanaDoc;
class CDropDown;
class QLabel;

/// The three linked drop-down lists of a class and their labels, which belong to the form that they
/// stand in. Closing the list of categories fills the courses and sections of the chosen category,
/// closing that of courses fills the sections of the chosen course. Entries of categories and
/// courses carry the number of the catalogue as their data; 0 is no entry of the catalogue: the
/// empty one, or a stored class that the catalogue does not have any more.
struct CClassLists
{
    CDropDown* m_pCategory;
    CDropDown* m_pCourse;
    CDropDown* m_pSection;
    QLabel* m_pCategoryLabel;
    QLabel* m_pCourseLabel;
    QLabel* m_pSectionLabel;
};

/// Fills courses and sections from the document whenever the list above them closes, for as long as
/// the form lives; the document must outlive it. Lists that hide keep their place in the form.
void LinkClassLists(CCorvanaDoc& doc, CClassLists const& lists);

/// Whether the selected category is one of the catalogue.
bool HasRealClass(CClassLists const& lists);

/// Refuses lists without such a category: message, focus to the categories, false.
bool CheckRealClass(CClassLists const& lists);
