#include "workouts/WorkoutDlg.h"

#include "ui_WorkoutDlg.h"

#include "doc/ClassLists.h"
#include "doc/CorvanaDoc.h"
#include "ui/Convert.h"
#include "ui/DateExchange.h"
#include "ui/Messages.h"
#include "ui/NumberRows.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr CRange<std::int32_t> kCircuits = {0, 5};
constexpr CRange<std::int32_t> kStationValue = {0, 999};

/// Invalid when one of the two is.
CEFOleDateTime Moment(CEFOleDateTime const& day, CEFOleDateTime const& time)
{
    return day.ChkStatus() && time.ChkStatus() ? CEFOleDateTime(
               day.Year(), day.Month(), day.Day(), time.Hour(), time.Minute(), time.Second())
                                               : CEFOleDateTime::Invalid();
}

} // namespace

CWorkoutDlg::CWorkoutDlg(CCorvanaDoc& doc, QWidget* parent)
    : CDialog(parent)
    , m_dtCheckIn(CEFOleDateTime::GetCurrentTime())
    , m_dtCheckOut(m_dtCheckIn)
    , m_doc(doc)
    , m_ui(std::make_unique<Ui::WorkoutDlg>())
{
    m_ui->setupUi(this);
    AddStations();
    m_fields.Date(*m_ui->checkInDateEdit, m_dtCheckInDate);
    m_fields.Time(*m_ui->checkInTimeEdit, m_dtCheckInTime);
    m_fields.Date(*m_ui->checkOutDateEdit, m_dtCheckOutDate);
    m_fields.Time(*m_ui->checkOutTimeEdit, m_dtCheckOutTime);
    m_fields.Buttons<int>({{m_ui->okYesRadio, 1}, {m_ui->okNoRadio, 0}}, m_nWorkoutOK);
    for (QLineEdit const* const edit : std::initializer_list<QLineEdit*>{m_ui->checkInDateEdit,
             m_ui->checkInTimeEdit, m_ui->checkOutDateEdit, m_ui->checkOutTimeEdit}) {
        connect(edit, &QLineEdit::textChanged, this, &CWorkoutDlg::ShowLength);
    }
}

CWorkoutDlg::~CWorkoutDlg() = default;

void CWorkoutDlg::AddStations()
{
    std::vector<QString> names;
    std::ranges::transform(m_doc.m_lstStnNames, std::back_inserter(names),
        [](std::string const& name) { return ToQt(name); });
    names.resize(std::min(names.size(), m_nStnVal.size()));

    m_ui->circuitsGroup->setVisible(!names.empty());
    m_ui->stationsGroup->setVisible(names.size() > 1);
    if (names.empty()) {
        return;
    }
    CNumberRow const circuits
        = {m_ui->circuitsLabel, m_ui->circuitsSpin->Edit(), m_ui->circuitsSpin};
    NameRows({circuits}, {names[0]});
    m_fields.Number(*m_ui->circuitsSpin, m_nStnVal[0], kCircuits);
    auto const rows = BuildNumberRows(*m_ui->stationsLayout,
        {.m_strName = u"station"_s,
            .m_nCount = int(m_nStnVal.size()) - 1,
            .m_nColumns = 2,
            .m_bSpin = true,
            .m_pAfter = m_ui->classList});
    NameRows(rows, {names.begin() + 1, names.end()});
    for (std::size_t row = 1; row < names.size(); ++row) {
        m_fields.Number(*rows[row - 1].m_pSpin, m_nStnVal[row], kStationValue);
    }
}

void CWorkoutDlg::FillLists()
{
    m_doc.FillMemberClassList(m_lMemberID, m_nClassIndex, *m_ui->classList, false, false);
}

void CWorkoutDlg::ShowFields()
{
    setWindowTitle(m_strCaption);
    m_dtCheckInDate = m_dtCheckInTime = m_dtCheckIn;
    m_dtCheckOutDate = m_dtCheckOutTime = m_dtCheckOut;
    m_fields.Show();
    ShowLength();
}

/// Beside the check-out, for as long as the fields hold two moments in their order.
void CWorkoutDlg::ShowLength()
{
    auto const from
        = FromQt(QDateTime(m_ui->checkInDateEdit->Date(), m_ui->checkInTimeEdit->Time(), Qt::UTC));
    auto const to = FromQt(
        QDateTime(m_ui->checkOutDateEdit->Date(), m_ui->checkOutTimeEdit->Time(), Qt::UTC));
    bool const isLength = from.ChkStatus() && to.ChkStatus() && from <= to;
    m_ui->lengthLabel->setText(isLength ? tr("%1 min").arg(MinutesBetween(from, to)) : QString());
}

bool CWorkoutDlg::TakeFields()
{
    if (!m_fields.Take()) {
        return false;
    }
    auto const checkIn = Moment(m_fields.Taken(m_dtCheckInDate), m_fields.Taken(m_dtCheckInTime));
    auto const checkOut
        = Moment(m_fields.Taken(m_dtCheckOutDate), m_fields.Taken(m_dtCheckOutTime));
    std::uint8_t classIndex = 0;
    if (!CheckTimes(checkIn, checkOut) || !TakeMemberClass(*m_ui->classList, classIndex)
        || !ConfirmDesignation(checkIn, checkOut)) {
        return false;
    }
    m_fields.Commit();
    m_dtCheckIn = checkIn;
    m_dtCheckOut = checkOut;
    m_nClassIndex = classIndex;
    return true;
}

bool CWorkoutDlg::CheckTimes(CEFOleDateTime const& checkIn, CEFOleDateTime const& checkOut)
{
    if (!CheckNotAfterToday(*m_ui->checkInDateEdit, checkIn)
        || !CheckNotAfterToday(*m_ui->checkOutDateEdit, checkOut)) {
        return false;
    }
    return checkOut >= checkIn
        || Refuse(m_ui->checkOutDateEdit, tr("Error: check out cannot precede check in"));
}

/// A designation against the centre's minimums is only taken when the user says so; otherwise the
/// other one is chosen and the form stays open.
bool CWorkoutDlg::ConfirmDesignation(CEFOleDateTime const& checkIn, CEFOleDateTime const& checkOut)
{
    auto const& center = m_doc.m_setCenter;
    bool const isOK = m_fields.Taken(m_nWorkoutOK) == 1;
    auto const circuits = m_doc.m_lstStnNames.empty() ? m_nStnVal[0] : m_fields.Taken(m_nStnVal[0]);
    bool const isMet = center.VerifyWk(circuits, checkIn, checkOut);
    if (isOK == isMet) {
        return true;
    }
    auto const text = isOK ? tr("This workout does not meet the minimum requirements of\n"
                                "%1 circuit(s) and/or %2 total minute(s). Do you still want\n"
                                "to enter it with a designation of \"Workout Okay\"?")
                           : tr("This workout meets the minimum requirements of\n"
                                "%1 circuit(s) and/or %2 total minute(s). Do you still want\n"
                                "to enter it with a designation of \"Workout Not Okay\"?");
    if (Ask(this, text.arg(center.m_nMinCircuits).arg(center.m_nMinMinutes))) {
        return true;
    }
    (isOK ? m_ui->okNoRadio : m_ui->okYesRadio)->setChecked(true);
    return false;
}
