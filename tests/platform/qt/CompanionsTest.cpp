#include "platform/qt/Companions.h"
#include "platform/qt/RuntimeFolder.h"
#include "platform/qt/SingleInstance.h"
#include "tests/QtTests.h"
#include "tests/platform/qt/LocalSocket.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// Names, and companions as processes of their own, in a runtime folder of the test's own.
class CompanionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { QuitCompanion(kReportServer); } // what a failed case left
    void namesAreNoPaths();
    void onlyAFolderOfTheUserAloneIsUsed();
    void aCompanionIsFoundAsLongAsItListens();
    void aCompanionIsJudgedByItsAnswers();
    void anotherUsersProcessIsNoCompanion();
    void aCompanionIsStartedFromTheFolderBeforeThePath();

private:
    std::unique_ptr<QProcess> Run(CCompanion const& companion, char const* misbehaviour = "");
    std::string Path(std::string const& name) const { return m_strFolder + '/' + name; }

    std::unique_ptr<QTemporaryDir> m_runtime;
    std::string m_strFolder;
    std::string const m_strSocket = "corvana/Report Server.sock";
};

namespace
{

CDescriptor Open(std::string const& file)
{
    return CDescriptor(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR));
}

bool HasEnded(QProcess& process)
{
    return process.state() == QProcess::NotRunning || process.waitForFinished(5000);
}

} // namespace

void CompanionsTest::init()
{
    m_runtime = std::make_unique<QTemporaryDir>();
    m_strFolder = m_runtime->path().toStdString();
    qputenv("XDG_RUNTIME_DIR", m_strFolder.c_str());
    qputenv("PATH", COMPANIONS_FOLDER ":/usr/bin:/bin");
}

/// Starts a stand-in as a child of the test and waits until one listens.
std::unique_ptr<QProcess> CompanionsTest::Run(CCompanion const& companion, char const* misbehaviour)
{
    qputenv("CORVANA_STANDIN", misbehaviour);
    auto process = std::make_unique<QProcess>();
    process->start(QString::fromStdString(std::string(companion.file)), QStringList());
    auto const socket = Path("corvana/" + std::string(companion.name) + ".sock");
    return QTest::qWaitFor([&] { return IsListening(socket); }) ? std::move(process) : nullptr;
}

void CompanionsTest::namesAreNoPaths()
{
    QVERIFY(RuntimeFile(std::string(64, 'a'), ".lock"));
    for (auto const& name : {std::string(65, 'a'), std::string(), std::string(".."),
             std::string("../Other"), std::string("Caf\xc3\xa9")}) {
        QVERIFY2(!RuntimeFile(name, ".lock"), name.c_str());
        QVERIFY(!IsCORVAppRunning(name.c_str(), true));
    }
    QVERIFY(!std::filesystem::exists(Path("Other.lock")));
}

void CompanionsTest::onlyAFolderOfTheUserAloneIsUsed()
{
    for (mode_t const mode : {0755U, 0710U, 0U}) { // 0: a link to a folder of the user
        init();
        auto const folder = Path(mode == 0 ? "target" : "corvana");
        QVERIFY(mkdir(folder.c_str(), 0700) == 0 && chmod(folder.c_str(), mode | 0700U) == 0);
        QVERIFY(mode != 0 || symlink(folder.c_str(), Path("corvana").c_str()) == 0);
        std::string reason;
        QVERIFY(!RuntimeFolder(&reason) && reason.starts_with(Path("corvana: ")));
        QVERIFY(
            !IsCORVAppRunning("Other", true) && !std::filesystem::exists(folder + "/Other.lock"));
    }
    // Nor is it looked for in a folder into which others can put one.
    auto const open = Path("open");
    QVERIFY(mkdir(open.c_str(), 0700) == 0 && chmod(open.c_str(), 01777) == 0);
    QVERIFY(Open(Path("file")));
    for (auto const& path : {Path("missing"), std::string("."), open, Path("file")}) {
        qputenv("XDG_RUNTIME_DIR", path.c_str());
        auto const found = RuntimeFolder().value_or("");
        QCOMPARE(found, "/tmp/corvana-" + std::to_string(geteuid()));
        struct stat status = {};
        QVERIFY(stat(found.c_str(), &status) == 0 && (status.st_mode & 07777U) == 0700U);
    }
}

