#include "app/CorvanaApp.h"

#include "platform/qt/Companions.h"
#include "platform/qt/Settings.h"
#include "platform/qt/SingleInstance.h"
#include "tests/doc/TestCentre.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/MessageRecorder.h"

#include <QAction>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <array>
#include <clocale>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

/// Report server, members loaded at the start, automatic backup; -1 what is not stored.
QList<int> Stored()
{
    auto const stored = [](char const* option) { return GetProfileInt("settings", option, -1); };
    return {stored("report_server"), stored("load_members"), stored("auto_backup")};
}

void Store(int reportServer, int loadMembers, int autoBackup)
{
    WriteProfileInt("settings", "report_server", reportServer);
    WriteProfileInt("settings", "load_members", loadMembers);
    WriteProfileInt("settings", "auto_backup", autoBackup);
}

QList<int> const kNothing{-1, -1, -1};

QAction* Command(int number)
{
    for (auto* const window : QApplication::topLevelWidgets()) {
        if (auto* const action = window->findChild<QAction*>(u"command%1"_s.arg(number))) {
            return action;
        }
    }
    return nullptr;
}

/// Settings, runtime folder and centre of a case, for the application in this process and for the
/// program as a process of its own.
class CPlace
{
public:
    CPlace()
    {
        auto const home = QFile::encodeName(m_home.path());
        qputenv("XDG_CONFIG_HOME", home);
        // Qt keeps the path it has seen first; the variable is for the processes that cases start.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_home.path());
        qputenv("XDG_RUNTIME_DIR", home);
        qputenv("PATH", "/usr/bin:/bin");
    }
    ~CPlace()
    {
        QuitCompanion(kReportServer);
        QuitCompanion(kBackupUtility);
    }

    /// From here on stand-ins for the companions are found in the search path.
    static void HaveCompanions() { qputenv("PATH", COMPANIONS_FOLDER ":/usr/bin:/bin"); }
    QString Home(QString const& file) const { return m_home.filePath(file); }
    QString Data() const { return QString::fromStdString(m_centre.Folder().string()); }
    QStringList Messages() const { return m_messages.Texts(); }
    QString FirstDetail() const { return m_messages.Messages()[0].m_strDetail; }
    void AnswerYes() { m_messages.AnswerNext({true}); }
    void StartAndEnd(int reportServer, int loadMembers, int autoBackup)
    {
        Store(reportServer, loadMembers, autoBackup);
        StartApp()->ExitInstance(0);
    }
    std::unique_ptr<CCorvanaApp> StartApp(CCorvanaApp::Start start = CCorvanaApp::Start::shown)
    {
        auto app = std::make_unique<CCorvanaApp>(m_nArguments, m_arguments.data());
        [&] { QCOMPARE(app->InitInstance(), start); }();
        return app;
    }

private:
    QTemporaryDir m_home;
    CTestCentre m_centre;
    CMessageRecorder m_messages;
    int m_nArguments = 1;
    QByteArray m_strName = "corvana";
    std::array<char*, 2> m_arguments = {m_strName.data(), nullptr};
};

} // namespace

/// Companion programs are real processes.
class CorvanaAppTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { qputenv("QT_QPA_PLATFORM", "offscreen"); }
    // First, while this process does not hold the name of the program itself.
    void aSecondCopyEndsSilently();
    void startsWithoutSettingsAndWithSome();
    void companionsComeAndGo();
    void lostFilesAreToldOnceAndACompactionEndsTheProgram();
    void answersItsArgumentsWithoutDisplay();
};

void CorvanaAppTest::startsWithoutSettingsAndWithSome()
{
    CPlace place;
    qputenv("LC_ALL", "de_DE.UTF-8");
    auto app = place.StartApp();
    qputenv("LC_ALL", "C.UTF-8");
    QCOMPARE(std::setlocale(LC_NUMERIC, nullptr), "C");
    QCOMPARE(QLocale().toString(1234.5) + QLocale().dayName(1), u"1234.5Monday"_s);
    // There is no report server program: the user is told, and goes on.
    QCOMPARE(place.Messages(),
        QStringList{u"Error: the report server application failed to initialize on this PC."_s});
    Command(32885)->trigger();
    QCOMPARE(place.Messages().size(), 2);
    CDialogUser const user({[](QDialog& about) { about.findChild<QPushButton*>()->click(); }});
    Command(57664)->trigger();
    QCOMPARE(user.Faults(), QStringList());
    QCOMPARE(Stored(), kNothing); // nothing is written before the exit
    QCOMPARE(app->ExitInstance(7), 7);
    QCOMPARE(Stored(), (QList{1, 0, 0}));

    app.reset();
    Store(0, 5, -1); // anything but 0 is on, and -1 the same as absent
    app = place.StartApp();
    QCOMPARE(place.Messages().size(), 2); // the report server was not asked for
    QVERIFY(!Command(32888)->isChecked() && !Command(32891)->isChecked());
    QVERIFY(Command(32889)->isChecked());
    Command(32889)->trigger();
    Command(32888)->trigger();
    app->ExitInstance(0);
    QCOMPARE(Stored(), (QList{1, 0, 0}));
}

