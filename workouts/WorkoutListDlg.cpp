#include "workouts/WorkoutListDlg.h"

#include "doc/CorvanaDoc.h"
#include "ui/ControlID.h"
#include "ui/Convert.h"

namespace
{

constexpr int kStationWidth = 45;
constexpr int kPrintedStation = 5; // letters

CListTexts Texts()
{
    auto const tr = [](char const* text) { return CWorkoutListDlg::tr(text); };
    using List = CWorkoutListDlg;
    return {"workouts_list", tr("Workouts"), tr("Loading workouts, please wait..."),
        tr("Total Workouts Listed:"), tr("No further workout records are available."),
        tr("Error: the workouts could not be read."),
        tr("Select items to include in the printed\nlist of workouts."),
        {{List::colName, tr("&Name")}, {List::colMemberID, tr("Member &ID #")},
            {List::colDate, tr("Workout &Date")}, {List::colIn, tr("&Check-In Time")},
            {List::colOut, tr("Check-O&ut Time")}, {List::colMinutes, tr("&Total Minutes")},
            {List::colStations, tr("&Workout Options")},
            {List::colOk, tr("Workout &Verification (i.e., \"OK\")")}}};
}

} // namespace

CWorkoutListDlg::CWorkoutListDlg(CCorvanaDoc& doc, CDAOWk& found)
    : CRecordListDlg(doc, found, std::make_unique<CDAOWk>(), Texts())
{
    auto const& row = static_cast<CDAOWk const&>(Row());
    AddMemberColumns(row.m_lMemberID, 35, 10);
    AddColumn({colDate, tr("Date"), 65, [&row] { return row.m_dtCheckIn.DateStrShortYear(); },
        CDAOWk::byCheckIn, tr("Date"), 11});
    AddColumn({colIn, tr("In"), 45, [&row] { return row.m_dtCheckIn.TimeStrHourMinute(); },
        CDAOWk::byTimeIn, tr("In"), 6});
    AddColumn({colOut, tr("Out"), 45, [&row] { return row.m_dtCheckOut.TimeStrHourMinute(); },
        CDAOWk::byTimeOut, tr("Out"), 6});
    AddColumn({colMinutes, tr("Min"), 45, [&row] { return std::to_string(row.TotalMinutes()); },
        CDAOWk::byMinutes, tr("Min"), 4});
    int station = 0;
    for (auto const& name : doc.m_lstStnAbbrs) {
        AddColumn({colStations, ToQt(name), kStationWidth,
            [&row, station] { return std::to_string(row.GetStnVal(station)); },
            CDAOWk::ByStnVal(station), ToQt(name), kPrintedStation});
        ++station;
    }
    AddColumn({colOk, {}, 0, [&row] { return row.m_bWorkoutOK ? "x" : ""; }, {}, tr("OK")});
    SetPictures([&row] { return row.m_bWorkoutOK ? 0 : 1; }, tr("Workout flagged as \"OK\""),
        tr("Workout flagged as \"not OK\""));
    LeaveSingleColumnEmpty();

    auto const record = tr("workout");
    UseOnDoubleClick(AddRowButton(tr("&Edit"), "editButton", tr("edit a workout"), record,
        [this, &found] { return m_doc.AddEditWorkout(&found); }));
    UseOnDeleteKey(AddRowButton(tr("&Delete"), "deleteButton", tr("delete a workout"), record,
        [this, &found] { return m_doc.DeleteWorkout(found); }));
    AddDeleteAllButton();
    AddLastButtons();
}
