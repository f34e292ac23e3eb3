#pragma once

#include "doc/FitnessProfilePg.h"

struct CBodyCompRecord;

/// The first page of a body composition.
class CBodyCompProfilePg : public CFitnessProfilePg
{
    Q_OBJECT
public:
    /// Both must outlive the page, which edits the record.
    CBodyCompProfilePg(CCorvanaDoc& doc, CBodyCompRecord& record, QWidget* parent = nullptr);
};
