#include "evaluations/EvaluationProfilePg.h"

#include "evaluations/EvaluationRecord.h"

CEvaluationProfilePg::CEvaluationProfilePg(
    CCorvanaDoc& doc, CEvaluationRecord& record, QWidget* parent)
    : CFitnessProfilePg(doc, tr("Evaluation &Date:"), record.m_member, record.m_now.m_basics,
        record.m_last ? &record.m_last->m_basics : nullptr, parent)
{
    ShowTrend(record.m_history);
}
