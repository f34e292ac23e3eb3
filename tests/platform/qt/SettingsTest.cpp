#include "platform/qt/Settings.h"

#include "tests/QtTests.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cstdint>
#include <limits>

using namespace Qt::StringLiterals;

class SettingsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void readsWholeNumbersOnly_data();
    void readsWholeNumbersOnly();
    void keepsWhatIsWritten();
    void putsADamagedFileRight();
    void reportsAnUnwritableFile();

private:
    QTemporaryDir m_config;
};

/// The paths of settings are taken from the environment once, at their first use.
void SettingsTest::initTestCase()
{
    QVERIFY(m_config.isValid());
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_config.path()));
    QVERIFY(QDir(m_config.path()).mkdir(u"Halvetta"_s));
    QFile file(m_config.filePath(u"Halvetta/Corvana.conf"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[settings]\nminus=-1\nfive=5\nword=yes\nmixed=5x\nfraction=1.5\nempty=\n"
               "list=1, 2\nhuge=1099511627776\ngreatest=2147483647\nbeyond=2147483648\n"
               "binary=@ByteArray(\\xff\\0)\ngarbage=@Variant(\\0\\xff\\xff)\n");
}

void SettingsTest::readsWholeNumbersOnly_data()
{
    QTest::addColumn<int>("expected");
    int const absent = 42;
    QTest::newRow("absent") << absent;
    QTest::newRow("minus") << -1;
    QTest::newRow("five") << 5;
    QTest::newRow("word") << absent;
    QTest::newRow("mixed") << absent;
    QTest::newRow("fraction") << absent;
    QTest::newRow("empty") << absent;
    QTest::newRow("list") << absent;
    QTest::newRow("huge") << absent;
    QTest::newRow("greatest") << std::numeric_limits<std::int32_t>::max();
    QTest::newRow("beyond") << absent;
    QTest::newRow("binary") << absent;
    QTest::newRow("garbage") << absent;
}

void SettingsTest::readsWholeNumbersOnly()
{
    QFETCH(int const, expected);
    QCOMPARE(GetProfileInt("settings", QTest::currentDataTag(), 42), expected);
    QCOMPARE(GetProfileInt("other", QTest::currentDataTag(), 42), 42);
}

void SettingsTest::keepsWhatIsWritten()
{
    QVERIFY(WriteProfileInt("settings", "load_members", -1));
    QCOMPARE(GetProfileInt("settings", "load_members", 0), -1);
    QVERIFY(WriteProfileInt("settings", "load_members", 1));
    QFile file(m_config.filePath(u"Halvetta/Corvana.conf"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    auto const lines = file.readAll().split('\n');
    QVERIFY(lines.contains("load_members=1"));
    QVERIFY(lines.contains("five=5")); // what others stored stays
}

void SettingsTest::putsADamagedFileRight()
{
    QFile file(m_config.filePath(u"Halvetta/Corvana.conf"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[settings\nload_members=1\n\0\xff[]=\nfive=5\n", 40);
    file.close();
    QVERIFY(WriteProfileInt("settings", "load_members", 3));
    QCOMPARE(GetProfileInt("settings", "load_members", 0), 3);
}

void SettingsTest::reportsAnUnwritableFile()
{
    // A folder in the file's place cannot be replaced, not even by root.
    auto const path = m_config.filePath(u"Halvetta/Corvana.conf"_s);
    QVERIFY(QFile::remove(path));
    QVERIFY(QDir(path).mkpath(u"inside"_s));
    QVERIFY(!WriteProfileInt("settings", "load_members", 7));
    QVERIFY(QDir(path).exists(u"inside"_s));
}

CORVANA_TEST(SettingsTest);
#include "SettingsTest.moc"