void CompanionsTest::aCompanionIsFoundAsLongAsItListens()
{
    auto const isAlive = [] { return IsCORVAppRunning("Report Server", false); };
    QVERIFY(!FindCompanion(kReportServer) && !QuitCompanion(kReportServer));
    auto const utility = Run(kBackupUtility);
    QVERIFY(FindCompanion(kBackupUtility) && !FindCompanion(kReportServer));
    QVERIFY(!QuitCompanion(kReportServer));
    auto const killed = Run(kReportServer);
    killed->kill();
    QVERIFY(HasEnded(*killed) && std::filesystem::exists(Path(m_strSocket))
        && !FindCompanion(kReportServer));

    auto const busy = Run(kReportServer, "busy");
    QVERIFY(HasEnded(*Run(kReportServer))); // there is one copy
    QVERIFY(FindCompanion(kReportServer) && QuitCompanion(kReportServer));
    QVERIFY(!FindCompanion(kReportServer) && isAlive());
    QVERIFY(StartCompanion(kReportServer)); // waits for the one that quits
    QTRY_VERIFY(FindCompanion(kReportServer));
    QVERIFY(HasEnded(*busy) && busy->exitStatus() == QProcess::NormalExit);
    QVERIFY(QuitCompanion(kReportServer));
    QTRY_VERIFY(!isAlive());
    QVERIFY(QuitCompanion(kBackupUtility) && HasEnded(*utility));
}

void CompanionsTest::aCompanionIsJudgedByItsAnswers()
{
    for (std::string const how : {"other", "deaf", "stopped"}) {
        auto const server = Run(kReportServer, how.c_str());
        bool const isStopped = how == "stopped";
        auto const process = static_cast<pid_t>(server->processId());
        QVERIFY(!isStopped || kill(process, SIGSTOP) == 0);
        QVERIFY2(FindCompanion(kReportServer) == (how != "other"), how.c_str());
        QVERIFY2(!QuitCompanion(kReportServer), how.c_str());
        QCOMPARE(kill(process, isStopped ? SIGCONT : SIGKILL), 0);
        QVERIFY(HasEnded(*server)); // the request waited for the one that was stopped
    }
}

void CompanionsTest::anotherUsersProcessIsNoCompanion()
{
    if (geteuid() != 0) {
        QSKIP("only root can run a process as another user");
    }
    QVERIFY(!FindCompanion(kReportServer)); // makes the folder
    auto const listener = MakeSocket();
    QVERIFY(AtSocket(&bind, listener, Path(m_strSocket)));
    // The kernel keeps the user who began to listen.
    int const listening = seteuid(65534) == 0 ? listen(listener.Get(), 1) : -1;
    QVERIFY(seteuid(0) == 0 && listening == 0);
    QVERIFY(!FindCompanion(kReportServer) && !QuitCompanion(kReportServer));
}

void CompanionsTest::aCompanionIsStartedFromTheFolderBeforeThePath()
{
    auto const folder = Path("own folder");
    auto const start = [&](char const* content) {
        auto const program = folder + "/corvrpt";
        std::ofstream(program) << content;
        chmod(program.c_str(), 0700);
        return StartCompanion(kReportServer, folder);
    };
    qputenv("PATH", "/usr/bin:/bin");
    QVERIFY(!start("there is no folder yet") && mkdir(folder.c_str(), 0700) == 0);
    QVERIFY(!start("neither a script nor a binary") && !start("#!/nonexistent/sh\n"));
    qputenv("PATH", COMPANIONS_FOLDER ":/usr/bin:/bin");
    QVERIFY(start("#!/bin/sh\necho \"$#,$(pwd)\" >\"$XDG_RUNTIME_DIR/started\"\n"));
    QFile started(m_runtime->filePath(u"started"_s));
    QTRY_VERIFY(started.size() > 0 && (started.isOpen() || started.open(QIODevice::ReadOnly)));
    QCOMPARE(started.readAll().trimmed(), "0," + QFile::encodeName(QDir::currentPath()));
    QVERIFY(!FindCompanion(kReportServer));
}

static CTestEntryOf<CompanionsTest> const g_entry;
#include "CompanionsTest.moc"
