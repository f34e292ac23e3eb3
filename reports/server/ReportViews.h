#pragma once

#include "reports/server/ReportPlan.h"
#include "store/services/ReportJob.h"

#include <QString>

class QWidget;

// What the user does with one job beside the queue, which stays as it is. Each reads the records as
// they are now, in this process, tells the user when there is no report, and returns where it went.

/// Shows the first pages on the screen; all can be printed from there. Returns nothing.
QString PreviewReport(QWidget* parent, CReportJob const& job, CReportPlan const& plan);
/// On the printer of the settings, or else the default one. Its name, empty when nothing was
/// printed.
QString PrintReport(QWidget* parent, CReportJob const& job, CReportPlan const& plan);
/// Into a file that the user is asked for. Its path, empty when none was written.
QString SaveReport(QWidget* parent, CReportJob const& job, CReportPlan const& plan);

using ReportView = decltype(&PreviewReport);
