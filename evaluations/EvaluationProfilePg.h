#pragma once

#include "doc/FitnessProfilePg.h"

struct CEvaluationRecord;

/// The first page of an evaluation.
class CEvaluationProfilePg : public CFitnessProfilePg
{
    Q_OBJECT
public:
    /// Both must outlive the page, which edits the record.
    CEvaluationProfilePg(CCorvanaDoc& doc, CEvaluationRecord& record, QWidget* parent = nullptr);
};
