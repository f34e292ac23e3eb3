#include "platform/db/Process.h"
#include "platform/qt/CompanionServer.h"
#include "reports/server/OnceCommand.h"
#include "reports/server/Options.h"
#include "reports/server/Questions.h"
#include "reports/server/QuitSignals.h"
#include "reports/server/RenderCommand.h"
#include "reports/server/ReportWnd.h"
#include "store/sets/DatabaseSession.h"

#include <QApplication>
#include <QLocale>

#include <clocale>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace
{

void SetUpLocale()
{
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QCoreApplication::setApplicationName(u"corvrpt"_s);
}

/// Nobody reads what libraries remark on, and it would stand among a command's own lines.
void KeepLibrariesQuiet()
{
    qInstallMessageHandler([](QtMsgType type, QMessageLogContext const&, QString const& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg) {
            std::fprintf(stderr, "corvrpt: %s\n", text.toUtf8().constData());
        }
    });
}

/// Windows for nobody: text is drawn as anywhere.
int RunWithoutWindows(COptions const& options, int argc, char** argv)
{
    KeepLibrariesQuiet();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication const app(argc, argv);
    SetUpLocale();
    return options.mode == COptions::Mode::render ? RenderReport(options)
                                                  : RunReportTask(options.task);
}

int RunOnceCommand(COptions const& options, int argc, char** argv)
{
    KeepLibrariesQuiet();
    QCoreApplication const app(argc, argv);
    SetUpLocale();
    return RunOnce(options.Plan());
}

/// The report server, beside the console.
int RunServer(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && !qEnvironmentVariableIsSet("DISPLAY")
        && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) {
        std::fputs("corvrpt: there is no display; \"corvrpt --once\" needs none.\n", stderr);
        return EXIT_FAILURE;
    }
    QApplication app(argc, argv);
    SetUpLocale();
    QApplication::setDesktopFileName(u"corvana"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    CCompanionServer server(kReportServer);
    switch (server.Take()) {
    case CCompanionServer::Taken::byAnother:
        return EXIT_SUCCESS;
    case CCompanionServer::Taken::failed:
        TellUser(nullptr,
            QCoreApplication::translate("RunServer",
                "The report server cannot make its files in the user's runtime folder, and so "
                "cannot tell whether another copy is at work."));
        return EXIT_FAILURE;
    case CCompanionServer::Taken::taken:
        break;
    }
    CReportWnd window;
    CQuitSignals const signals;
    auto& worker = window.Worker();
    QObject::connect(
        &server, &CCompanionServer::QuitAsked, &worker, [&worker] { worker.End(false); });
    QObject::connect(&signals, &CQuitSignals::Asked, &worker, [&worker] { worker.End(true); });
    // Out of every loop, that of an open dialog too.
    QObject::connect(
        &window, &CReportWnd::Ended, &app, [] { QCoreApplication::exit(EXIT_SUCCESS); },
        Qt::QueuedConnection);
    window.StepBack();
    worker.GoOn();
    int const result = QApplication::exec();
    CDatabaseSession::Get().ShutDown(); // before another copy can take the name
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    ProtectProcess();
    COptions options;
    if (auto const code = ReadOptions(argc, argv, options)) {
        return *code;
    }
    if (!options.dataFolder.empty()) {
        qputenv("CORVANA_DATA", options.dataFolder.c_str()); // for the processes it starts, too
    }
    switch (options.mode) {
    case COptions::Mode::once:
        return RunOnceCommand(options, argc, argv);
    case COptions::Mode::task:
    case COptions::Mode::render:
        return RunWithoutWindows(options, argc, argv);
    case COptions::Mode::server:
        break;
    }
    return RunServer(argc, argv);
}
