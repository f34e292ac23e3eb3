#include "members/MemberFindPg.h"

#include "ui_MemberFindPg.h"

#include "store/sets/DAOSmMem.h"
#include "store/text/StateAbbrev.h"
#include "ui/Convert.h"
#include "ui/WaitCursor.h"

#include <QLineEdit>

#include <utility>

namespace
{

using CForm = Ui::MemberFindPg;

struct CTextCriterion
{
    CMemberSearchData::search m_criterion;
    QLineEdit* CForm::*m_edit; ///< null for the list of states
    int m_nLetters;
};

constexpr std::array<CTextCriterion, 9> kTexts = {{
    {CMemberSearchData::sAddress, &CForm::addressEdit, 28},
    {CMemberSearchData::sCity, &CForm::cityEdit, 16},
    {CMemberSearchData::sEmail, &CForm::emailEdit, 32},
    {CMemberSearchData::sFirstName, &CForm::firstNameEdit, 12},
    {CMemberSearchData::sLastName, &CForm::lastNameEdit, 20},
    {CMemberSearchData::sPhone, &CForm::phoneEdit, 14},
    {CMemberSearchData::sPhysician, &CForm::physicianEdit, 32},
    {CMemberSearchData::sZip, &CForm::zipEdit, 10},
    {CMemberSearchData::sState, nullptr, 0},
}};

constexpr CRange<std::int32_t> kNumbers = {0, CDAOSmMem::kLargestNumber};
constexpr CRange<std::int32_t> kAges = {0, 125};

} // namespace

CMemberFindPg::CMemberFindPg(CMemberSearchData& searchData, QWidget* parent)
    : CSearchPg(searchData, parent)
    , m_ui(std::make_unique<CForm>())
{
    m_ui->setupUi(this);
    CStateAbbrev const states;
    m_ui->stateList->addItem(QString());
    for (int i = 0; i < states.Count(); ++i) {
        m_ui->stateList->addItem(ToQt(states.GetStAbbrev(i)));
    }
    m_fields.Number(*m_ui->memberIDEdit, m_lMemberID, kNumbers);
    m_fields.Number(*m_ui->workoutNumEdit, m_lWorkoutNum, kNumbers);
    for (std::size_t i = 0; i < kTexts.size(); ++i) {
        if (auto const& text = kTexts[i]; text.m_edit != nullptr) {
            m_fields.Text(*(m_ui.get()->*text.m_edit), m_lstTexts[i], text.m_nLetters);
        } else {
            m_fields.Choice(*m_ui->stateList, m_lstTexts[i]);
        }
    }
    m_fields.Number(*m_ui->ageFromSpin, m_nAgeFrom, kAges);
    m_fields.Number(*m_ui->ageToSpin, m_nAgeTo, kAges);
    AddPair(*m_ui->maleRadio, *m_ui->femaleRadio, CMemberSearchData::sSex);
    AddPair(*m_ui->currentRadio, *m_ui->pastRadio, CMemberSearchData::sStatus);
    AddPair(*m_ui->employeeYesRadio, *m_ui->employeeNoRadio, CMemberSearchData::sEmployee);
    AddPair(*m_ui->releaseYesRadio, *m_ui->releaseNoRadio, CMemberSearchData::sRelease);
}

CMemberFindPg::~CMemberFindPg() = default;

bool CMemberFindPg::TakeFields()
{
    if (!m_fields.Take()) {
        return false;
    }
    m_fields.Commit();
    AddCriteria();
    return true;
}

void CMemberFindPg::AddCriteria()
{
    CWaitCursor const wait;
    for (std::size_t i = 0; i < kTexts.size(); ++i) {
        if (!m_lstTexts[i].empty()) {
            m_search.SetSearchCriteria(
                kTexts[i].m_criterion, m_lstTexts[i].c_str(), nullptr, nullptr);
        }
    }
    for (auto const& [criterion, number] : {std::pair(CMemberSearchData::sMemberID, m_lMemberID),
             {CMemberSearchData::sWorkoutNumber, m_lWorkoutNum}}) {
        if (number != 0) {
            m_search.SetSearchCriteria(criterion, number);
        }
    }
    if (m_nAgeFrom != 0 || m_nAgeTo != 0) {
        m_search.SetSearchCriteria(CMemberSearchData::sAge, m_nAgeFrom, m_nAgeTo);
    }
}
