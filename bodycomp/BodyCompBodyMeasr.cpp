#include "bodycomp/BodyCompBodyMeasr.h"

#include "ui_BodyCompBodyMeasr.h"

#include "bodycomp/BodyCompRecord.h"
#include "ui/FieldNote.h"

CBodyCompBodyMeasr::CBodyCompBodyMeasr(CBodyCompRecord& record, QWidget* parent)
    : CBodyCompCalcPg(record, parent)
    , m_ui(std::make_unique<Ui::BodyCompBodyMeasr>())
{
    constexpr int kDecimals = 2;
    m_ui->setupUi(this);
    m_fields.Number(*m_ui->wristEdit, m_record.m_now.m_dWrist, {1, 100}, kDecimals);
    AddFieldNote(*m_ui->fieldsLayout, *m_ui->wristEdit, kDecimals, CUsual{5, 9},
        m_record.Last(&CBodyCompValues::m_dWrist));
    SetUpResult(
        *m_ui->calculateButton, *m_ui->fieldsLayout, *m_ui->percentFatEdit, *m_ui->basisLabel);
}

CBodyCompBodyMeasr::~CBodyCompBodyMeasr() = default;

CBodyFat CBodyCompBodyMeasr::Fat() const
{
    return FatByTape(m_record);
}
