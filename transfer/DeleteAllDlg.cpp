#include "transfer/DeleteAllDlg.h"

#include "ui_DeleteAllDlg.h"

#include "ui/MemberLookup.h"

#include <QPushButton>

CDeleteAllDlg::CDeleteAllDlg(QString const& caption, QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::DeleteAllDlg>())
{
    m_ui->setupUi(this);
    setWindowTitle(caption);
    m_ui->buttonBox->button(QDialogButtonBox::Cancel)->setDefault(true);
    TakeDigitsOnly(*m_ui->memberIDEdit);
    connect(m_ui->allMembersRadio, &QRadioButton::toggled, m_ui->memberIDEdit,
        [this](bool all) { SetReadOnly(*m_ui->memberIDEdit, all); });
    connect(m_ui->oneMemberRadio, &QRadioButton::clicked, m_ui->memberIDEdit,
        qOverload<>(&QLineEdit::setFocus));
}

CDeleteAllDlg::~CDeleteAllDlg() = default;

void CDeleteAllDlg::ShowFields()
{
    ShowPair(*m_ui->allMembersRadio, *m_ui->oneMemberRadio, m_lMemberID == 0);
    SetReadOnly(*m_ui->memberIDEdit, m_lMemberID == 0);
}

bool CDeleteAllDlg::TakeFields()
{
    std::int32_t memberID = 0;
    if (m_ui->oneMemberRadio->isChecked()) {
        auto& field = *m_ui->memberIDEdit;
        if (!TakeNumber(field, CRange<std::int32_t>{0, CDAOSmMem::kLargestNumber}, memberID)
            || (memberID != 0 && !CheckMember(field, memberID))) {
            return false;
        }
    }
    m_lMemberID = memberID;
    return true;
}
