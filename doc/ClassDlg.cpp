#include "doc/ClassDlg.h"

#include "ui_ClassDlg.h"

#include "ui/ControlID.h"

namespace
{

constexpr int kDialogID = 152;

} // namespace

CClassDlg::CClassDlg(CCorvanaDoc& doc, QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::ClassDlg>())
{
    m_ui->setupUi(this);
    SetControlID(this, kDialogID);
    m_ui->classPicker->SetUp(doc, Qt::Vertical);
}

CClassDlg::~CClassDlg() = default;

void CClassDlg::FillLists()
{
    m_ui->classPicker->ShowFresh();
}

bool CClassDlg::TakeFields()
{
    if (!m_ui->classPicker->CheckRealClass()) {
        return false;
    }
    m_strCategory = m_ui->classPicker->Category();
    m_strCourse = m_ui->classPicker->Course();
    m_strSection = m_ui->classPicker->Section();
    return true;
}
