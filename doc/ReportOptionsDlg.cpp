#include "doc/ReportOptionsDlg.h"

#include "ui_ReportOptionsDlg.h"

#include "ui/ControlID.h"
#include "ui/DateExchange.h"
#include "ui/KeepPlace.h"

CReportOptionsDlg::CReportOptionsDlg(Kind kind, QWidget* parent)
    : CDialog(parent)
    , m_ui(std::make_unique<Ui::ReportOptionsDlg>())
{
    m_ui->setupUi(this);
    bool const isOfWorkouts = kind == Kind::workouts;
    SetControlID(this, isOfWorkouts ? 179 : 207);
    m_ui->noteLabel->setText(isOfWorkouts
            ? tr("Generating this report can take a significant amount of time depending\n"
                 "on the number of records in your database. To continue with the report,\n"
                 "set the following report options, then click \"OK.\" Otherwise, click "
                 "\"Cancel.\"")
            : tr("Set the following report options, then click \"OK.\""));
    m_ui->workoutsGroup->setVisible(isOfWorkouts);
    KeepPlaceWhenHidden(*m_ui->rangePanel);
    connect(m_ui->allNoButton, &QRadioButton::toggled, m_ui->rangePanel, &QWidget::setVisible);

    m_fields.Pair(*m_ui->idsYesButton, *m_ui->idsNoButton, m_bMemberIDs);
    m_fields.Buttons<std::int32_t>({{m_ui->statusAllButton, CDAOReport::roAll},
                                       {m_ui->statusCurrentButton, CDAOReport::roCurrent},
                                       {m_ui->statusPastButton, CDAOReport::roPast}},
        m_nStatus);
    m_fields.Pair(*m_ui->allYesButton, *m_ui->allNoButton, m_bAllWorkouts);
    for (auto const& [edit, date] :
        {std::pair(m_ui->fromEdit, &m_dtFrom), {m_ui->toEdit, &m_dtTo}}) {
        m_range.Date(*edit, *date);
        edit->SetWayOut(m_ui->allYesButton);
    }
}

CReportOptionsDlg::~CReportOptionsDlg() = default;

void CReportOptionsDlg::ShowFields()
{
    m_fields.Show();
    m_range.Show();
    m_ui->rangePanel->setVisible(!m_bAllWorkouts);
}

bool CReportOptionsDlg::TakeFields()
{
    if (!m_fields.Take()) {
        return false;
    }
    if (!m_fields.Taken(m_bAllWorkouts)) {
        if (!m_range.Take()
            || !CheckDateRange(
                *m_ui->fromEdit, m_range.Taken(m_dtFrom), *m_ui->toEdit, m_range.Taken(m_dtTo))) {
            return false;
        }
        m_range.Commit();
    }
    m_fields.Commit();
    return true;
}
