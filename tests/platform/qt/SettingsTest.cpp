#include "platform/qt/Settings.h"

#include "tests/QtTests.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class SettingsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void keepsWholeNumbers();
};

void SettingsTest::keepsWholeNumbers()
{
    QTemporaryDir const config;
    // The paths of settings are taken from the environment once, at their first use.
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(config.path()));
    QDir const folder(config.filePath(u"Halvetta"_s));
    QFile file(folder.filePath(u"Corvana.conf"_s));
    auto const store = [&](char const* text) {
        QVERIFY(folder.mkpath(u"."_s) && file.open(QIODevice::WriteOnly) && file.write(text) > 0);
        file.close();
    };
    store("[settings]\nminus=-1\ngreatest=2147483647\nword=yes\nmixed=5x\nfraction=1.5\nempty=\n"
          "list=1, 2\nhuge=1099511627776\nbeyond=2147483648\n"
          "binary=@ByteArray(\\xff\\0)\ngarbage=@Variant(\\0\\xff\\xff)\n");
    QCOMPARE(GetProfileInt("settings", "minus", 42), -1);
    QCOMPARE(GetProfileInt("settings", "greatest", 42), 2147483647);
    QCOMPARE(GetProfileInt("other", "minus", 42), 42);
    for (auto const* const entry : {"absent", "word", "mixed", "fraction", "empty", "list", "huge",
             "beyond", "binary", "garbage"}) {
        QCOMPARE(GetProfileInt("settings", entry, 42), 42);
    }

    QVERIFY(WriteProfileInt("settings", "load_members", 1));
    QVERIFY(file.open(QIODevice::ReadOnly));
    auto const lines = file.readAll().split('\n');
    QVERIFY(
        lines.contains("load_members=1") && lines.contains("minus=-1")); // what others stored stays
    file.close();

    store("[settings\nload_members=1\n");
    QVERIFY(WriteProfileInt("settings", "load_members", 3)); // puts a damaged file right
    QCOMPARE(GetProfileInt("settings", "load_members", 0), 3);

    // A folder in the file's place cannot be replaced, not even by root.
    QVERIFY(file.remove() && folder.mkpath(u"Corvana.conf/inside"_s));
    QVERIFY(
        !WriteProfileInt("settings", "load_members", 7) && folder.exists(u"Corvana.conf/inside"_s));
}

static CTestEntryOf<SettingsTest> const g_entry;
#include "SettingsTest.moc"
