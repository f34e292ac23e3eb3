#include "ui/MemberIDDlg.h"

#include "ui_MemberIDDlg.h"

#include "ui/MemberLookup.h"

CMemberIDDlg::CMemberIDDlg(QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::MemberIDDlg>())
{
    m_ui->setupUi(this);
    TakeDigitsOnly(*m_ui->memberIDEdit);
}

CMemberIDDlg::~CMemberIDDlg() = default;

void CMemberIDDlg::ShowFields()
{
    m_ui->memberIDEdit->setText(QString::number(m_lMemberID));
    m_ui->memberIDEdit->selectAll();
}

bool CMemberIDDlg::TakeFields()
{
    std::int32_t memberID = 0;
    if (!TakeNumber(*m_ui->memberIDEdit, kMemberNumbers, memberID)
        || (m_bMustExist && !CheckMember(*m_ui->memberIDEdit, memberID))) {
        return false;
    }
    m_lMemberID = memberID;
    return true;
}
