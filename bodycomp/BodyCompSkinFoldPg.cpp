#include "bodycomp/BodyCompSkinFoldPg.h"

#include "ui_BodyCompSkinFoldPg.h"

#include "bodycomp/BodyCompRecord.h"

CBodyCompSkinFoldPg::CBodyCompSkinFoldPg(CBodyCompRecord& record, QWidget* parent)
    : CBodyCompCalcPg(record, parent)
    , m_ui(std::make_unique<Ui::BodyCompSkinFoldPg>())
{
    m_ui->setupUi(this);
    m_ui->skinfoldBox->SetUp(m_fields, m_record.m_now.m_folds,
        m_record.m_last ? &m_record.m_last->m_folds : nullptr, m_record.m_member.IsMale());
    SetUpResult(*m_ui->calculateButton, *m_ui->fatLayout, *m_ui->percentFatEdit, *m_ui->basisLabel);
}

CBodyCompSkinFoldPg::~CBodyCompSkinFoldPg() = default;

void CBodyCompSkinFoldPg::FillLists()
{
    m_ui->skinfoldBox->ShowSites(m_record.m_now.m_folds);
}

CBodyFat CBodyCompSkinFoldPg::Fat() const
{
    auto const& now = m_record.m_now;
    return FatOf(m_record.m_member, now.m_basics, now.m_folds, m_ui->skinfoldBox->Sites());
}
