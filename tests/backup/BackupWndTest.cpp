#include "backup/BackupWnd.h"

#include "platform/qt/Settings.h"
#include "platform/qt/SingleInstance.h"
#include "store/services/BackupFolder.h"
#include "tests/QtTests.h"
#include "tests/doc/TestCentre.h"
#include "tests/ui/FileRecorder.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/UserSteps.h"
#include "ui/Convert.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <filesystem>
#include <memory>

using namespace Qt::StringLiterals;

/// The window in this process, and the program as a process of its own, over a small centre.
class BackupWndTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void theProgramTakesTheNameBacksUpAndEnds();
    void aFailureStaysOpenAndGivesTheNameBack();
    void theFirstBackupAsksWhereTheNextAreToGo();

private:
    QString Folder(QString const& name) const { return m_place->filePath(name); }
    static int Sets(QString const& folder)
    {
        return static_cast<int>(BackupSetsIn(FromQt(folder)).size());
    }

    std::unique_ptr<QTemporaryDir> m_place;
    std::unique_ptr<CTestCentre> m_centre;
};

namespace
{

bool HasName()
{
    return IsCORVAppRunning("Backup Utility", false);
}

bool IsShown(CBackupWnd const& window, char const* label, QString const& text)
{
    auto const& widget = Child<QLabel>(window, label);
    return widget.isVisible() && widget.text().contains(text);
}

} // namespace

void BackupWndTest::init()
{
    m_centre = std::make_unique<CTestCentre>();
    auto const parent = m_centre->Folder().parent_path() / "corvbk-test-XXXXXX"; // on its disk
    m_place = std::make_unique<QTemporaryDir>(ToQt(parent.string()));
    CDatabaseSession::Get().ShutDown();
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_place->path()));
    qputenv("CORVANA_DATA", m_centre->Folder().c_str());
    WriteProfileText("backup", "folder", {});
    WriteProfileInt("backup", "keep", 0);
}

void BackupWndTest::theProgramTakesTheNameBacksUpAndEnds()
{
    auto const folder = Folder(u"sets, of all"_s);
    QVERIFY(QDir().mkdir(folder));
    WriteProfileText("backup", "folder", folder);
    WriteProfileInt("backup", "keep", 2);
    auto const program = QStringLiteral(BACKUP_PROGRAM);
    for (int run = 1; run <= 4; ++run) {
        QProcess utility;
        utility.start(program, QStringList());
        QTRY_VERIFY(FindCompanion(kBackupUtility));
        QCOMPARE(QProcess::execute(program), 0); // a second copy ends at once
        QTRY_VERIFY(Sets(folder) == std::min(run, 2));
        QVERIFY(FindCompanion(kBackupUtility)); // it shows its result
        QVERIFY(run == 1 || QuitCompanion(kBackupUtility));
        QVERIFY(utility.state() == QProcess::NotRunning || utility.waitForFinished(10000));
        QCOMPARE(utility.exitCode(), 0);
        QVERIFY(!FindCompanion(kBackupUtility) && !HasName());
    }
}

void BackupWndTest::aFailureStaysOpenAndGivesTheNameBack()
{
    CFileRecorder files;
    WriteProfileText("backup", "folder", Folder(u"gone"_s));
    CBackupWnd window;
    QVERIFY(window.Start());
    window.show();
    QVERIFY(IsShown(window, "stateLabel", u"is not there"_s));
    QVERIFY(!HasName() && !QFile::exists(Folder(u"gone"_s)));
    auto& again = Child<QPushButton>(window, "againButton");
    QVERIFY(QDir().mkdir(Folder(u"gone"_s)));
    // The disk of the folder is not connected: its place is on that of the data.
    WriteProfileInt("backup", "other_disk", 1);
    {
        CBackupWnd other;
        QVERIFY(other.Start());
        other.show();
        QVERIFY(IsShown(other, "stateLabel", u"was on another disk"_s));
        QVERIFY(IsShown(other, "diskLabel", u"same disk"_s));
    }

    // The engine's own failure.
    auto const center = m_centre->Folder() / "center.mdb";
    std::filesystem::rename(center, center.string() + "x");
    QTest::mouseClick(&again, Qt::LeftButton);
    QTRY_VERIFY(IsShown(window, "detailLabel", u"does not exist"_s));
    QVERIFY(IsShown(window, "stateLabel", u"No backup was made."_s) && window.isVisible());
    QTRY_VERIFY(!HasName());
    QCOMPARE(QDir(Folder(u"gone"_s))
                 .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
                 .size(),
        0);
    std::filesystem::rename(center.string() + "x", center);

    // Inside the data it is no backup; a new folder is used at once.
    QVERIFY(QDir().mkdir(Folder(u"new"_s)));
    files.AnswerNext({QString::fromStdString(m_centre->Folder().string()), Folder(u"new"_s)});
    auto& choose = Child<QPushButton>(window, "chooseButton");
    QTest::mouseClick(&choose, Qt::LeftButton);
    QVERIFY(IsShown(window, "stateLabel", u"inside the data folder"_s));
    QTest::mouseClick(&choose, Qt::LeftButton);
    QVERIFY(files.Questions().constLast().m_bFolder);
    QTRY_COMPARE(Sets(Folder(u"new"_s)), 1);
    QCOMPARE(GetProfileText("backup", "folder"), Folder(u"new"_s));
    QTRY_VERIFY(!window.isVisible()); // by itself
    QCOMPARE(window.result(), int(QDialog::Accepted));
}

void BackupWndTest::theFirstBackupAsksWhereTheNextAreToGo()
{
    auto const folder = QString::fromStdString(m_centre->Folder().string()) + u"-backups"_s;
    CFileRecorder files;
    CBackupWnd window;
    QVERIFY(window.Start());
    window.show();
    QTRY_VERIFY(IsShown(window, "stateLabel", u"The backup is made"_s));
    QVERIFY(!HasName());
    QVERIFY(IsShown(window, "lastLabel", u"Last good backup there: "_s));
    QCOMPARE(Sets(folder), 1);
    QCOMPARE(FaultsOf(window).join(u'\n'), QString());
    {
        CLargeFont const font;
        CBackupWnd large;
        large.show();
        QCOMPARE(FaultsOf(large).join(u'\n'), QString());
    }
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    QCOMPARE(files.Questions().size(), 1);
    QTest::mouseClick(&Child<QCheckBox>(window, "keepCheck"), Qt::LeftButton);
    QCOMPARE(GetProfileInt("backup", "keep", 0), 30);
    QTest::mouseClick(&Child<QPushButton>(window, "keepFolderButton"), Qt::LeftButton);
    QCOMPARE(GetProfileText("backup", "folder"), folder);
    QTest::keyClick(&window, Qt::Key_Escape);
    QVERIFY(!window.isVisible());
    QDir(folder).removeRecursively();
}

static CTestEntryOf<BackupWndTest> const g_entry;
#include "BackupWndTest.moc"
