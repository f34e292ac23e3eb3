#include "app/CorvanaApp.h"

#include "platform/qt/Companions.h"
#include "platform/qt/Settings.h"
#include "platform/qt/SingleInstance.h"
#include "tests/doc/TestCentre.h"
#include "tests/ui/MessageRecorder.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <array>
#include <clocale>

using namespace Qt::StringLiterals;

/// The application in this process, and the program as processes of its own, each case with
/// settings, runtime folder and centre of its own. Companion programs are real processes.
class CorvanaAppTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { qputenv("QT_QPA_PLATFORM", "offscreen"); }
    void init();
    void cleanup();
    // First, while this process does not hold the name of the program itself.
    void aSecondCopyEndsSilently();
    void startsWithoutSettings();
    void readsAndTogglesTheOptions();
    void startsAndStopsTheReportServer();
    void backsUpAtExitIfWanted();
    void runsNoExitStepsAfterAFailedStart();
    void savesAPictureOrSaysWhyNot();
    void answersItsArguments();

private:
    /// From here on stand-ins for the companions are found in the search path.
    static void HaveCompanions() { qputenv("PATH", COMPANIONS_FOLDER ":/usr/bin:/bin"); }
    std::unique_ptr<QProcess> RunProgram(QStringList const& arguments) const;
    std::unique_ptr<CCorvanaApp> StartApp(CCorvanaApp::Start start = CCorvanaApp::Start::shown);

    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<CTestCentre> m_centre;
    std::unique_ptr<CMessageRecorder> m_messages;
    int m_nArguments = 1;
    QByteArray m_strName = "corvana";
    std::array<char*, 2> m_arguments = {m_strName.data(), nullptr};
};

namespace
{

auto const kServerFailed
    = u"Error: the report server application failed to initialize on this PC."_s;

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

bool Soon(std::function<bool()> const& isTrue)
{
    return QTest::qWaitFor(isTrue, 5000);
}

} // namespace

void CorvanaAppTest::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home->path()));
    // Qt keeps the path it has seen first; the variable is for the processes that cases start.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_home->path());
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_home->path()));
    qputenv("PATH", "/usr/bin:/bin");
    m_centre = std::make_unique<CTestCentre>();
    m_messages = std::make_unique<CMessageRecorder>();
}

void CorvanaAppTest::cleanup()
{
    QuitCompanion(kReportServer);
    QuitCompanion(kBackupUtility);
    m_messages.reset();
    m_centre.reset();
    m_home.reset();
}

std::unique_ptr<CCorvanaApp> CorvanaAppTest::StartApp(CCorvanaApp::Start start)
{
    auto app = std::make_unique<CCorvanaApp>(m_nArguments, m_arguments.data());
    [&] { QCOMPARE(app->InitInstance(), start); }();
    return app;
}

std::unique_ptr<QProcess> CorvanaAppTest::RunProgram(QStringList const& arguments) const
{
    auto process = std::make_unique<QProcess>();
    process->start(QStringLiteral(CORVANA_PROGRAM), arguments);
    process->waitForStarted();
    return process;
}

void CorvanaAppTest::startsWithoutSettings()
{
    qputenv("LC_ALL", "de_DE.UTF-8");
    auto app = StartApp();
    qputenv("LC_ALL", "C.UTF-8");
    QCOMPARE(std::setlocale(LC_NUMERIC, nullptr), "C");
    QCOMPARE(QLocale().toString(1234.5), u"1234.5"_s);
    QCOMPARE(QLocale().dayName(1), u"Monday"_s);
    // There is no report server program: the user is told, and goes on.
    QCOMPARE(m_messages->Texts(), QStringList{kServerFailed});
    QCOMPARE(m_messages->Messages()[0].m_icon, CMessageIcon::exclamation);

    QStringList texts;
    QTimer::singleShot(0, app.get(), [&] {
        auto* const about = QApplication::activeModalWidget();
        for (auto const* const label : about->findChildren<QLabel*>()) {
            texts += label->text();
        }
        about->findChild<QPushButton*>()->click();
    });
    Command(57664)->trigger();
    QVERIFY(texts.contains(u"Version 3.2.0.0"_s));
    QCOMPARE(texts.constLast().count(u'\n'), 4); // the legal notice has five lines

    QCOMPARE(Stored(), kNothing); // nothing is written before the exit
    QCOMPARE(app->ExitInstance(7), 7);
    QCOMPARE(Stored(), (QList{1, 0, 0}));
}

void CorvanaAppTest::readsAndTogglesTheOptions()
{
    Store(0, 5, -1); // anything but 0 is on, and -1 the same as absent
    auto const app = StartApp();
    QVERIFY(m_messages->Texts().isEmpty()); // the report server was not asked for
    QVERIFY(!Command(32888)->isChecked());
    QVERIFY(Command(32889)->isChecked());
    QVERIFY(!Command(32891)->isChecked());
    Command(32889)->trigger();
    QVERIFY(!Command(32889)->isChecked());
    QCOMPARE(app->m_bLoadMembers, 0);
    Command(32889)->trigger();
    Command(32888)->trigger();
    QVERIFY(Command(32888)->isChecked());
    app->ExitInstance(0);
    QCOMPARE(Stored(), (QList{1, 1, 0}));
}

