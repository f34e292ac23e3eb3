#include "reports/server/OnceCommand.h"
#include "reports/server/Options.h"
#include "reports/server/RenderCommand.h"

#include <QGuiApplication>
#include <QLocale>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

/// What this program writes is its user's alone, its memory goes into no core file, and no file
/// takes the place of a standard stream that was closed.
void ProtectProcess()
{
    ::umask(S_IRWXG | S_IRWXO);
    ::prctl(PR_SET_DUMPABLE, 0);
    int descriptor = 0;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    ::close(descriptor);
}

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

int RunServer()
{
    std::fputs("corvrpt: it takes --once or --render. See corvrpt --help.\n", stderr);
    return EXIT_FAILURE;
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
    return RunServer();
}
