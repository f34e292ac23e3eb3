#include "doc/FitnessProfilePg.h"

#include "ui_FitnessProfilePg.h"

#include "doc/ClassLists.h"
#include "doc/CorvanaDoc.h"
#include "ui/DateExchange.h"
#include "ui/FieldNote.h"

namespace
{

// A change of so much within the time between two records is looked at twice.
constexpr double kWeightChange = 8.0;
constexpr double kHeightChange = 3.0;

} // namespace

CFitnessProfilePg::CFitnessProfilePg(CCorvanaDoc& doc, QString const& dateLabel,
    CMemberFacts const& member, CFitnessBasics& basics, CFitnessBasics const* last, QWidget* parent)
    : CPropertyPage(parent)
    , m_doc(doc)
    , m_member(member)
    , m_basics(basics)
    , m_ui(std::make_unique<Ui::FitnessProfilePg>())
{
    m_ui->setupUi(this);
    m_ui->dateLabel->setText(dateLabel);
    for (QWidget* const widget : std::initializer_list<QWidget*>{
             m_ui->waistLabel, m_ui->waistEdit, m_ui->hipLabel, m_ui->hipEdit}) {
        widget->hide();
    }
    auto const lastOf = [last](double CFitnessBasics::*value) {
        return last != nullptr ? std::optional(last->*value) : std::nullopt;
    };
    AddNumber(*m_ui->weightEdit, m_basics.m_dWeight, {1, 500}, {80, 400, kWeightChange},
        lastOf(&CFitnessBasics::m_dWeight));
    AddNumber(*m_ui->heightEdit, m_basics.m_dHeight, {1, 90}, {48, 84, kHeightChange},
        lastOf(&CFitnessBasics::m_dHeight));
    m_fields.Date(*m_ui->dateEdit, m_basics.m_dtDate);
    m_fields.List(*m_ui->activityList, m_basics.m_nActLevel, CDAOBodyComp::alVeryActive,
        CDAOBodyComp::GetActLevelStr);
}

CFitnessProfilePg::~CFitnessProfilePg() = default;

void CFitnessProfilePg::AddNumber(QLineEdit& edit, double& value, CRange<double> range,
    CUsual const& usual, std::optional<double> last)
{
    constexpr int kDecimals = 2;
    m_fields.Number(edit, value, range, kDecimals);
    AddFieldNote(*m_ui->fieldsLayout, edit, kDecimals, usual, last);
}

void CFitnessProfilePg::AddGirths(
    double& waist, double& hip, std::optional<double> lastWaist, std::optional<double> lastHip)
{
    for (QWidget* const widget : std::initializer_list<QWidget*>{
             m_ui->waistLabel, m_ui->waistEdit, m_ui->hipLabel, m_ui->hipEdit}) {
        widget->show();
    }
    // The two ranges differ on purpose.
    AddNumber(*m_ui->waistEdit, waist, {1, 255}, {20, 70}, lastWaist);
    AddNumber(*m_ui->hipEdit, hip, {1, 155}, {25, 75}, lastHip);
}

void CFitnessProfilePg::ShowTrend(std::vector<CTrendPoint> const& history)
{
    if (history.size() > 1) {
        m_ui->pageLayout->insertWidget(1, new CTrendChart(history), 0, Qt::AlignLeft);
    }
}

void CFitnessProfilePg::FillLists()
{
    m_doc.FillMemberClassList(
        m_member.m_lMemberID, m_basics.m_nClassIndex, *m_ui->classList, false, false);
}

void CFitnessProfilePg::ShowFields()
{
    if (m_member.m_bKnown) {
        m_ui->ageText->setText(QString::number(m_member.m_nAge));
        m_ui->sexText->setText(m_member.IsMale() ? tr("M") : tr("F"));
    }
    m_fields.Show();
}

bool CFitnessProfilePg::TakeFields()
{
    std::uint8_t classIndex = 0;
    if (!m_fields.Take() || !CheckNotAfterToday(*m_ui->dateEdit, m_fields.Taken(m_basics.m_dtDate))
        || !TakeMemberClass(*m_ui->classList, classIndex)) {
        return false;
    }
    m_fields.Commit();
    m_basics.m_nClassIndex = classIndex;
    return true;
}
