#pragma once

#include "doc/CalculatingPg.h"

#include <memory>

struct CEvaluationRecord;

namespace Ui
{
class EvaluationBodyCompPg;
}

/// Skinfolds and the body-fat percentage, which is calculated when the user asks for it or typed.
class CEvaluationBodyCompPg : public CCalculatingPg
{
    Q_OBJECT
public:
    /// The record must outlive the page, which edits it.
    explicit CEvaluationBodyCompPg(CEvaluationRecord& record, QWidget* parent = nullptr);
    ~CEvaluationBodyCompPg() override;

protected:
    void FillLists() override;
    void Compute() override;

private:
    CEvaluationRecord& m_record;
    std::unique_ptr<Ui::EvaluationBodyCompPg> const m_ui;
};
