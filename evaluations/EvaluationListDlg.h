#pragma once

#include "doc/RecordListDlg.h"

class CDAOEval;

/// The evaluations of a member, to be edited, deleted, analyzed, printed and copied.
class CEvaluationListDlg : public CRecordListDlg
{
    Q_OBJECT
public:
    enum Column : std::uint32_t
    {
        colName = 0x1,
        colMemberID = 0x2,
        colDate = 0x4,
        colHeight = 0x8,
        colWeight = 0x10,
        colActLevel = 0x20,
        colRestingHR = 0x40,
        colPressure = 0x80,
        colFitTests = 0x100, ///< six columns
        colFat = 0x200,
        colStations = 0x400
    };

    /// The set stands on the evaluations found.
    CEvaluationListDlg(CCorvanaDoc& doc, CDAOEval& found);

private:
    void AddMeasurements();
    void AddFitTests();
    void AddStations();
};
