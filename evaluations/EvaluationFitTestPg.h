#pragma once

#include "platform/qt/PropertySheet.h"
#include "ui/FormFields.h"

#include <memory>

struct CEvaluationRecord;

namespace Ui
{
class EvaluationFitTestPg;
}

/// The results of the fitness tests.
class CEvaluationFitTestPg : public CPropertyPage
{
    Q_OBJECT
public:
    /// The record must outlive the page, which edits it.
    explicit CEvaluationFitTestPg(CEvaluationRecord& record, QWidget* parent = nullptr);
    ~CEvaluationFitTestPg() override;

protected:
    void ShowFields() override { m_fields.Show(); }
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::EvaluationFitTestPg> const m_ui;
    CFormFields m_fields;
};
