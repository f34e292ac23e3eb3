#include "bodycomp/BodyCompProfilePg.h"

#include "bodycomp/BodyCompRecord.h"

CBodyCompProfilePg::CBodyCompProfilePg(CCorvanaDoc& doc, CBodyCompRecord& record, QWidget* parent)
    : CFitnessProfilePg(doc, tr("Body Composition &Date:"), record.m_member, record.m_now.m_basics,
        record.m_last ? &record.m_last->m_basics : nullptr, parent)
{
    AddGirths(record.m_now.m_dWaist, record.m_now.m_dHip, record.Last(&CBodyCompValues::m_dWaist),
        record.Last(&CBodyCompValues::m_dHip));
    ShowTrend(record.m_history);
}
