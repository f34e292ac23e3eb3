#pragma once

#include "reports/server/ReportPlan.h"

/// Works off the queue from an application that has no windows, telling about each job on standard
/// output. 0 when all that waited were made, 1 when one was not.
int RunOnce(CReportPlan const& plan);