void CorvanaAppTest::startsAndStopsTheReportServer()
{
    HaveCompanions();
    for (bool const isOurs : {true, false}) { // it stops one that it did not start as well
        Store(isOurs ? 1 : 0, 0, 0);
        QVERIFY(isOurs || StartCompanion(kReportServer, COMPANIONS_FOLDER));
        auto const app = StartApp();
        QVERIFY(Soon([] { return FindCompanion(kReportServer); }));
        QVERIFY(m_messages->Texts().isEmpty());
        if (!isOurs) {
            Command(32885)->trigger();
            QCOMPARE(m_messages->Texts(), QStringList{u"Report Server is running on this PC."_s});
        }
        app->ExitInstance(0);
        QVERIFY(Soon([] { return !FindCompanion(kReportServer); }));
        QVERIFY(!FindCompanion(kBackupUtility));
    }
}

void CorvanaAppTest::backsUpAtExitIfWanted()
{
    Store(0, 0, 1);
    StartApp()->ExitInstance(0);
    QCOMPARE(m_messages->Texts(),
        QStringList{u"Error: the Corvana backup utility failed to initialize on this PC."_s});
    QCOMPARE(Stored(), (QList{0, 0, 1})); // the exit went on all the same
    HaveCompanions();
    StartApp()->ExitInstance(0);
    QVERIFY(Soon([] { return FindCompanion(kBackupUtility); }));
    QCOMPARE(m_messages->Texts().size(), 1);
}

void CorvanaAppTest::runsNoExitStepsAfterAFailedStart()
{
    HaveCompanions();
    QVERIFY(StartCompanion(kReportServer, COMPANIONS_FOLDER));
    QVERIFY(Soon([] { return FindCompanion(kReportServer); }));
    CTestCentre::Run("DELETE FROM stations");
    StartApp(CCorvanaApp::Start::failed);
    QCOMPARE(m_messages->Texts(),
        QStringList{u"Error: could not retrieve data from station recordset."_s});
    QVERIFY(FindCompanion(kReportServer));
    QCOMPARE(Stored(), kNothing);
}

void CorvanaAppTest::aSecondCopyEndsSilently()
{
    QStringList const arguments{u"--data"_s, QString::fromStdString(m_centre->Folder().string())};
    auto const first = RunProgram(arguments);
    QVERIFY(Soon([] { return IsCORVAppRunning("Corvana", false); }));
    auto const second = RunProgram(arguments);
    QVERIFY(second->waitForFinished(5000));
    QCOMPARE(second->exitCode(), 0);
    QVERIFY(second->readAllStandardOutput().isEmpty());
    QVERIFY(second->readAllStandardError().isEmpty());
    QCOMPARE(first->state(), QProcess::Running);
    first->kill();
    QVERIFY(first->waitForFinished(5000));
}

void CorvanaAppTest::savesAPictureOrSaysWhyNot()
{
    HaveCompanions();
    auto const centre = QString::fromStdString(m_centre->Folder().string());
    for (auto const& [data, picture, message] : {std::tuple(centre, u"window.png"_s, QByteArray()),
             {m_home->filePath(u"no"_s), u"a.png"_s,
                 "Error: could not retrieve data from center recordset."},
             {centre, u"no/a.png"_s, "cannot be saved."}}) {
        auto const file = m_home->filePath(picture);
        auto const program = RunProgram({u"--screenshot"_s, file, u"--data"_s, data});
        QVERIFY(program->waitForFinished(10000));
        QCOMPARE(program->exitCode(), message.isEmpty() ? 0 : 1);
        QVERIFY(program->readAllStandardError().contains(message));
        QCOMPARE(QImage(file).size(), message.isEmpty() ? QSize(700, 550) : QSize(0, 0));
        QVERIFY(!QFile::exists(m_home->filePath(u"no"_s)));
        // A picture starts and stores nothing.
        QVERIFY(!FindCompanion(kReportServer));
        QCOMPARE(Stored(), kNothing);
    }
}

void CorvanaAppTest::answersItsArguments()
{
    // Without any display: none of this needs one.
    auto environment = QProcessEnvironment::systemEnvironment();
    for (auto const& variable : {u"QT_QPA_PLATFORM"_s, u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s}) {
        environment.remove(variable);
    }
    for (auto const& [argument, exitCode, output] :
        {std::tuple(u"--version"_s, 0, "Corvana 3.2.0.0\n"),
            {u"--help"_s, 0, "--screenshot <FILE>"}, {u"--dta"_s, 2, "'dta'"},
            {u"center.mdb"_s, 2, "'center.mdb'"}, {u"--data"_s, 2, "'--data'"},
            {u"--data="_s, 2, "--data"}, {QString(), 1, "no display"}}) {
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(CORVANA_PROGRAM),
            argument.isEmpty() ? QStringList() : QStringList{argument});
        QVERIFY(program.waitForFinished(5000));
        QCOMPARE(program.exitCode(), exitCode);
        auto const onOutput = program.readAllStandardOutput();
        auto const onError = program.readAllStandardError();
        QCOMPARE(onOutput.isEmpty(), exitCode != 0);
        QVERIFY2((onOutput + onError).contains(output), onOutput + onError);
    }
}

QTEST_APPLESS_MAIN(CorvanaAppTest)
#include "CorvanaAppTest.moc"
