#include "evaluations/EvaluationBodyCompPg.h"

#include "ui_EvaluationBodyCompPg.h"

#include "evaluations/EvaluationRecord.h"
#include "ui/FieldNote.h"

CEvaluationBodyCompPg::CEvaluationBodyCompPg(CEvaluationRecord& record, QWidget* parent)
    : CCalculatingPg(parent)
    , m_record(record)
    , m_ui(std::make_unique<Ui::EvaluationBodyCompPg>())
{
    constexpr int kDecimals = 2;
    m_ui->setupUi(this);
    auto& now = m_record.m_now;
    m_ui->skinfoldBox->SetUp(m_fields, now.m_folds,
        m_record.m_last ? &m_record.m_last->m_folds : nullptr, m_record.m_member.IsMale());
    m_fields.Number(*m_ui->percentFatEdit, now.m_dPercentFat, {0, 99}, kDecimals);
    AddFieldNote(*m_ui->fatLayout, *m_ui->percentFatEdit, kDecimals, CUsual{4, 45},
        m_record.Last(&CEvaluationValues::m_dPercentFat));
    SetBasisLabel(*m_ui->basisLabel);
    connect(m_ui->calculateButton, &QPushButton::clicked, this, &CEvaluationBodyCompPg::Calculate);
}

CEvaluationBodyCompPg::~CEvaluationBodyCompPg() = default;

void CEvaluationBodyCompPg::FillLists()
{
    m_ui->skinfoldBox->ShowSites(m_record.m_now.m_folds);
}

void CEvaluationBodyCompPg::Compute()
{
    auto& now = m_record.m_now;
    auto const fat
        = FatOf(m_record.m_member, now.m_basics, now.m_folds, m_ui->skinfoldBox->Sites());
    now.m_dPercentFat = fat.m_dPercent;
    ShowBasis(BasisText(fat));
}
