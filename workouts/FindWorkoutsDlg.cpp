#include "workouts/FindWorkoutsDlg.h"

#include "ui_FindWorkoutsDlg.h"

#include "ui/DateExchange.h"
#include "ui/MemberLookup.h"

CFindWorkoutsDlg::CFindWorkoutsDlg(QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::FindWorkoutsDlg>())
{
    m_ui->setupUi(this);
    m_fields.Buttons<std::int32_t>(
        {{m_ui->okAllRadio, CDAOWk::okAll}, {m_ui->okYesRadio, CDAOWk::okYes},
            {m_ui->okNoRadio, CDAOWk::okNo}},
        m_nOk);
    m_fields.Date(*m_ui->fromEdit, m_dtFrom);
    m_fields.Date(*m_ui->toEdit, m_dtTo);
    TakeDigitsOnly(*m_ui->memberIDEdit);
    connect(m_ui->allMembersRadio, &QRadioButton::toggled, m_ui->memberIDEdit,
        [this](bool all) { SetReadOnly(*m_ui->memberIDEdit, all); });
    connect(m_ui->oneMemberRadio, &QRadioButton::clicked, m_ui->memberIDEdit,
        qOverload<>(&QLineEdit::setFocus));
}

CFindWorkoutsDlg::~CFindWorkoutsDlg() = default;

void CFindWorkoutsDlg::ShowFields()
{
    m_fields.Show();
    ShowPair(*m_ui->allMembersRadio, *m_ui->oneMemberRadio, m_lMemberID == 0);
    m_ui->memberIDEdit->setText(m_lMemberID != 0 ? QString::number(m_lMemberID) : QString());
}

bool CFindWorkoutsDlg::TakeFields()
{
    std::int32_t memberID = 0;
    if (!m_fields.Take()
        || !CheckDateRange(
            *m_ui->fromEdit, m_fields.Taken(m_dtFrom), *m_ui->toEdit, m_fields.Taken(m_dtTo))
        || !TakeMember(memberID)) {
        return false;
    }
    m_fields.Commit();
    m_lMemberID = memberID;
    return true;
}

bool CFindWorkoutsDlg::TakeMember(std::int32_t& memberID)
{
    auto& field = *m_ui->memberIDEdit;
    return m_ui->allMembersRadio->isChecked()
        || (TakeNumber(field, kMemberNumbers, memberID) && CheckMember(field, memberID));
}
