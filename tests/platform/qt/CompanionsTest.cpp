#include "platform/qt/Companions.h"
#include "platform/qt/Descriptor.h"
#include "platform/qt/SingleInstance.h"
#include "tests/QtTests.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <memory>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// Companions as processes of their own, in a runtime folder of the test's own.
class CompanionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void findsACompanionWhileItRuns();
    void tellsTheCompanionsApart();
    void doesNotFindAnotherName();
    void doesNotFindAnotherUsersProcess();
    void findsASilentCompanionInTime();
    void reportsARequestThatWasNotHeard();
    void startsFromTheFolderBeforeThePath();
    void reportsAFailedStart_data();
    void reportsAFailedStart();
    void aSecondCopyEndsByItself();
    void aNewCopyWaitsForTheOneThatQuits();

private:
    std::unique_ptr<QProcess> Run(CCompanion const& companion, char const* misbehaviour = "");
    QString SocketPath() const { return m_runtime->filePath(u"corvana/Report Server.sock"_s); }
    QString MakeProgram(QString const& folder, QByteArray const& content) const;

    std::unique_ptr<QTemporaryDir> m_runtime;
};

namespace
{

/// Whether its process, finished or not with listening, has not ended.
bool IsAlive(CCompanion const& companion)
{
    return IsCORVAppRunning(std::string(companion.name).c_str(), false);
}

/// Whether the process ends within so many milliseconds.
bool HasEnded(QProcess& process, int wait = 5000)
{
    return QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, wait);
}

void Kill(QProcess& process)
{
    process.kill();
    QVERIFY(HasEnded(process));
}

/// Calls bind or connect for the socket file. Returns whether that worked.
bool AtSocket(decltype(&connect) function, int endpoint, QString const& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    auto const bytes = QFile::encodeName(path);
    std::copy(bytes.begin(), bytes.end(), address.sun_path);
    void const* const generic = &address;
    return function(endpoint, static_cast<sockaddr const*>(generic), sizeof address) == 0;
}

bool IsListening(QString const& path)
{
    CDescriptor const probe(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    return AtSocket(&connect, probe.Get(), path);
}

} // namespace

void CompanionsTest::init()
{
    m_runtime = std::make_unique<QTemporaryDir>();
    QVERIFY(m_runtime->isValid());
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_runtime->path()));
    qputenv("PATH", COMPANIONS_FOLDER ":/usr/bin:/bin");
    qunsetenv("CORVANA_STANDIN");
}

void CompanionsTest::cleanup()
{
    // What a failed case may have left behind.
    QuitCompanion(kReportServer);
}

/// Starts a stand-in as a child of the test and waits until it listens.
std::unique_ptr<QProcess> CompanionsTest::Run(CCompanion const& companion, char const* misbehaviour)
{
    auto process = std::make_unique<QProcess>();
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"CORVANA_STANDIN"_s, QString::fromLatin1(misbehaviour));
    process->setProcessEnvironment(environment);
    process->start(QStringLiteral(COMPANIONS_FOLDER "/")
        + QString::fromStdString(std::string(companion.file)));
    auto const socket = m_runtime->filePath(
        u"corvana/%1.sock"_s.arg(QString::fromStdString(std::string(companion.name))));
    if (!process->waitForStarted() || !QTest::qWaitFor([&] { return IsListening(socket); })) {
        qWarning("the stand-in does not listen");
    }
    return process;
}

QString CompanionsTest::MakeProgram(QString const& folder, QByteArray const& content) const
{
    QDir(m_runtime->path()).mkdir(folder);
    QFile program(m_runtime->filePath(folder + u"/corvrpt"_s));
    if (!program.open(QIODevice::WriteOnly) || program.write(content) != content.size()
        || !program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
        qWarning("cannot write %s", qPrintable(program.fileName()));
    }
    return m_runtime->filePath(folder);
}

void CompanionsTest::findsACompanionWhileItRuns()
{
    QVERIFY(!FindCompanion(kReportServer));
    QVERIFY(!QuitCompanion(kReportServer));

    auto const server = Run(kReportServer);
    QVERIFY(FindCompanion(kReportServer));
    QVERIFY(QuitCompanion(kReportServer));
    QVERIFY(HasEnded(*server));
    QCOMPARE(server->exitStatus(), QProcess::NormalExit);
    QVERIFY(!FindCompanion(kReportServer));

    auto const killed = Run(kReportServer);
    Kill(*killed);
    QVERIFY(QFile::exists(SocketPath()));
    QVERIFY(!FindCompanion(kReportServer));

    auto const successor = Run(kReportServer);
    QVERIFY(FindCompanion(kReportServer));
    QVERIFY(QuitCompanion(kReportServer));
    QVERIFY(HasEnded(*successor));
}

void CompanionsTest::tellsTheCompanionsApart()
{
    auto const utility = Run(kBackupUtility);
    QVERIFY(FindCompanion(kBackupUtility));
    QVERIFY(!FindCompanion(kReportServer));
    QVERIFY(!QuitCompanion(kReportServer));
    QVERIFY(QuitCompanion(kBackupUtility));
    QVERIFY(HasEnded(*utility));
}

