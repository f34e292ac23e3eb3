#pragma once

#include "platform/qt/PropertySheet.h"
#include "ui/FormFields.h"

#include <memory>

struct CBodyCompRecord;

namespace Ui
{
class BodyCompOtherPg;
}

/// A body fat percentage that was measured in a way of its own, and is typed.
class CBodyCompOtherPg : public CPropertyPage
{
    Q_OBJECT
public:
    /// The record must outlive the page, which edits it.
    explicit CBodyCompOtherPg(CBodyCompRecord& record, QWidget* parent = nullptr);
    ~CBodyCompOtherPg() override;

protected:
    void ShowFields() override { m_fields.Show(); }
    bool TakeFields() override;

private:
    std::unique_ptr<Ui::BodyCompOtherPg> const m_ui;
    CFormFields m_fields;
};
