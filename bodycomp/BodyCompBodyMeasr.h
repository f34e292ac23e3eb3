#pragma once

#include "bodycomp/BodyCompCalcPg.h"

#include <memory>

namespace Ui
{
class BodyCompBodyMeasr;
}

/// Girths, with those of the first page.
class CBodyCompBodyMeasr : public CBodyCompCalcPg
{
    Q_OBJECT
public:
    /// The record must outlive the page, which edits it.
    explicit CBodyCompBodyMeasr(CBodyCompRecord& record, QWidget* parent = nullptr);
    ~CBodyCompBodyMeasr() override;

protected:
    CBodyFat Fat() const override;

private:
    std::unique_ptr<Ui::BodyCompBodyMeasr> const m_ui;
};
