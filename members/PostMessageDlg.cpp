#include "members/PostMessageDlg.h"

#include "ui_PostMessageDlg.h"

#include "store/sets/DAOMsg.h"

CPostMessageDlg::CPostMessageDlg(QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::PostMessageDlg>())
{
    m_ui->setupUi(this);
    m_fields.Text(*m_ui->messageEdit, m_strMessage, int(CDAOMsg::kLongestMessage));
    m_fields.Pair(*m_ui->replaceYesRadio, *m_ui->replaceNoRadio, m_bReplace);
}

CPostMessageDlg::~CPostMessageDlg() = default;

void CPostMessageDlg::ShowFields()
{
    m_fields.Show();
}

bool CPostMessageDlg::TakeFields()
{
    if (!m_fields.Take()) {
        return false;
    }
    m_fields.Commit();
    return true;
}
