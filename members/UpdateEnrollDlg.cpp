#include "members/UpdateEnrollDlg.h"

#include "ui_UpdateEnrollDlg.h"

#include "store/Today.h"
#include "store/sets/DAODef.h"
#include "ui/Messages.h"

CUpdateEnrollDlg::CUpdateEnrollDlg(QWidget* parent)
    : CDialog(parent)
    , m_dtEnroll(Today())
    , m_dtExpire(m_dtEnroll)
    , m_ui(std::make_unique<Ui::UpdateEnrollDlg>())
{
    m_ui->setupUi(this);
    m_fields.Date(*m_ui->enrollEdit, m_dtEnroll);
    m_fields.Date(*m_ui->expireEdit, m_dtExpire);
    m_fields.List(*m_ui->periodList, m_nEnrollPer, CDAODef::epYear, CDAODef::GetEnrPerStr);
    m_fields.Pair(*m_ui->incentiveYesRadio, *m_ui->incentiveNoRadio, m_bIncentive);
    m_fields.Pair(*m_ui->currentRadio, *m_ui->pastRadio, m_bCurrent);
}

CUpdateEnrollDlg::~CUpdateEnrollDlg() = default;

void CUpdateEnrollDlg::ShowFields()
{
    m_fields.Show();
    m_ui->enrollEdit->selectAll();
}

bool CUpdateEnrollDlg::TakeFields()
{
    if (!m_fields.Take()) {
        return false;
    }
    if (m_fields.Taken(m_dtEnroll) > m_fields.Taken(m_dtExpire)) {
        return Refuse(
            m_ui->expireEdit, tr("Error: expiration date cannot precede enrollment date"));
    }
    m_fields.Commit();
    return true;
}
