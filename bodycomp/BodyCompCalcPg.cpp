#include "bodycomp/BodyCompCalcPg.h"

#include "bodycomp/BodyCompRecord.h"
#include "ui/FieldNote.h"

#include <QPushButton>

CBodyCompCalcPg::CBodyCompCalcPg(CBodyCompRecord& record, QWidget* parent)
    : CCalculatingPg(parent)
    , m_record(record)
{
    CalculateWhenLeft();
}

void CBodyCompCalcPg::SetUpResult(
    QPushButton& calculate, QGridLayout& grid, QLineEdit& percent, QLabel& basis)
{
    constexpr int kDecimals = 2;
    m_fields.Result(percent, m_record.m_now.m_dPercentFat, kDecimals);
    AddFieldNote(
        grid, percent, kDecimals, std::nullopt, m_record.Last(&CBodyCompValues::m_dPercentFat));
    SetBasisLabel(basis);
    connect(&calculate, &QPushButton::clicked, this, &CBodyCompCalcPg::Calculate);
}

void CBodyCompCalcPg::Compute()
{
    auto const fat = Fat();
    m_record.m_now.m_dPercentFat = fat.m_dPercent;
    ShowBasis(BasisText(fat));
}
