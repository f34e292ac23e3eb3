#include "platform/qt/Settings.h"

#include "tests/QtTests.h"
#include "tests/TempFolder.h"

#include <QTest>

class SettingsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void keepsWholeNumbers();
};

void SettingsTest::keepsWholeNumbers()
{
    namespace fs = std::filesystem;
    CTempFolder const config;
    // The paths of settings are taken from the environment once, at their first use.
    qputenv("XDG_CONFIG_HOME", config.Path().c_str());
    auto const file = config.Path() / "Halvetta/Corvana.conf";
    fs::create_directory(file.parent_path());
    WriteFile(file,
        "[settings]\nminus=-1\ngreatest=2147483647\nword=yes\nmixed=5x\nfraction=1.5\nempty=\n"
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
    auto const lines = QByteArray::fromStdString(ReadFile(file)).split('\n');
    QVERIFY(
        lines.contains("load_members=1") && lines.contains("minus=-1")); // what others stored stays
    WriteFile(file, "[settings\nload_members=1\n");
    QVERIFY(WriteProfileInt("settings", "load_members", 3)); // puts a damaged file right
    QCOMPARE(GetProfileInt("settings", "load_members", 0), 3);

    // A folder in the file's place cannot be replaced, not even by root.
    fs::remove(file);
    fs::create_directories(file / "inside");
    QVERIFY(!WriteProfileInt("settings", "load_members", 7) && fs::exists(file / "inside"));
}

static CTestEntryOf<SettingsTest> const g_entry;
#include "SettingsTest.moc"
