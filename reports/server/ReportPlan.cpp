#include "reports/server/ReportPlan.h"

#include "platform/qt/Printers.h"
#include "platform/qt/Settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kSection = "reports";

struct CTexts
{
    Q_DECLARE_TR_FUNCTIONS(CReportPlan)
};

QString OwnFolder()
{
    auto const documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir::cleanPath(documents + u"/Corvana Reports"_s);
}

} // namespace

CReportPlan CReportPlan::Load()
{
    CReportPlan plan;
    auto const output = GetProfileText(kSection, "output");
    plan.isToPrinter
        = output == u"printer" || (output.isEmpty() && !DefaultPrinterName().isEmpty());
    plan.printer = GetProfileText(kSection, "printer");
    auto const folder = GetProfileText(kSection, "folder");
    plan.isFolderChosen = QDir::isAbsolutePath(folder);
    plan.folder = plan.isFolderChosen ? QDir::cleanPath(folder) : OwnFolder();
    plan.isA4 = GetProfileText(kSection, "paper") == u"a4";
    plan.copies = std::clamp(GetProfileInt(kSection, "copies", 1), 1, kMostCopies);
    plan.hasNames = GetProfileInt(kSection, "names", 0) != 0;
    return plan;
}

bool CReportPlan::Store() const
{
    return WriteProfileText(kSection, "output", isToPrinter ? u"printer"_s : u"folder"_s)
        && WriteProfileText(kSection, "printer", printer)
        && WriteProfileText(kSection, "folder", isFolderChosen ? folder : QString())
        && WriteProfileText(kSection, "paper", isA4 ? u"a4"_s : u"letter"_s)
        && WriteProfileInt(kSection, "copies", copies)
        && WriteProfileInt(kSection, "names", hasNames ? 1 : 0);
}

CDbStatus CReportPlan::PrepareFolder() const
{
    auto const path = QFile::encodeName(folder);
    if (!isFolderChosen && !QFileInfo::exists(folder)) {
        QDir().mkpath(QFileInfo(folder).path());
        ::mkdir(path.constData(), S_IRWXU);
    }
    if (!QFileInfo(folder).isDir()) {
        return {DbError::missing,
            (isFolderChosen ? CTexts::tr(
                 "The folder for reports, \"%1\", is not there. Is its disk connected?")
                            : CTexts::tr("The folder for reports, \"%1\", cannot be made."))
                .arg(folder)
                .toStdString()};
    }
    if (::access(path.constData(), W_OK | X_OK) != 0) {
        return {DbError::readOnly,
            CTexts::tr("The folder for reports, \"%1\", cannot be written: check its permissions.")
                .arg(folder)
                .toStdString()};
    }
    return {};
}
