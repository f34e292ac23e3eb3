#pragma once

#include "doc/RecordListDlg.h"

class CDAOWk;

/// The workouts of a search, to be edited, deleted, printed and copied. A row's picture tells
/// whether the workout is flagged as "OK".
class CWorkoutListDlg : public CRecordListDlg
{
    Q_OBJECT
public:
    enum Column : std::uint32_t
    {
        colName = 0x1,
        colMemberID = 0x2,
        colDate = 0x4,
        colIn = 0x8,
        colOut = 0x10,
        colMinutes = 0x20,
        colStations = 0x40,
        colOk = 0x80 ///< on paper; in the list this is the picture
    };

    /// The set, which is the document's or as open, stands on the workouts found.
    CWorkoutListDlg(CCorvanaDoc& doc, CDAOWk& found);
};
