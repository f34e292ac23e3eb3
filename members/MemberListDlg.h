#pragma once

#include "doc/RecordListDlg.h"

class CDAOMem;

/// The members of a search, to be edited, deleted, changed together, written to, printed and
/// copied. A row's picture tells whether the membership is current and has not expired.
class CMemberListDlg : public CRecordListDlg
{
    Q_OBJECT
public:
    enum Column : std::uint32_t
    {
        colName = 0x1,
        colMemberID = 0x2,
        colWorkoutNum = 0x4,
        colStatus = 0x8,
        colExpiration = 0x10
    };

    /// The set stands on the members found; after a search by class their class can be changed.
    CMemberListDlg(CCorvanaDoc& doc, CDAOMem& found, bool isClassSearch);

private:
    void AddColumns();
    void AddBatchButtons(CDAOMem& found, bool isClassSearch);
};
