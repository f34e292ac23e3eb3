#include "reports/server/ReportViews.h"

#include "platform/qt/Printers.h"
#include "reports/pages/ReportPrinter.h"
#include "reports/server/MakeReport.h"
#include "reports/server/Questions.h"
#include "reports/server/ReportName.h"
#include "store/sets/DatabaseSession.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPaintEngine>
#include <QPrintPreviewDialog>
#include <QStandardPaths>

#include <limits>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

constexpr int kMostPages = std::numeric_limits<int>::max();
constexpr int kMostPreviewPages = 100; // each is kept in memory

struct CTexts
{
    Q_DECLARE_TR_FUNCTIONS(CReportViews)
};

/// The wait cursor while it lives.
class CWait
{
public:
    CWait() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~CWait() { QGuiApplication::restoreOverrideCursor(); }
    CWait(CWait const&) = delete;
    CWait& operator=(CWait const&) = delete;
};

std::optional<CReport> Read(QWidget* parent, CReportJob const& job)
{
    CReport report;
    CMade made;
    {
        CWait const wait;
        made = ReadReport(job, {}, report);
        CDatabaseSession::Get().ShutDown(); // nobody is kept from the members' file
    }
    if (made.IsMade()) {
        return report;
    }
    TellUser(parent, CTexts::tr("Error: the report \"%1\" cannot be made.").arg(ReportName(job)),
        QString::fromStdString(made.reason));
    return {};
}

/// Of the settings, when reports go to a printer; else the default one.
QString PrinterOfPlan(CReportPlan const& plan)
{
    return plan.isToPrinter ? plan.printer : QString();
}

/// With the extension, and not one that is there already unless the user says so.
QString AskForPdf(QWidget* parent, QString const& name)
{
    auto path = QFileDialog::getSaveFileName(parent, CTexts::tr("Save as PDF"), name,
        CTexts::tr("PDF Files (*.pdf)"), nullptr, QFileDialog::DontConfirmOverwrite);
    if (path.isEmpty()) {
        return {};
    }
    if (QFileInfo(path).suffix().isEmpty()) {
        path += u".pdf"_s;
    }
    return QFileInfo::exists(path)
            && !AskToDestroy(parent,
                CTexts::tr("The file \"%1\" already exists.\nDo you want to replace it?")
                    .arg(QFileInfo(path).fileName()))
        ? QString()
        : path;
}

} // namespace

QString PreviewReport(QWidget* parent, CReportJob const& job, CReportPlan const& plan)
{
    auto const report = Read(parent, job);
    if (!report) {
        return {};
    }
    auto device = PrinterFor(*report, PrinterOfPlan(plan), plan.Paper());
    if (device == nullptr) {
        device = std::make_unique<QPrinter>(QPrinter::HighResolution);
        SetReportPaper(*device, plan.Paper(), *report);
    }
    QPrintPreviewDialog dialog(device.get(), parent);
    dialog.setObjectName(u"previewDialog"_s);
    dialog.setWindowTitle(CTexts::tr("Preview of %1").arg(ReportName(job)));
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&](QPrinter* to) {
        CWait const wait;
        // The same is asked for when the user prints from there: then of all pages.
        bool const isPreview = to->paintEngine()->type() == QPaintEngine::Picture;
        CReportPrinter printer(*report);
        auto const outcome = printer.Print(*to, {}, isPreview ? kMostPreviewPages : kMostPages);
        if (isPreview && printer.Pages() > printer.Done()) {
            dialog.setWindowTitle(CTexts::tr("Preview of %1, first %2 of %3 pages")
                                      .arg(ReportName(job))
                                      .arg(printer.Done())
                                      .arg(printer.Pages()));
        }
        auto const refusal = isPreview ? QString() : RefusalOf(*to);
        if (!isPreview && (outcome != CPages::Outcome::printed || !refusal.isEmpty())) {
            TellUser(&dialog,
                CTexts::tr("Error: the report \"%1\" was not printed.").arg(ReportName(job)),
                refusal);
        }
    });
    dialog.exec();
    return {};
}

QString PrintReport(QWidget* parent, CReportJob const& job, CReportPlan const& plan)
{
    auto const report = Read(parent, job);
    if (!report) {
        return {};
    }
    CMade made;
    auto const target = PrinterOfPlan(plan);
    {
        CWait const wait;
        made = PrintToPrinter(*report, {target, plan.Paper(), plan.copies}, {});
    }
    if (!made.IsMade()) {
        TellUser(parent,
            CTexts::tr("Error: the report \"%1\" was not printed.").arg(ReportName(job)),
            QString::fromStdString(made.reason));
        return {};
    }
    return target.isEmpty() ? DefaultPrinterName() : target;
}

QString SaveReport(QWidget* parent, CReportJob const& job, CReportPlan const& plan)
{
    auto const report = Read(parent, job);
    auto const folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    auto const name = folder + u'/' + ReportName(job).replace(u'/', u'-').remove(u'"') + u".pdf"_s;
    auto path = report ? AskForPdf(parent, name) : QString();
    if (path.isEmpty()) {
        return {};
    }
    CMade made;
    {
        CWait const wait;
        made = PrintToFile(*report, {path.toStdString(), plan.Paper(), true, {}}, {});
    }
    if (!made.IsMade()) {
        TellUser(parent,
            CTexts::tr("Error: the file \"%1\" was not saved.").arg(QFileInfo(path).fileName()),
            QString::fromStdString(made.reason));
        return {};
    }
    return path;
}
