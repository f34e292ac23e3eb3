#pragma once

#include "doc/CalculatingPg.h"

#include <memory>

struct CEvaluationRecord;

namespace Ui
{
class EvaluationTrainingRgPg;
}

/// Resting heart rate and blood pressure, and the training range that follows from them. The range
/// is for the eye only.
class CEvaluationTrainingRgPg : public CCalculatingPg
{
    Q_OBJECT
public:
    /// The record must outlive the page, which edits it.
    explicit CEvaluationTrainingRgPg(CEvaluationRecord& record, QWidget* parent = nullptr);
    ~CEvaluationTrainingRgPg() override;

protected:
    void ShowFields() override;
    void Compute() override;

private:
    CEvaluationRecord& m_record;
    std::unique_ptr<Ui::EvaluationTrainingRgPg> const m_ui;

    // Beats per minute, truncated.
    std::int32_t m_nMaximum = 0;
    std::int32_t m_nSafe = 0;
    std::int32_t m_nUpper = 0;
    std::int32_t m_nLower = 0;
};
