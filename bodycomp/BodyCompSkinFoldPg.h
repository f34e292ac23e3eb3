#pragma once

#include "bodycomp/BodyCompCalcPg.h"

#include <memory>

namespace Ui
{
class BodyCompSkinFoldPg;
}

/// Skinfolds at three, four or seven sites.
class CBodyCompSkinFoldPg : public CBodyCompCalcPg
{
    Q_OBJECT
public:
    /// The record must outlive the page, which edits it.
    explicit CBodyCompSkinFoldPg(CBodyCompRecord& record, QWidget* parent = nullptr);
    ~CBodyCompSkinFoldPg() override;

protected:
    void FillLists() override;
    CBodyFat Fat() const override;

private:
    std::unique_ptr<Ui::BodyCompSkinFoldPg> const m_ui;
};