void CorvanaAppTest::companionsComeAndGo()
{
    CPlace place;
    place.StartAndEnd(0, 0, 1);
    QStringList const error{
        u"Error: the Corvana backup utility failed to initialize on this PC."_s};
    QCOMPARE(place.Messages(), error);
    QCOMPARE(Stored(), (QList{0, 0, 1})); // the exit went on all the same
    CPlace::HaveCompanions();
    for (bool const isOurs : {true, false}) { // it stops one that it did not start as well
        Store(isOurs ? 1 : 0, 0, 0);
        QVERIFY(isOurs || StartCompanion(kReportServer, COMPANIONS_FOLDER));
        auto const app = place.StartApp();
        QTRY_VERIFY(FindCompanion(kReportServer));
        app->ExitInstance(0);
        QTRY_VERIFY(!FindCompanion(kReportServer));
        QVERIFY(!FindCompanion(kBackupUtility));
    }
    place.StartAndEnd(0, 0, 1);
    QTRY_VERIFY(FindCompanion(kBackupUtility));
    QCOMPARE(place.Messages(), error);

    // A start that fails stops nothing and stores nothing.
    QVERIFY(StartCompanion(kReportServer, COMPANIONS_FOLDER));
    QTRY_VERIFY(FindCompanion(kReportServer));
    CTestCentre::Run("DELETE FROM stations");
    Store(-1, 5, 0);
    place.StartApp(CCorvanaApp::Start::failed);
    QCOMPARE(place.Messages().size(), 2);
    QVERIFY(FindCompanion(kReportServer));
    QCOMPARE(Stored(), (QList{-1, 5, 0}));
}

void CorvanaAppTest::lostFilesAreToldOnceAndACompactionEndsTheProgram()
{
    CPlace place;
    CDatabaseSession::Get().ShutDown();
    QVERIFY(QFile::resize(place.Data() + u"/report.mdb"_s, 5000));
    QVERIFY(QFile::remove(place.Data() + u"/member.mdb"_s));
    Store(0, 1, 0);
    auto const app = place.StartApp();
    QApplication::processEvents(); // the tree would load now
    QCOMPARE(place.Messages(), QStringList{u"Error: could not open report.mdb, member.mdb."_s});
    for (auto const& words : {u"is cut short"_s, u"does not exist"_s, u"last backup"_s}) {
        QVERIFY(place.FirstDetail().contains(words));
    }
    QVERIFY(!QFile::exists(place.Data() + u"/member.mdb"_s));
    place.AnswerYes();
    QTimer::singleShot(0, Command(32892), &QAction::trigger);
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(place.Messages().size(), 4); // the warning, the lost files, and that it is done
}

void CorvanaAppTest::aSecondCopyEndsSilently()
{
    CPlace place;
    QProcess first;
    QProcess second;
    for (auto* const program : {&first, &second}) {
        program->start(QStringLiteral(CORVANA_PROGRAM), {u"--data"_s, place.Data()});
        QVERIFY(program->waitForStarted());
        QTRY_VERIFY(IsCORVAppRunning("Corvana", false));
    }
    QVERIFY(second.waitForFinished(5000));
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(second.readAllStandardOutput() + second.readAllStandardError(), QByteArray());
    QCOMPARE(first.state(), QProcess::Running);
    first.kill();
    QVERIFY(first.waitForFinished(5000));
}

void CorvanaAppTest::answersItsArgumentsWithoutDisplay()
{
    CPlace place;
    CPlace::HaveCompanions();
    auto environment = QProcessEnvironment::systemEnvironment();
    for (auto const& variable : {u"QT_QPA_PLATFORM"_s, u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s}) {
        environment.remove(variable);
    }
    auto const missing = place.Home(u"no"_s);
    auto const picture = place.Home(u"window.png"_s);
    for (auto const& [arguments, exitCode, output] :
        {std::tuple(QStringList{u"--version"_s}, 0, "Corvana 3.2.0.0\n"),
            {{u"--help"_s}, 0, "--screenshot <FILE>"}, {{u"--dta"_s}, 2, "'dta'"},
            {{u"center.mdb"_s}, 2, "'center.mdb'"}, {{u"--data="_s}, 2, "--data"},
            {{}, 1, "no display"},
            {{u"--screenshot"_s, picture, u"--data"_s, missing}, 1,
                "Error: could not retrieve data from center recordset."},
            {{u"--screenshot"_s, missing + u"/a.png"_s, u"--data"_s, place.Data()}, 1,
                "cannot be saved."},
            {{u"--screenshot"_s, picture, u"--data"_s, place.Data()}, 0, ""}}) {
        QVERIFY(!QFile::exists(missing) && !QFile::exists(picture));
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(CORVANA_PROGRAM), arguments);
        QVERIFY(program.waitForFinished(10000));
        QCOMPARE(program.exitCode(), exitCode);
        program.setReadChannel(exitCode == 0 ? QProcess::StandardOutput : QProcess::StandardError);
        auto const said = program.readAll();
        QVERIFY2(said.contains(output), said);
    }
    QCOMPARE(QImage(picture).size(), QSize(700, 550));
    // A picture starts and stores nothing.
    QVERIFY(!FindCompanion(kReportServer));
    QCOMPARE(Stored(), kNothing);
}

QTEST_APPLESS_MAIN(CorvanaAppTest)
#include "CorvanaAppTest.moc"
