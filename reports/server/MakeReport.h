#pragma once

#include "platform/db/Status.h"
#include "reports/content/BuildReport.h"

#include <QPageSize>
#include <QString>

#include <functional>
#include <memory>
#include <string>

class QPrinter;

/// What came of a report.
struct CMade
{
    enum class Outcome
    {
        made,
        jobFailed, ///< this job cannot be made
        cannotPrint, ///< no job can: the folder, the disk, the printer or the data are not ready
        stopped, ///< by the watch
        lost ///< another server has the job
    };
    Outcome outcome = Outcome::made;
    std::string reason; ///< a sentence without a member's name

    bool IsMade() const { return outcome == Outcome::made; }
};

/// Reads what a job asks for, as BuildReport.
CMade ReadReport(CReportJob const& job, CReportWatch const& watch, CReport& report);

/// How a PDF file is written.
struct CPdfTarget
{
    std::string path;
    QPageSize::PageSizeId paper = QPageSize::Letter;
    bool replaces = false;
    std::function<bool()> mayPublish; ///< asked before the file gets its name; may be empty
};
/// A file that is there already, and not to be replaced, is a file that was made.
CMade PrintToFile(CReport const& report, CPdfTarget const& target, CReportWatch const& watch);

struct CPrinterTarget
{
    QString printer; ///< empty: the default one
    QPageSize::PageSizeId paper = QPageSize::Letter;
    int copies = 1;
};
/// The printer of that name, the default one for an empty name, ready for the report; null when it
/// is not there.
std::unique_ptr<QPrinter> PrinterFor(
    CReport const& report, QString const& name, QPageSize::PageSizeId paper);
CMade PrintToPrinter(
    CReport const& report, CPrinterTarget const& target, CReportWatch const& watch);
