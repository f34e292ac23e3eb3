#pragma once

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
