#include "members/MemberProfilePg.h"

#include "ui_MemberProfilePg.h"

#include "store/services/MemberServices.h"
#include "store/text/StateAbbrev.h"
#include "ui/Convert.h"
#include "ui/DateExchange.h"
#include "ui/FieldExchange.h"
#include "ui/Messages.h"
#include "ui/WaitCursor.h"

#include <array>

namespace
{

using CForm = Ui::MemberProfilePg;
using CPage = CMemberProfilePg;

constexpr CRange<std::int32_t> kNumbers = {1, CDAOSmMem::kLargestNumber};

struct CTextField
{
    QLineEdit* CForm::*m_edit;
    std::string CPage::*m_value;
    int m_nLimit;
};

constexpr std::array kTextFields = {
    CTextField{&CForm::firstNameEdit, &CPage::m_strFirstName, 12},
    CTextField{&CForm::middleInitEdit, &CPage::m_strMiddleInit, 1},
    CTextField{&CForm::lastNameEdit, &CPage::m_strLastName, 20},
    CTextField{&CForm::addressEdit, &CPage::m_strAddress, 28},
    CTextField{&CForm::phoneEdit, &CPage::m_strPhone, 14},
    CTextField{&CForm::cityEdit, &CPage::m_strCity, 16},
    CTextField{&CForm::zipEdit, &CPage::m_strZip, 10},
    CTextField{&CForm::emailEdit, &CPage::m_strEmail, 32},
    CTextField{&CForm::emergNameEdit, &CPage::m_strEmergName, 32},
    CTextField{&CForm::emergPhoneEdit, &CPage::m_strEmergPhone, 14},
    CTextField{&CForm::physicianEdit, &CPage::m_strPhysician, 32},
};

struct CPair
{
    QRadioButton* CForm::*m_whenTrue;
    QRadioButton* CForm::*m_whenFalse;
    bool CPage::*m_value;
};

constexpr std::array kPairs = {
    CPair{&CForm::maleRadio, &CForm::femaleRadio, &CPage::m_bMale},
    CPair{&CForm::currentRadio, &CForm::pastRadio, &CPage::m_bCurrent},
    CPair{&CForm::employeeYesRadio, &CForm::employeeNoRadio, &CPage::m_bEmployee},
    CPair{&CForm::releaseYesRadio, &CForm::releaseNoRadio, &CPage::m_bRelease},
};

CEFOleDateTime Today()
{
    auto today = CEFOleDateTime::GetCurrentTime();
    today.Midnight();
    return today;
}

} // namespace

CMemberProfilePg::CMemberProfilePg(QWidget* parent)
    : CPropertyPage(parent)
    , m_dtBirthday(Today())
    , m_ui(std::make_unique<CForm>())
{
    m_ui->setupUi(this);
    TakeDigitsOnly(*m_ui->memberIDEdit);
    TakeDigitsOnly(*m_ui->workoutNumEdit);
    for (auto const& text : kTextFields) {
        LimitText(*(m_ui.get()->*text.m_edit), text.m_nLimit);
    }
    LimitText(*m_ui->messageEdit, int(CDAOMsg::kLongestMessage));
    m_ui->birthdayEdit->SetNeverInFuture(true);
    RefuseWhenLeft(*m_ui->birthdayEdit);
    CStateAbbrev const states;
    for (int i = 0; i < states.Count(); ++i) {
        m_ui->stateList->addItem(ToQt(states.GetStAbbrev(i)));
    }
}

CMemberProfilePg::~CMemberProfilePg() = default;

void CMemberProfilePg::ShowFields()
{
    m_lEntryMemberID = m_lMemberID;
    m_lEntryWorkoutNum = m_lWorkoutNum;
    m_ui->memberIDEdit->setText(QString::number(m_lMemberID));
    m_ui->workoutNumEdit->setText(QString::number(m_lWorkoutNum));
    for (auto const& text : kTextFields) {
        ShowText(*(m_ui.get()->*text.m_edit), this->*text.m_value);
    }
    SelectBeginning(*m_ui->stateList, ToQt(m_strState));
    ShowDate(*m_ui->birthdayEdit, m_dtBirthday);
    for (auto const& pair : kPairs) {
        ShowPair(
            *(m_ui.get()->*pair.m_whenTrue), *(m_ui.get()->*pair.m_whenFalse), this->*pair.m_value);
    }
    ShowText(*m_ui->messageEdit, m_strMessage);
}

bool CMemberProfilePg::TakeFields()
{
    CWaitCursor const wait;
    std::int32_t memberID = 0;
    std::int32_t workoutNum = 0;
    if (!TakeNumber(*m_ui->memberIDEdit, kNumbers, memberID)
        || !TakeNumber(*m_ui->workoutNumEdit, kNumbers, workoutNum) || !CheckNames()) {
        return false;
    }
    if (memberID != m_lEntryMemberID && IsMember(memberID, CDAOSmMem::idMember)) {
        return RefuseMemberID(memberID);
    }
    if (workoutNum != m_lEntryWorkoutNum && IsMember(workoutNum, CDAOSmMem::idWorkout)) {
        return RefuseWorkoutNum(workoutNum);
    }
    auto birthday = m_dtBirthday;
    if (!TakeDate(*m_ui->birthdayEdit, birthday)) {
        return false;
    }
    if (birthday.ChkStatus() && birthday > CEFOleDateTime::GetCurrentTime()) {
        return Refuse(m_ui->birthdayEdit, tr("Error: invalid birthday"));
    }
    m_lMemberID = memberID;
    m_lWorkoutNum = workoutNum;
    for (auto const& text : kTextFields) {
        this->*text.m_value = TakeText(*(m_ui.get()->*text.m_edit), this->*text.m_value);
    }
    m_strState = FromQt(m_ui->stateList->SelectedText());
    m_dtBirthday = birthday;
    for (auto const& pair : kPairs) {
        this->*pair.m_value = (m_ui.get()->*pair.m_whenTrue)->isChecked();
    }
    m_strMessage = TakeText(*m_ui->messageEdit, m_strMessage);
    return true;
}

bool CMemberProfilePg::CheckNames() const
{
    if (TakeText(*m_ui->firstNameEdit, m_strFirstName).empty()) {
        return Refuse(m_ui->firstNameEdit, tr("Error: enter first name"));
    }
    if (TakeText(*m_ui->lastNameEdit, m_strLastName).empty()) {
        return Refuse(m_ui->lastNameEdit, tr("Error: enter last name"));
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
