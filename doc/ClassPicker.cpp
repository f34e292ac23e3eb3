#include "doc/ClassPicker.h"

#include "doc/CorvanaDoc.h"
#include "platform/qt/DropDown.h"
#include "ui/Convert.h"
#include "ui/KeepPlace.h"
#include "ui/Messages.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>

#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kWidthBelow = 32; ///< in letters, of each list
constexpr std::array kWidthsBeside = {10, 23, 11};

} // namespace

CClassPicker::CClassPicker(QWidget* parent)
    : QWidget(parent)
    , m_lists{new CDropDown(this), new CDropDown(this), new CDropDown(this), new QLabel(this),
          new QLabel(this), new QLabel(this)}
{
    setFocusProxy(m_lists.m_pCategory);
    m_lists.m_pCategory->setObjectName(u"categoryList"_s);
    m_lists.m_pCourse->setObjectName(u"courseList"_s);
    m_lists.m_pSection->setObjectName(u"sectionList"_s);
    connect(m_lists.m_pCategory, &CDropDown::Closed, this, &CClassPicker::CategoryClosed);
    connect(m_lists.m_pCourse, &CDropDown::Closed, this, &CClassPicker::CourseClosed);
}

void CClassPicker::SetUp(CCorvanaDoc& doc, Qt::Orientation direction)
{
    m_pDoc = &doc;
    bool const isBelow = direction == Qt::Vertical;
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins({});
    int place = 0;
    for (auto const& [label, list, text] :
        {std::tuple(m_lists.m_pCategoryLabel, m_lists.m_pCategory, tr("Cat&egory:")),
            {m_lists.m_pCourseLabel, m_lists.m_pCourse, tr("Co&urse:")},
            {m_lists.m_pSectionLabel, m_lists.m_pSection, tr("&Section:")}}) {
        auto const width = isBelow ? kWidthBelow : kWidthsBeside[std::size_t(place)];
        label->setText(isBelow ? text : QString(text).remove(u'&'));
        label->setBuddy(list);
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(width);
        list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        layout->addWidget(label, isBelow ? place : 0, isBelow ? 0 : 2 * place);
        layout->addWidget(list, isBelow ? place : 0, isBelow ? 1 : 2 * place + 1);
        layout->setColumnStretch(isBelow ? 1 : 2 * place + 1, width);
        KeepPlaceWhenHidden(*label);
        KeepPlaceWhenHidden(*list);
        ++place;
    }
}

void CClassPicker::AlignWith(QLabel const& label)
{
    m_lists.m_pCategoryLabel->setMinimumWidth(label.sizeHint().width());
}

void CClassPicker::ShowFresh()
{
    m_pDoc->FillCategoryList(m_lists);
    NoteFilled();
    m_lstFilled = Names();
}

void CClassPicker::ShowStored(
    std::string const& category, std::string const& course, std::string const& section)
{
    m_pDoc->FillClassLists(m_lists, category, course, section);
    NoteFilled();
    m_lstFilled = Names();
}

std::string CClassPicker::Category() const
{
    return FromQt(m_lists.m_pCategory->currentText());
}

std::string CClassPicker::Course() const
{
    return FromQt(m_lists.m_pCourse->currentText());
}

std::string CClassPicker::Section() const
{
    return FromQt(m_lists.m_pSection->currentText());
}

bool CClassPicker::IsAsFilled() const
{
    return Names() == m_lstFilled;
}

bool CClassPicker::IsBlank() const
{
    return m_lists.m_pCategory->currentText().isEmpty()
        && m_lists.m_pCategory->currentData().toInt() == 0;
}

bool CClassPicker::HasRealClass() const
{
    return !m_lists.m_pCategory->currentText().isEmpty()
        && m_lists.m_pCategory->currentData().toInt() != 0;
}

bool CClassPicker::CheckRealClass()
{
    return HasRealClass()
        || Refuse(m_lists.m_pCategory, tr("Error: select a category, course, and/or section"));
}

void CClassPicker::CategoryClosed()
{
    if (m_lists.m_pCategory->currentIndex() != m_nFilledCategory) {
        m_pDoc->FillCourseList(m_lists);
        NoteFilled();
        Q_EMIT CategoryChosen();
    }
}

void CClassPicker::CourseClosed()
{
    if (m_lists.m_pCourse->currentIndex() != m_nFilledCourse) {
        m_pDoc->FillSectionList(m_lists);
        NoteFilled();
    }
}

void CClassPicker::NoteFilled()
{
    m_nFilledCategory = m_lists.m_pCategory->currentIndex();
    m_nFilledCourse = m_lists.m_pCourse->currentIndex();
}
