#pragma once

#include "doc/RecordListDlg.h"

class CDAOBodyComp;

/// The body compositions of a member, to be edited, deleted, analyzed, printed and copied.
class CBodyCompListDlg : public CRecordListDlg
{
    Q_OBJECT
public:
    enum Column : std::uint32_t
    {
        colName = 0x1,
        colMemberID = 0x2,
        colDate = 0x4,
        colMethod = 0x8,
        colFat = 0x10,
        colActLevel = 0x20,
        colHeight = 0x40,
        colWeight = 0x80,
        colWaist = 0x100,
        colHip = 0x200
    };

    /// The set stands on the body compositions found.
    CBodyCompListDlg(CCorvanaDoc& doc, CDAOBodyComp& found);
};
