#include "members/DeleteMemberDlg.h"

#include "ui_DeleteMemberDlg.h"

#include <QPushButton>

CDeleteMemberDlg::CDeleteMemberDlg(QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::DeleteMemberDlg>())
{
    m_ui->setupUi(this);
    // Whoever still holds Enter from the question before deletes nobody.
    auto* const cancel = m_ui->buttonBox->button(QDialogButtonBox::Cancel);
    cancel->setDefault(true);
    cancel->setFocus();
}

CDeleteMemberDlg::~CDeleteMemberDlg() = default;

void CDeleteMemberDlg::ShowFields()
{
    m_ui->memberEdit->setText(m_strMember);
    m_ui->idEdit->setText(m_strID);
    m_ui->statusEdit->setText(m_strStatus);
    m_ui->expirationEdit->setText(m_strExpiration);
    m_ui->memberEdit->setCursorPosition(0);
}
