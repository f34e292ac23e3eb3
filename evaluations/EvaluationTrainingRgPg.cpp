#include "evaluations/EvaluationTrainingRgPg.h"

#include "ui_EvaluationTrainingRgPg.h"

#include "evaluations/EvaluationRecord.h"
#include "store/fitness/HeartRate.h"
#include "ui/FieldNote.h"

CEvaluationTrainingRgPg::CEvaluationTrainingRgPg(CEvaluationRecord& record, QWidget* parent)
    : CCalculatingPg(parent)
    , m_record(record)
    , m_ui(std::make_unique<Ui::EvaluationTrainingRgPg>())
{
    m_ui->setupUi(this);
    auto const add = [this](QLineEdit& edit, std::int32_t CEvaluationValues::*value,
                         CRange<std::int32_t> range, CUsual usual) {
        m_fields.Number(edit, m_record.m_now.*value, range);
        edit.setAlignment(Qt::AlignRight);
        AddFieldNote(*m_ui->fieldsLayout, edit, 0, usual, m_record.Last(value));
    };
    add(*m_ui->restingHREdit, &CEvaluationValues::m_nRestingHR, {0, 200}, {40, 100});
    add(*m_ui->systolicEdit, &CEvaluationValues::m_nSystolic, {0, 300}, {85, 160});
    add(*m_ui->diastolicEdit, &CEvaluationValues::m_nDiastolic, {0, 300}, {50, 100});
    m_fields.Result(*m_ui->maximumEdit, m_nMaximum);
    m_fields.Result(*m_ui->safeEdit, m_nSafe);
    m_fields.Result(*m_ui->upperEdit, m_nUpper);
    m_fields.Result(*m_ui->lowerEdit, m_nLower);
    SetBasisLabel(*m_ui->basisLabel);
    connect(
        m_ui->calculateButton, &QPushButton::clicked, this, &CEvaluationTrainingRgPg::Calculate);
}

CEvaluationTrainingRgPg::~CEvaluationTrainingRgPg() = default;

void CEvaluationTrainingRgPg::ShowFields()
{
    Compute();
    CCalculatingPg::ShowFields();
}

void CEvaluationTrainingRgPg::Compute()
{
    auto const& member = m_record.m_member;
    CHeartRate const range(member.IsMale() ? CHeartRate::sMale : CHeartRate::sFemale, member.m_nAge,
        double(m_record.m_now.m_nRestingHR));
    m_nMaximum = static_cast<int>(range.PredictedMaximum());
    m_nSafe = static_cast<int>(range.SafeMaximum());
    m_nUpper = static_cast<int>(range.UpperLevel());
    m_nLower = static_cast<int>(range.LowerLevel());
    ShowBasis(tr(range.Source()));
}
