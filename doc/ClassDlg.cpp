#include "doc/ClassDlg.h"

#include "ui_ClassDlg.h"

#include "doc/ClassLists.h"
#include "doc/CorvanaDoc.h"
#include "ui/ControlID.h"
#include "ui/Convert.h"

namespace
{

constexpr int kDialogID = 152;

} // namespace

CClassDlg::CClassDlg(CCorvanaDoc& doc, QWidget* parent)
    : CDialog(parent)
    , m_doc(doc)
    , m_ui(std::make_unique<Ui::ClassDlg>())
{
    m_ui->setupUi(this);
    SetControlID(this, kDialogID);
    LinkClassLists(m_doc, Lists());
}

CClassDlg::~CClassDlg() = default;

void CClassDlg::ShowFields()
{
    m_doc.FillCategoryList(Lists());
}

bool CClassDlg::TakeFields()
{
    if (!CheckRealClass(Lists())) {
        return false;
    }
    m_strCategory = FromQt(m_ui->categoryList->currentText());
    m_strCourse = FromQt(m_ui->courseList->currentText());
    m_strSection = FromQt(m_ui->sectionList->currentText());
    return true;
}

CClassLists CClassDlg::Lists() const
{
    return {m_ui->categoryList, m_ui->courseList, m_ui->sectionList, m_ui->categoryLabel,
        m_ui->courseLabel, m_ui->sectionLabel};
}
