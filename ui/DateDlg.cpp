#include "ui/DateDlg.h"

#include "ui_DateDlg.h"

#include "ui/ControlID.h"
#include "ui/DateExchange.h"
#include "ui/Messages.h"

namespace
{

constexpr int kDialogID = 205;

} // namespace

CDateDlg::CDateDlg(QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::DateDlg>())
{
    m_ui->setupUi(this);
    SetControlID(this, kDialogID);
    RefuseWhenLeft(*m_ui->dateEdit);
}

CDateDlg::~CDateDlg() = default;

void CDateDlg::ShowFields()
{
    ShowDate(*m_ui->dateEdit, m_dtDate);
    m_ui->dateEdit->selectAll();
}

bool CDateDlg::TakeFields()
{
    auto date = m_dtDate;
    if (!TakeDate(*m_ui->dateEdit, date)
        || (m_bNoFuture && !CheckNotAfterToday(*m_ui->dateEdit, date))) {
        return false;
    }
    m_dtDate = date;
    return true;
}
