#pragma once

#include "reports/server/MakeReport.h"

#include <cstdint>
#include <string>

// One report of the queue is made by a process of its own: a crash or a hostile record takes nobody
// else with it, its memory comes back, and it can be ended at any moment. The server claims the job
// and keeps the claim; the process is told which job it is, reads it itself, and answers on its
// standard output: lines of whole percents, and before it ends, if there is no report, a line of
// "!" and the reason.

/// What the process is told.
struct CReportTask
{
    std::int64_t id = 0;
    std::string token; ///< of the claim
    bool isToPrinter = false;
    CPrinterTarget printer; ///< its paper is that of a file too
};

/// Its exit code; any other is that of a process that came to grief.
int ExitCodeOf(CMade::Outcome outcome);
CMade::Outcome OutcomeOf(int exitCode);

/// The process itself, from an application without windows on.
int RunReportTask(CReportTask const& task);
