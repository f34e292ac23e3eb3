#include "backup/BackupWnd.h"
#include "platform/db/Process.h"

#include <QApplication>
#include <QLocale>

#include <clocale>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

int main(int argc, char** argv)
{
    ProtectProcess();
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