void CompanionsTest::doesNotFindAnotherName()
{
    auto const server = Run(kReportServer, "name=Report Server 2");
    QVERIFY(!FindCompanion(kReportServer));
    QVERIFY(!QuitCompanion(kReportServer));
    QVERIFY(!HasEnded(*server, 100));

    Kill(*server);
    auto const longWinded = Run(kReportServer,
        "name=Report Server                              "
        "                                         .");
    QVERIFY(!FindCompanion(kReportServer));
    Kill(*longWinded);
}

void CompanionsTest::doesNotFindAnotherUsersProcess()
{
    if (geteuid() != 0) {
        QSKIP("only root can run a process as another user");
    }
    QVERIFY(!FindCompanion(kReportServer)); // makes the folder
    CDescriptor const listener(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    QVERIFY(AtSocket(&bind, listener.Get(), SocketPath()));
    // The kernel keeps the user who began to listen.
    QCOMPARE(seteuid(65534), 0);
    int const listening = listen(listener.Get(), 1);
    QCOMPARE(seteuid(0), 0);
    QCOMPARE(listening, 0);
    QVERIFY(!FindCompanion(kReportServer));
    QVERIFY(!QuitCompanion(kReportServer));
}

void CompanionsTest::findsASilentCompanionInTime()
{
    auto const server = Run(kReportServer, "hang");
    QElapsedTimer timer;
    timer.start();
    QVERIFY(FindCompanion(kReportServer));
    QVERIFY(timer.elapsed() >= 1900 && timer.elapsed() < 2500);
    Kill(*server);

    auto const busy = Run(kReportServer);
    QCOMPARE(kill(static_cast<pid_t>(busy->processId()), SIGSTOP), 0);
    timer.start();
    QVERIFY(!QuitCompanion(kReportServer));
    QVERIFY(timer.elapsed() < 2500);
    QCOMPARE(kill(static_cast<pid_t>(busy->processId()), SIGCONT), 0);
    QVERIFY(HasEnded(*busy)); // the request waited for it
}

void CompanionsTest::reportsARequestThatWasNotHeard()
{
    auto const server = Run(kReportServer, "deaf");
    QVERIFY(!QuitCompanion(kReportServer));
    QVERIFY(FindCompanion(kReportServer));
    Kill(*server);
}

void CompanionsTest::startsFromTheFolderBeforeThePath()
{
    QVERIFY(StartCompanion(kReportServer)); // beside this test is none: from the path
    QTRY_VERIFY(FindCompanion(kReportServer));
    QVERIFY(QuitCompanion(kReportServer));
    QTRY_VERIFY(!IsAlive(kReportServer));

    auto const script = "#!/bin/sh\necho \"$#,$MARK,$(pwd)\" >\"$XDG_RUNTIME_DIR/started\"\n"_ba;
    auto const own = MakeProgram(u"own folder"_s, script);
    qputenv("MARK", "inherited");
    QVERIFY(StartCompanion(kReportServer, own.toStdString()));
    QFile started(m_runtime->filePath(u"started"_s));
    QTRY_VERIFY(started.size() > 0 && (started.isOpen() || started.open(QIODevice::ReadOnly)));
    QCOMPARE(started.readAll().trimmed(), "0,inherited," + QFile::encodeName(QDir::currentPath()));
    QVERIFY(!FindCompanion(kReportServer));
}

void CompanionsTest::reportsAFailedStart_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no such program") << QByteArray();
    QTest::newRow("a program that nothing can run") << "neither a script nor a binary"_ba;
    QTest::newRow("a script whose interpreter is missing") << "#!/nonexistent/sh\n"_ba;
}

void CompanionsTest::reportsAFailedStart()
{
    QFETCH(QByteArray const, content);
    auto folder = m_runtime->path();
    if (!content.isEmpty()) {
        folder = MakeProgram(u"own"_s, content);
    }
    qputenv("PATH", "/usr/bin:/bin");
    QVERIFY(!StartCompanion(kReportServer, folder.toStdString()));
}

void CompanionsTest::aSecondCopyEndsByItself()
{
    auto const first = Run(kReportServer);
    auto const second = Run(kReportServer);
    QVERIFY(HasEnded(*second));
    QVERIFY(FindCompanion(kReportServer));
    QVERIFY(QuitCompanion(kReportServer));
    QVERIFY(HasEnded(*first));
}

void CompanionsTest::aNewCopyWaitsForTheOneThatQuits()
{
    auto const first = Run(kReportServer, "busy=300");
    QVERIFY(QuitCompanion(kReportServer));
    QVERIFY(!FindCompanion(kReportServer));
    QVERIFY(IsAlive(kReportServer));
    QVERIFY(StartCompanion(kReportServer));
    QTRY_VERIFY(FindCompanion(kReportServer));
    QVERIFY(HasEnded(*first));
    QVERIFY(QuitCompanion(kReportServer));
    QTRY_VERIFY(!IsAlive(kReportServer));
}

CORVANA_TEST(CompanionsTest);
#include "CompanionsTest.moc"
