#include "reports/server/MakeReport.h"

#include "platform/qt/Printers.h"
#include "reports/pages/ReportPrinter.h"
#include "reports/server/PdfFile.h"

#include <QCoreApplication>
#include <QPdfWriter>
#include <QPrinter>

namespace
{

struct CTexts
{
    Q_DECLARE_TR_FUNCTIONS(CMakeReport)
};

CMade CannotPrint(std::string const& reason)
{
    return {CMade::Outcome::cannotPrint, reason};
}

CMade CannotPrint(QString const& reason)
{
    return CannotPrint(reason.toStdString());
}

} // namespace

CMade ReadReport(CReportJob const& job, CReportWatch const& watch, CReport& report)
{
    auto const status = BuildReport(job, watch, report);
    switch (status.Error()) {
    case DbError::none:
        return {};
    case DbError::stopped:
        return {CMade::Outcome::stopped, status.Text()};
    case DbError::gone:
    case DbError::damaged: // which other reports may not meet
    case DbError::constraint:
    case DbError::failed:
        return {CMade::Outcome::jobFailed, status.Text()};
    default:
        return CannotPrint(status.Text());
    }
}

CMade PrintToFile(CReport const& report, CPdfTarget const& target, CReportWatch const& watch)
{
    CPdfFile file(target.path);
    if (auto const status = file.Begin(); !status) {
        return CannotPrint(status.Text());
    }
    bool goesOn = true;
    auto outcome = CPages::Outcome::notStarted;
    {
        QPdfWriter device(&file);
        device.setTitle(QString::fromStdString(report.m_strTitle));
        device.setCreator(QStringLiteral("Corvana"));
        SetReportPaper(device, target.paper, report);
        outcome = CReportPrinter(report).Print(device, [&](double done) {
            goesOn = !watch || watch(done);
            return goesOn && file.IsWritten();
        });
    }
    if (!goesOn) {
        return {CMade::Outcome::stopped, {}};
    }
    if (outcome != CPages::Outcome::printed && file.IsWritten()) {
        return {
            CMade::Outcome::jobFailed, CTexts::tr("The pages could not be drawn.").toStdString()};
    }
    if (target.mayPublish && file.IsWritten() && !target.mayPublish()) {
        return {CMade::Outcome::lost, {}};
    }
    auto const status = file.Publish(target.replaces);
    return status || status.Error() == DbError::exists ? CMade() : CannotPrint(status.Text());
}

std::unique_ptr<QPrinter> PrinterFor(
    CReport const& report, QString const& name, QPageSize::PageSizeId paper)
{
    auto const title = QString::fromStdString(report.m_strTitle);
    auto printer = name.isEmpty() ? DefaultPrinter(title, OrientationOf(report)) : PrinterOf(name);
    if (printer != nullptr) {
        printer->setDocName(title);
        SetReportPaper(*printer, paper, report);
    }
    return printer;
}

CMade PrintToPrinter(CReport const& report, CPrinterTarget const& target, CReportWatch const& watch)
{
    auto const printer = PrinterFor(report, target.printer, target.paper);
    if (printer == nullptr) {
        return CannotPrint(target.printer.isEmpty()
                ? CTexts::tr("There is no default printer.")
                : CTexts::tr("The printer \"%1\" is not there.").arg(target.printer));
    }
    printer->setCopyCount(target.copies);
    bool goesOn = true;
    auto const outcome = CReportPrinter(report).Print(*printer, [&](double done) {
        goesOn = !watch || watch(done);
        return goesOn;
    });
    if (!goesOn) {
        printer->abort();
        return {CMade::Outcome::stopped, {}};
    }
    if (outcome != CPages::Outcome::printed) {
        return CannotPrint(
            CTexts::tr("The printer \"%1\" takes no pages.").arg(printer->printerName()));
    }
    if (auto const refusal = RefusalOf(*printer); !refusal.isEmpty()) {
        return CannotPrint(CTexts::tr("The printer \"%1\" did not take the report: %2")
                               .arg(printer->printerName(), refusal));
    }
    return {};
}
