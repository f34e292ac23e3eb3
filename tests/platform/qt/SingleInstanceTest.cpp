#include "platform/qt/SingleInstance.h"
#include "platform/qt/RuntimeFolder.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <memory>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class SingleInstanceTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void countsOnlyALivingHolder();
    void refusesNames_data();
    void refusesNames();
    void refusesAFolderThatOthersReach_data();
    void refusesAFolderThatOthersReach();
    void leavesAFolderThatIsNotTheUsers_data();
    void leavesAFolderThatIsNotTheUsers();

private:
    std::string Path(char const* name) const
    {
        return m_runtime->filePath(QString::fromLatin1(name)).toStdString();
    }

    std::unique_ptr<QTemporaryDir> m_runtime;
};

namespace
{

/// Another process that holds the name, or was refused it, until it is killed.
class CHolder
{
public:
    explicit CHolder(QByteArray const& name)
    {
        m_process.start(
            QCoreApplication::applicationFilePath(), {u"--hold"_s, QString::fromUtf8(name)});
        m_process.waitForReadyRead();
        m_answer = m_process.readAll();
    }
    ~CHolder()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    CHolder(CHolder const&) = delete;
    CHolder& operator=(CHolder const&) = delete;

    bool Starts() const { return m_answer == "starts"; }
    bool IsRefused() const { return m_answer == "refused"; }

private:
    QProcess m_process;
    QByteArray m_answer;
};

/// What CHolder runs.
int Hold(char const* name)
{
    std::fputs(IsCORVAppRunning(name, true) ? "refused" : "starts", stdout);
    std::fflush(stdout);
    return pause();
}

} // namespace

void SingleInstanceTest::init()
{
    m_runtime = std::make_unique<QTemporaryDir>();
    QVERIFY(m_runtime->isValid());
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_runtime->path()));
}

void SingleInstanceTest::countsOnlyALivingHolder()
{
    QVERIFY(!IsCORVAppRunning("Corvana", false));
    {
        CHolder const holder("Corvana");
        QVERIFY(holder.Starts());
        QVERIFY(IsCORVAppRunning("Corvana", false));
        QVERIFY(IsCORVAppRunning("Corvana", true));
        QVERIFY(!IsCORVAppRunning("Another", false));
    }
    QVERIFY(QFile::exists(m_runtime->filePath(u"corvana/Corvana.lock"_s)));
    QVERIFY(!IsCORVAppRunning("Corvana", false));
    QVERIFY(CHolder("Corvana").Starts()); // a look does not take the name
    QVERIFY(!IsCORVAppRunning("Corvana", true));
    QVERIFY(!IsCORVAppRunning("Corvana", true));
    QVERIFY(CHolder("Corvana").IsRefused());
}

void SingleInstanceTest::refusesNames_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("isAllowed");
    QTest::newRow("64 letters") << QByteArray(64, 'a') << true;
    QTest::newRow("65 letters") << QByteArray(65, 'a') << false;
    QTest::newRow("empty") << ""_ba << false;
    QTest::newRow("parent folder") << ".."_ba << false;
    QTest::newRow("path") << "../Corvana"_ba << false;
    QTest::newRow("accent") << "Caf\xc3\xa9"_ba << false;
}

void SingleInstanceTest::refusesNames()
{
    QFETCH(QByteArray const, name);
    QFETCH(bool const, isAllowed);
    QCOMPARE(RuntimeFile(name.constData(), ".lock").has_value(), isAllowed);
    QVERIFY(CHolder(name).Starts());
    QVERIFY(!QFile::exists(m_runtime->filePath(u"Corvana.lock"_s)));
}

void SingleInstanceTest::refusesAFolderThatOthersReach_data()
{
    QTest::addColumn<bool>("isLink");
    QTest::addColumn<uint>("mode");
    QTest::newRow("readable for others") << false << 0755U;
    QTest::newRow("open to the group") << false << 0710U;
    QTest::newRow("link to a folder of the user") << true << 0700U;
}

void SingleInstanceTest::refusesAFolderThatOthersReach()
{
    QFETCH(bool const, isLink);
    QFETCH(uint const, mode);
    auto const target = Path(isLink ? "target" : "corvana");
    QCOMPARE(mkdir(target.c_str(), 0700), 0);
    QCOMPARE(chmod(target.c_str(), mode), 0);
    if (isLink) {
        QCOMPARE(symlink(target.c_str(), Path("corvana").c_str()), 0);
    }
    std::string reason;
    QVERIFY(!RuntimeFolder(&reason));
    QVERIFY(reason.starts_with(Path("corvana") + ": "));
    QVERIFY(!IsCORVAppRunning("Corvana", true));
    QVERIFY(!QFile::exists(QString::fromStdString(target + "/Corvana.lock")));
}

void SingleInstanceTest::leavesAFolderThatIsNotTheUsers_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("missing") << u"%1/missing"_s;
    QTest::newRow("relative") << u"."_s;
    QTest::newRow("writable for all") << u"%1/open"_s;
    QTest::newRow("a file") << u"%1/file"_s;
}

void SingleInstanceTest::leavesAFolderThatIsNotTheUsers()
{
    QFETCH(QString const, folder);
    QCOMPARE(mkdir(Path("open").c_str(), 0700), 0);
    QCOMPARE(chmod(Path("open").c_str(), 01777), 0);
    QVERIFY(QFile(m_runtime->filePath(u"file"_s)).open(QIODevice::WriteOnly));
    auto const path = folder.contains(u'%') ? folder.arg(m_runtime->path()) : folder;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(path));
    auto const found = RuntimeFolder();
    QVERIFY(found.has_value());
    QCOMPARE(*found, "/tmp/corvana-" + std::to_string(geteuid()));
    struct stat status = {};
    QCOMPARE(stat(found->c_str(), &status), 0);
    QCOMPARE(status.st_mode & 07777U, 0700U);
}

int main(int argc, char** argv)
{
    if (argc == 3 && std::string_view(argv[1]) == "--hold") {
        return Hold(argv[2]);
    }
    QCoreApplication const app(argc, argv);
    SingleInstanceTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "SingleInstanceTest.moc"
