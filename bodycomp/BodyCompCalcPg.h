#pragma once

#include "doc/CalculatingPg.h"
#include "doc/FitnessRecord.h"

struct CBodyCompRecord;
class QGridLayout;
class QPushButton;

/// The page of a method that calculates the body fat percentage: on demand, and whenever the page
/// is left or taken.
class CBodyCompCalcPg : public CCalculatingPg
{
    Q_OBJECT
protected:
    /// The record must outlive the page, which edits it.
    CBodyCompCalcPg(CBodyCompRecord& record, QWidget* parent);

    /// After the fields of the page have been stated. The grid is the one in which the edit of the
    /// percentage stands.
    void SetUpResult(QPushButton& calculate, QGridLayout& grid, QLineEdit& percent, QLabel& basis);
    /// By the page's method, from what the fields held.
    virtual CBodyFat Fat() const = 0;

    void Compute() final;

    CBodyCompRecord& m_record;
};
