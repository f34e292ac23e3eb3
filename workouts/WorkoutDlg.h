#pragma once

#include "platform/qt/Dialog.h"
#include "store/sets/DAOCls.h"
#include "store/sets/DAOWk.h"
#include "ui/FormFields.h"

#include <array>
#include <cstdint>
#include <memory>

class CCorvanaDoc;
struct CNumberRow;

namespace Ui
{
class WorkoutDlg;
}

/// Enters or corrects one workout. Set the members, run exec(), and when it returns Accepted read
/// them back. A designation that the centre's minimums contradict is asked about. Never touches the
/// database; the stations, the minimums and the member's classes come from the document.
class CWorkoutDlg : public CDialog
{
    Q_OBJECT
public:
    /// The document must outlive the dialog. Its list of stations gives the rows: the first one
    /// names the circuits, at most twelve more the stations; those beyond are left out, and the
    /// values of rows that are not shown stay as they are.
    explicit CWorkoutDlg(CCorvanaDoc& doc, QWidget* parent = nullptr);
    ~CWorkoutDlg() override;

    QString m_strCaption = tr("Workout Details");
    std::int32_t m_lMemberID = 0; ///< whose classes are offered
    std::uint8_t m_nClassIndex = CDAOCls::kNotChosen;
    CEFOleDateTime m_dtCheckIn; ///< now, unless the caller sets it
    CEFOleDateTime m_dtCheckOut; ///< now, unless the caller sets it
    std::array<std::int16_t, CDAOWk::kStationValues> m_nStnVal = {}; ///< circuits, then stations
    int m_nWorkoutOK = 0; ///< 1 = "Workout Okay"

protected:
    void FillLists() override;
    void ShowFields() override;
    bool TakeFields() override;

private:
    void AddStations();
    void ShowLength();
    bool CheckTimes(CEFOleDateTime const& checkIn, CEFOleDateTime const& checkOut);
    bool ConfirmDesignation(CEFOleDateTime const& checkIn, CEFOleDateTime const& checkOut);

    CCorvanaDoc& m_doc;
    std::unique_ptr<Ui::WorkoutDlg> const m_ui;
    CFormFields m_fields;

    // The values behind the four pickers: the day of one and the time of day of the other make up a
    // moment.
    CEFOleDateTime m_dtCheckInDate;
    CEFOleDateTime m_dtCheckInTime;
    CEFOleDateTime m_dtCheckOutDate;
    CEFOleDateTime m_dtCheckOutTime;
};
