#include "evaluations/EvaluationFitTestPg.h"

#include "ui_EvaluationFitTestPg.h"

#include "evaluations/EvaluationRecord.h"
#include "ui/FieldNote.h"

using namespace Qt::StringLiterals;

CEvaluationFitTestPg::CEvaluationFitTestPg(CEvaluationRecord& record, QWidget* parent)
    : CPropertyPage(parent)
    , m_ui(std::make_unique<Ui::EvaluationFitTestPg>())
{
    m_ui->setupUi(this);
    auto& now = record.m_now;
    auto const add
        = [&](QLineEdit& edit, std::int32_t CEvaluationValues::*value, int most, CUsual usual) {
              m_fields.Number(edit, now.*value, {0, most});
              edit.setAlignment(Qt::AlignRight);
              AddFieldNote(*m_ui->fieldsLayout, edit, 0, usual, record.Last(value));
          };
    m_fields.Number(*m_ui->trunkFlexionEdit, now.m_dTrunkFlexion, {0, 31}, 2);
    AddFieldNote(*m_ui->fieldsLayout, *m_ui->trunkFlexionEdit, 2, CUsual{4, 26},
        record.Last(&CEvaluationValues::m_dTrunkFlexion));
    add(*m_ui->sitUpsEdit, &CEvaluationValues::m_nSitUps, 99, {5, 75});
    add(*m_ui->abCrunchesEdit, &CEvaluationValues::m_nAbCrunches, 99, {5, 85});
    add(*m_ui->stepTestEdit, &CEvaluationValues::m_nStepTest, 200, {60, 170});
    m_fields.Number(*m_ui->minutesSpin, now.m_nRunMinutes, {0, 60});
    m_fields.Number(*m_ui->secondsSpin, now.m_nRunSeconds, {0, 59});
    add(*m_ui->ergometerEdit, &CEvaluationValues::m_nErgometer, 99, {10, 90});
    if (record.m_last) {
        m_ui->runNote->setText(
            tr("last %1").arg(u"%1:%2"_s.arg(record.m_last->m_nRunMinutes)
                                  .arg(record.m_last->m_nRunSeconds, 2, 10, QLatin1Char('0'))));
    }
}

CEvaluationFitTestPg::~CEvaluationFitTestPg() = default;

bool CEvaluationFitTestPg::TakeFields()
{
    if (!m_fields.Take()) {
        return false;
    }
    m_fields.Commit();
    return true;
}
