#include "doc/PasswordDlg.h"

#include "ui_PasswordDlg.h"

#include "ui/ControlID.h"

namespace
{

constexpr int kDialogID = 141;

} // namespace

CPasswordDlg::CPasswordDlg(QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::PasswordDlg>())
{
    m_ui->setupUi(this);
    SetControlID(this, kDialogID);
}

CPasswordDlg::~CPasswordDlg() = default;

void CPasswordDlg::ShowFields()
{
    m_ui->passwordEdit->setText(m_strPassword);
    m_ui->passwordEdit->setFocus();
    m_ui->passwordEdit->selectAll();
}

bool CPasswordDlg::TakeFields()
{
    m_strPassword = m_ui->passwordEdit->text();
    return true;
}
