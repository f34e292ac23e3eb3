#include "members/MemberEnrollFindPg.h"

#include "ui_MemberEnrollFindPg.h"

#include "store/sets/DAODef.h"
#include "ui/Messages.h"

CMemberEnrollFindPg::CMemberEnrollFindPg(
    CCorvanaDoc& doc, CMemberSearchData& searchData, QWidget* parent)
    : CSearchPg(searchData, parent)
    , m_ui(std::make_unique<Ui::MemberEnrollFindPg>())
{
    m_ui->setupUi(this);
    m_ui->enrollFromField->SetName(tr("Enrollment Date Range from"));
    m_ui->enrollToField->SetName(tr("Enrollment Date Range to"));
    m_ui->expireFromField->SetName(tr("Expiration Date Range from"));
    m_ui->expireToField->SetName(tr("Expiration Date Range to"));
    m_ui->classPicker->SetUp(doc, Qt::Vertical);
    m_fields.Date(*m_ui->enrollFromField, m_dtEnrollFrom);
    m_fields.Date(*m_ui->enrollToField, m_dtEnrollTo);
    m_fields.Date(*m_ui->expireFromField, m_dtExpireFrom);
    m_fields.Date(*m_ui->expireToField, m_dtExpireTo);
    m_fields.List(*m_ui->periodList, m_nPeriod, CDAODef::epYear, CDAODef::GetEnrPerStr);
    AddPair(*m_ui->incentiveYesRadio, *m_ui->incentiveNoRadio, CMemberSearchData::sIncentive);
}

CMemberEnrollFindPg::~CMemberEnrollFindPg() = default;

void CMemberEnrollFindPg::FillLists()
{
    m_ui->classPicker->ShowFresh();
}

bool CMemberEnrollFindPg::TakeFields()
{
    if (!m_fields.Take() || !CheckRanges()) {
        return false;
    }
    m_fields.Commit();
    if (m_nPeriod >= 0) {
        m_search.SetSearchCriteria(
            CMemberSearchData::sPeriod, static_cast<std::uint8_t>(m_nPeriod));
    }
    AddRange(CMemberSearchData::sEnrollDate, m_dtEnrollFrom, m_dtEnrollTo);
    AddRange(CMemberSearchData::sExpireDate, m_dtExpireFrom, m_dtExpireTo);
    AddClass();
    return true;
}

bool CMemberEnrollFindPg::CheckRanges() const
{
    auto const isHalf = [this](CDate const& from, CDate const& to) {
        return m_fields.Taken(from).has_value() != m_fields.Taken(to).has_value();
    };
    if (isHalf(m_dtEnrollFrom, m_dtEnrollTo)) {
        return Refuse(m_ui->enrollFromField,
            tr("Error: to search by enrollment date range, select and set both dates"));
    }
    if (isHalf(m_dtExpireFrom, m_dtExpireTo)) {
        return Refuse(m_ui->expireFromField,
            tr("Error: to search by expiration date range, select and set both dates"));
    }
    return true;
}

void CMemberEnrollFindPg::AddRange(search criterion, CDate const& from, CDate const& to)
{
    if (from && to) {
        m_search.SetSearchCriteria(criterion, *from, *to);
    }
}

void CMemberEnrollFindPg::AddClass()
{
    auto const& picker = *m_ui->classPicker;
    if (!picker.IsBlank()) {
        m_search.SetSearchCriteria(CMemberSearchData::sClass, picker.Category().c_str(),
            picker.Course().c_str(), picker.Section().c_str());
    }
}
