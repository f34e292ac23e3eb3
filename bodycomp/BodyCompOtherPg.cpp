#include "bodycomp/BodyCompOtherPg.h"

#include "ui_BodyCompOtherPg.h"

#include "bodycomp/BodyCompRecord.h"
#include "ui/FieldNote.h"

CBodyCompOtherPg::CBodyCompOtherPg(CBodyCompRecord& record, QWidget* parent)
    : CPropertyPage(parent)
    , m_ui(std::make_unique<Ui::BodyCompOtherPg>())
{
    constexpr int kDecimals = 2;
    m_ui->setupUi(this);
    m_fields.Number(*m_ui->percentFatEdit, record.m_now.m_dPercentFat, {1, 99}, kDecimals);
    AddFieldNote(*m_ui->fieldsLayout, *m_ui->percentFatEdit, kDecimals, CUsual{4, 45},
        record.Last(&CBodyCompValues::m_dPercentFat));
}

CBodyCompOtherPg::~CBodyCompOtherPg() = default;

bool CBodyCompOtherPg::TakeFields()
{
    if (!m_fields.Take()) {
        return false;
    }
    m_fields.Commit();
    return true;
}
