#pragma once

#include "reports/content/ReportRequest.h"

// The reports on evaluations and body compositions. The job names a member and, to the second, one
// or two records, these in either order.

/// An evaluation beside the norms.
CDbStatus TestInterpretation(CReportRequest const& request);
/// Two evaluations, and all up to the later of them over time.
CDbStatus EvaluationComparison(CReportRequest const& request);
/// The same for body compositions.
CDbStatus BodyCompInterpretation(CReportRequest const& request);
CDbStatus BodyCompComparison(CReportRequest const& request);
