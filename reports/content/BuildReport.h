#pragma once

#include "platform/db/Status.h"
#include "reports/document/Report.h"
#include "store/services/ReportJob.h"

#include <functional>

/// Hears how much is done, 0 to 1; false asks for the end.
using CReportWatch = std::function<bool(double done)>;

/// Reads what a job asks for and makes the report of it. What cannot be read is a failure and never
/// a report with less in it; a member, evaluation or body composition that is not there any more is
/// "gone", a job of no known type or without what its type needs "failed", one that watch ended
/// "stopped". Reads each record concerned once; takes the memory of its texts.
CDbStatus BuildReport(CReportJob const& job, CReportWatch const& watch, CReport& report);
