#include "backup/BackupWnd.h"

#include <QApplication>
#include <QLocale>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <sys/prctl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

int main(int argc, char** argv)
{
    umask(S_IRWXG | S_IRWXO); // health data: what this program writes is its user's alone,
    prctl(PR_SET_DUMPABLE, 0); // and its memory goes into no core file
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && !qEnvironmentVariableIsSet("DISPLAY")
        && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) {
        std::fputs("corvbk: there is no display; \"corvana-db backup\" needs none.\n", stderr);
        return EXIT_FAILURE;
    }
    QApplication const app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QApplication::setApplicationName(u"corvbk"_s);
    QApplication::setDesktopFileName(u"corvana"_s);
    CBackupWnd window;
    if (!window.Start()) {
        return EXIT_SUCCESS; // another copy is at work
    }
    return window.exec() == QDialog::Accepted ? EXIT_SUCCESS : EXIT_FAILURE;
}
