#pragma once

#include "store/EFOleDateTime.h"
#include "store/services/ReportQueue.h"

#include <QString>

/// The name of a report, "Report" for a type that is none.
QString ReportName(CReportJob const& job);
/// What a job is about, as the list of reports shows it: a member's ID, a class, dates. Never a
/// member's name.
QString ReportScope(CReportJob const& job);

/// A name for the file of a job: "Membership Status 2026-11-26 07-30-05 12.pdf". With names it has
/// that of the member whose report it is too, if that can be read.
QString ReportFileName(CQueuedReport const& report, CEFOleDateTime const& now, bool names);
