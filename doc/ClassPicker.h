#pragma once

#include "doc/ClassLists.h"
#include "ui/FieldExchange.h"

#include <QWidget>

#include <array>
#include <string>

class CCorvanaDoc;

/// The bonuses of one kind that a form takes for a class.
constexpr CRange<std::int32_t> kClassBonuses = {0, 99};

/// Three linked drop-down lists for a class of the catalogue: category, course and section, named
/// categoryList, courseList and sectionList. A choice of a category fills the courses and sections
/// below it, one of a course its sections; a list that closes without a new choice changes nothing.
/// Lists with nothing to choose hide and keep their place. What is shown is what is taken.
class CClassPicker : public QWidget
{
    Q_OBJECT
public:
    explicit CClassPicker(QWidget* parent = nullptr);

    /// Before anything else. The document has the catalogue and must live longer. Below each other
    /// the labels have mnemonics; beside each other, where a form has several pickers, none.
    void SetUp(CCorvanaDoc& doc, Qt::Orientation direction);

    /// The labels of lists below each other are at least as wide as that label of the same form.
    void AlignWith(QLabel const& label);

    /// For a fresh choice, with the empty entry selected.
    void ShowFresh();
    /// A stored class, also one that the catalogue does not have. An empty part shows its first
    /// entry.
    void ShowStored(
        std::string const& category, std::string const& course, std::string const& section);

    // What is shown, empty where a list is hidden.
    std::string Category() const;
    std::string Course() const;
    std::string Section() const;

    /// The lists show what they were last filled with.
    bool IsAsFilled() const;
    /// The entry that is no category was chosen, or stands there still.
    bool IsBlank() const;
    /// The category shown is one of the catalogue.
    bool HasRealClass() const;
    /// Refuses anything else: message, focus to the categories, false.
    bool CheckRealClass();

    CClassLists const& Lists() const { return m_lists; }

Q_SIGNALS:
    /// The user chose another category.
    void CategoryChosen();

private:
    using CNames = std::array<std::string, 3>;

    CNames Names() const { return {Category(), Course(), Section()}; }
    void CategoryClosed();
    void CourseClosed();
    void NoteFilled();

    CCorvanaDoc* m_pDoc = nullptr;
    CClassLists m_lists = {};
    CNames m_lstFilled;
    int m_nFilledCategory = -1; ///< the places of the choices that the lists below were filled for
    int m_nFilledCourse = -1;
};
