#include "doc/MemberClassDlg.h"

#include "ui_MemberClassDlg.h"

#include "doc/CorvanaDoc.h"
#include "ui/ControlID.h"
#include "ui/Convert.h"

namespace
{

constexpr int kDialogID = 191;

} // namespace

CMemberClassDlg::CMemberClassDlg(CCorvanaDoc& doc, QWidget* parent)
    : CDialog(parent)
    , m_doc(doc)
    , m_ui(std::make_unique<Ui::MemberClassDlg>())
{
    m_ui->setupUi(this);
    SetControlID(this, kDialogID);
}

CMemberClassDlg::~CMemberClassDlg() = default;

void CMemberClassDlg::FillLists()
{
    m_doc.FillMemberClassList(
        m_lMemberID, m_nClassIndex, *m_ui->classList, m_bWithUnknown, m_bWithAll);
}

bool CMemberClassDlg::TakeFields()
{
    if (m_ui->classList->currentIndex() < 0) {
        CDAOCls::GetClassIndexString(m_nClassIndex, m_strClass);
        return true;
    }
    m_nClassIndex = static_cast<std::uint8_t>(m_ui->classList->currentData().toUInt());
    m_strClass = FromQt(m_ui->classList->currentText());
    return true;
}
