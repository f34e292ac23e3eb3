#include "members/MemberProfilePg.h"

#include "ui_MemberProfilePg.h"

#include "store/Today.h"
#include "store/services/MemberServices.h"
#include "store/text/StateAbbrev.h"
#include "ui/Convert.h"
#include "ui/MemberLookup.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

CMemberProfilePg::CMemberProfilePg(QWidget* parent)
    : CPropertyPage(parent)
    , m_dtBirthday(Today())
    , m_ui(std::make_unique<Ui::MemberProfilePg>())
{
    m_ui->setupUi(this);
    m_ui->birthdayEdit->SetNeverInFuture(true);
    CStateAbbrev const states;
    for (int i = 0; i < states.Count(); ++i) {
        m_ui->stateList->addItem(ToQt(states.GetStAbbrev(i)));
    }
    m_fields.Number(*m_ui->memberIDEdit, m_lMemberID, kMemberNumbers);
    m_fields.Number(*m_ui->workoutNumEdit, m_lWorkoutNum, kMemberNumbers);
    m_fields.Text(*m_ui->firstNameEdit, m_strFirstName, 12);
    m_fields.Text(*m_ui->middleInitEdit, m_strMiddleInit, 1);
    m_fields.Text(*m_ui->lastNameEdit, m_strLastName, 20);
    m_fields.Pair(*m_ui->maleRadio, *m_ui->femaleRadio, m_bMale);
    m_fields.Text(*m_ui->addressEdit, m_strAddress, 28);
    m_fields.Text(*m_ui->phoneEdit, m_strPhone, 14);
    m_fields.Text(*m_ui->cityEdit, m_strCity, 16);
    m_fields.Choice(*m_ui->stateList, m_strState);
    m_fields.Text(*m_ui->zipEdit, m_strZip, 10);
    m_fields.Date(*m_ui->birthdayEdit, m_dtBirthday);
    m_fields.Text(*m_ui->emailEdit, m_strEmail, 32);
    m_fields.Pair(*m_ui->currentRadio, *m_ui->pastRadio, m_bCurrent);
    m_fields.Pair(*m_ui->employeeYesRadio, *m_ui->employeeNoRadio, m_bEmployee);
    m_fields.Pair(*m_ui->releaseYesRadio, *m_ui->releaseNoRadio, m_bRelease);
    m_fields.Text(*m_ui->emergNameEdit, m_strEmergName, 32);
    m_fields.Text(*m_ui->emergPhoneEdit, m_strEmergPhone, 14);
    m_fields.Text(*m_ui->physicianEdit, m_strPhysician, 32);
    m_fields.Text(*m_ui->messageEdit, m_strMessage, int(CDAOMsg::kLongestMessage));
}

CMemberProfilePg::~CMemberProfilePg() = default;

void CMemberProfilePg::ShowFields()
{
    m_lEntryMemberID = m_lMemberID;
    m_lEntryWorkoutNum = m_lWorkoutNum;
    m_fields.Show();
}

bool CMemberProfilePg::TakeFields()
{
    CWaitCursor const wait;
    if (!m_fields.Take() || !CheckNames() || !CheckNumbers()) {
        return false;
    }
    auto const& birthday = m_fields.Taken(m_dtBirthday);
    if (birthday.ChkStatus() && birthday > CEFOleDateTime::GetCurrentTime()) {
        return Refuse(m_ui->birthdayEdit, tr("Error: invalid birthday"));
    }
    m_fields.Commit();
    return true;
}

bool CMemberProfilePg::CheckNames() const
{
    if (m_fields.Taken(m_strFirstName).empty()) {
        return Refuse(m_ui->firstNameEdit, tr("Error: enter first name"));
    }
    if (m_fields.Taken(m_strLastName).empty()) {
        return Refuse(m_ui->lastNameEdit, tr("Error: enter last name"));
    }
    return true;
}

bool CMemberProfilePg::CheckNumbers()
{
    auto const memberID = m_fields.Taken(m_lMemberID);
    auto const workoutNum = m_fields.Taken(m_lWorkoutNum);
    if (memberID != m_lEntryMemberID && IsMember(memberID, CDAOSmMem::idMember)) {
        return RefuseMemberID(memberID);
    }
    if (workoutNum != m_lEntryWorkoutNum && IsMember(workoutNum, CDAOSmMem::idWorkout)) {
        return RefuseWorkoutNum(workoutNum);
    }
    return true;
}

bool CMemberProfilePg::RefuseMemberID(std::int32_t number)
{
    return Refuse(m_ui->memberIDEdit,
        tr("Error: Member ID %1 is already\nin use for an existing member").arg(number));
}

bool CMemberProfilePg::RefuseWorkoutNum(std::int32_t number)
{
    return Refuse(m_ui->workoutNumEdit,
        tr("Error: Workout ID %1 is already\nin use for an existing member").arg(number));
}
