#pragma once

#include "reports/server/ReportChild.h"
#include "reports/server/ReportPlan.h"

#include <optional>
#include <string>

/// What the program is asked for.
struct COptions
{
    enum class Mode
    {
        server,
        once,
        task, ///< one report for a server; not for users
        render
    };
    Mode mode = Mode::server;
    std::string dataFolder; ///< empty: not given

    bool isOnce = false; ///< as the mode says

    // Where reports of the queue go; what is empty stands in the settings.
    std::string folder;
    std::string printer;
    std::string paper;

    CReportTask task;

    // One report without the queue.
    CReportJob job;
    std::string pdf;
    bool replaces = false;

    /// The settings, with what was given in their place.
    CReportPlan Plan() const;
    QPageSize::PageSizeId Paper() const;
};

/// Reads the arguments. Else says on standard output or standard error output what there is to say,
/// and gives the exit code.
std::optional<int> ReadOptions(int argc, char** argv, COptions& options);
