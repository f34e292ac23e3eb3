#include "ui/MemberIDDlg.h"

#include "ui_MemberIDDlg.h"

#include "store/sets/DAOSmMem.h"
#include "ui/Convert.h"
#include "ui/FieldExchange.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

namespace
{

constexpr CRange<std::int32_t> kMemberIDs = {1, CDAOSmMem::kLargestNumber};

} // namespace

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
    if (!TakeNumber(*m_ui->memberIDEdit, kMemberIDs, memberID)
        || (m_bMustExist && !CheckExists(memberID))) {
        return false;
    }
    m_lMemberID = memberID;
    return true;
}

bool CMemberIDDlg::CheckExists(std::int32_t memberID)
{
    CWaitCursor const wait;
    CDAOSmMem members;
    if (members.FindMember(CDAOSmMem::idMember, memberID) != 0) {
        return true;
    }
    if (!members.LastStatus()) { // that nobody has the ID is not known then
        Tell(this, tr("Error: member ID %1 could not be looked up.").arg(memberID),
            CMessageIcon::none, ToQt(members.LastStatus().Text()));
        return Refuse(m_ui->memberIDEdit, {});
    }
    return Refuse(m_ui->memberIDEdit,
        tr("Sorry, there is no member in the database\nthat matches ID %1.").arg(memberID));
}
