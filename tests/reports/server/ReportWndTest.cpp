#include "reports/server/ReportWnd.h"

#include "platform/qt/Companions.h"
#include "platform/qt/Settings.h"
#include "reports/server/PdfFile.h"
#include "reports/server/ReportSettingsDlg.h"
#include "tests/QtTests.h"
#include "tests/doc/TestCentre.h"
#include "tests/ui/DialogUser.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPrintPreviewDialog>
#include <QProcess>
#include <QProgressBar>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeView>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

/// The window in this process, and the program as a process of its own, over a small centre.
class ReportWndTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void theProgramServesUntilItIsAskedToQuit();
    void theQueueCanBeCompactedWhileNothingWaits();
    void theListTellsWhatBecameOfEachReport();
    void aReportCanBeStoppedAndItsProcessMayDie();
    void whatKeepsReportsFromBeingMadePausesTheServer();
    void aReportIsShownAndSavedBesideTheQueue();
    void theSettingsAreRemembered();
    void aFileHasOneWriterAndReplacesNone();

private:
    QString Path(QString const& name) const { return m_place->filePath(name); }
    int Pdfs() const { return int(QDir(Path(u"out"_s)).entryList({u"*.pdf"_s}).size()); }
    /// A program that makes reports in another way.
    QString Script(QString const& name, QByteArray const& lines) const
    {
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + lines) < 0
            || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
            qFatal("no script");
        }
        return file.fileName();
    }

    std::unique_ptr<QTemporaryDir> m_place;
    std::unique_ptr<CTestCentre> m_centre;
};

namespace
{

void Queue(int type, int jobs = 1)
{
    for (int i = 0; i < jobs; ++i) {
        CTestCentre::Run(
            "INSERT INTO reports (type, parameter, date_from, date_to, category, course,"
            " section) VALUES ("
                + std::to_string(type) + ", 0, 0, 0, '', '', '')",
            DataFile::report);
    }
}

std::vector<CQueuedReport> Jobs()
{
    std::vector<CQueuedReport> jobs;
    if (auto const status = CReportQueue().List(jobs); !status) {
        qFatal("%s", status.Text().c_str());
    }
    return jobs;
}

CDialogUser::Step Press(QString const& button)
{
    return [button](QDialog& box) {
        for (auto* const other : box.findChildren<QPushButton*>()) {
            if (other->text() == button) {
                other->click();
                return;
            }
        }
    };
}

/// A window that works, with the list in front.
struct CShown
{
    explicit CShown(QString const& program = QStringLiteral(REPORT_PROGRAM))
    {
        m_window.Worker().Run().SetProgram(program);
        m_window.show();
        m_window.Worker().GoOn();
        m_list.setFocus();
    }
    QString Cell(int row, int column) const
    {
        return m_list.model()->index(row, column).data().toString();
    }
    QString State() const { return Child<QLabel>(m_window, "stateLabel").text(); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        m_window.activateWindow(); // shortcuts need that, and a box that closed does not see to it
        QVERIFY(QTest::qWaitForWindowActive(&m_window));
        QTest::keyClick(&m_list, key, modifiers);
    }
    void Press(char const* button) const { Child<QPushButton>(m_window, button).click(); }
    bool CanPress(char const* button) const
    {
        auto const& widget = Child<QPushButton>(m_window, button);
        return widget.isVisible() && widget.isEnabled();
    }

    CReportWnd m_window;
    QTreeView& m_list = Child<QTreeView>(m_window, "jobList");
};

} // namespace

void ReportWndTest::init()
{
    m_place = std::make_unique<QTemporaryDir>();
    m_centre = std::make_unique<CTestCentre>();
    QVERIFY(QDir().mkdir(Path(u"out"_s)));
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_place->path()));
    qputenv("CORVANA_DATA", m_centre->Folder().c_str());
    WriteProfileText("reports", "output", u"folder"_s);
    WriteProfileText("reports", "folder", Path(u"out"_s));
}

void ReportWndTest::theProgramServesUntilItIsAskedToQuit()
{
    Queue(CDAOReport::rtMemberCount, 200);
    QProcess server;
    server.start(QStringLiteral(REPORT_PROGRAM), QStringList());
    QTRY_VERIFY(FindCompanion(kReportServer));
    QCOMPARE(QProcess::execute(QStringLiteral(REPORT_PROGRAM), QStringList()), 0);
    QTRY_VERIFY(Pdfs() > 2);
    QVERIFY(QuitCompanion(kReportServer)); // with a report in hand
    QVERIFY(server.waitForFinished(10000));
    QCOMPARE(server.exitCode(), 0);
    QVERIFY(!FindCompanion(kReportServer));
    int done = 0;
    for (auto const& job : Jobs()) {
        done += job.state == CQueuedReport::done ? 1 : 0;
        QVERIFY(!job.isInHand);
        QVERIFY(job.attempts == 0 || job.state == CQueuedReport::done);
    }
    QCOMPARE(done, Pdfs());
    QVERIFY(done < 200);
}

void ReportWndTest::theQueueCanBeCompactedWhileNothingWaits()
{
    QProcess server;
    server.start(QStringLiteral(REPORT_PROGRAM), QStringList());
    QTRY_VERIFY(FindCompanion(kReportServer));
    QTRY_VERIFY_WITH_TIMEOUT(
        [] {
            CDbStatus status;
            auto* const database = CDatabaseSession::Get().Open(DataFile::report, status);
            auto const isAlone = database != nullptr && database->UseExclusively();
            CDatabaseSession::Get().ShutDown();
            return isAlone;
        }(),
        20000);
    Queue(CDAOReport::rtMemberCount); // which it sees all the same
    QTRY_COMPARE_WITH_TIMEOUT(Pdfs(), 1, 10000);
    QVERIFY(QuitCompanion(kReportServer) && server.waitForFinished(10000));
}

void ReportWndTest::theListTellsWhatBecameOfEachReport()
{
    Queue(4711);
    Queue(CDAOReport::rtMemberCount);
    CShown shown;
    QTRY_COMPARE(Pdfs(), 1);
    QTRY_COMPARE(shown.Cell(1, CReportModel::state), u"Done"_s);
    QVERIFY(shown.Cell(0, CReportModel::state).startsWith(u"To be tried again at "_s));
    QCOMPARE(shown.Cell(0, CReportModel::when), u"1 of 3 attempts"_s);
    QVERIFY(shown.Cell(1, CReportModel::output).startsWith(u"Member Count "_s));
    QCOMPARE(shown.State(), u"Waiting for reports."_s);

    // The first one is selected: by the keyboard alone.
    QVERIFY(!shown.CanPress("previewButton")); // it is no report
    QTRY_VERIFY(Child<QLabel>(shown.m_window, "detailLabel").text().contains(u"no report"_s));
    {
        CDialogUser user({[](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); }});
        shown.Key(Qt::Key_Delete); // No is the default
        QCOMPARE(user.Faults().join(u';'), QString());
    }
    QCOMPARE(Jobs().size(), 2U);
    {
        CDialogUser user({Press(u"&Yes"_s)});
        shown.Key(Qt::Key_Delete);
        QCOMPARE(user.Faults().join(u';'), QString());
    }
    QCOMPARE(Jobs().size(), 1U);
    QCOMPARE(shown.m_list.model()->rowCount(), 1);
    shown.Key(Qt::Key_Home);
    shown.m_list.selectAll();
    shown.Key(Qt::Key_A, Qt::AltModifier); // again
    QTRY_COMPARE(Pdfs(), 2);
    shown.Key(Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(Child<QMenu>(shown.m_window, "reportMenu").isVisible());
    Child<QMenu>(shown.m_window, "reportMenu").close();

    QCOMPARE(FaultsOf(shown.m_window).join(u';'), QString());
    CLargeFont const font;
    CShown const large;
    QCOMPARE(FaultsOf(large.m_window).join(u';'), QString());
    CReportSettingsDlg settings;
    settings.show();
    QCOMPARE(FaultsOf(settings).join(u';'), QString());
    shown.m_window.close(); // only Quit ends it
    QVERIFY(shown.m_window.isMinimized());
}

void ReportWndTest::aReportCanBeStoppedAndItsProcessMayDie()
{
    Queue(CDAOReport::rtMemberCount);
    CShown shown(Script(u"slow"_s, "trap '' TERM\necho 37\nsleep 60 >/dev/null"));
    QTRY_COMPARE(Child<QProgressBar>(shown.m_window, "progressBar").value(), 37);
    QCOMPARE(shown.State(), u"Making \"Member Count\"."_s);
    QTRY_COMPARE(shown.Cell(0, CReportModel::state), u"Being made, 37 %"_s);
    bool isRemoved = true;
    QVERIFY(CReportQueue().Remove(1, isRemoved) && !isRemoved);
    shown.Press("stopButton"); // it is killed, since it does not listen
    QTRY_VERIFY(shown.State().contains(u"was stopped"_s));
    QCOMPARE(Jobs()[0].attempts, 0);
    QVERIFY(!Jobs()[0].isInHand && !shown.CanPress("stopButton"));

    // Quit asks about a report in hand.
    QSignalSpy const ended(&shown.m_window, &CReportWnd::Ended);
    shown.Press("goOnButton");
    QTRY_VERIFY(shown.CanPress("stopButton"));
    {
        CDialogUser user({[](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); },
            Press(u"&Give It Back"_s)});
        shown.Key(Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(ended.isEmpty() && shown.CanPress("stopButton"));
        shown.Key(Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(user.Faults().join(u';'), QString());
    }
    QTRY_COMPARE(ended.size(), 1);
    QCOMPARE(Jobs()[0].attempts, 0);

    CShown const dying(Script(u"dying"_s, "echo 5\necho '!half a'\nkill -9 $$"));
    QTRY_COMPARE(Jobs()[0].attempts, 1);
    QTRY_VERIFY(!Jobs()[0].reason.empty());
    QCOMPARE(Pdfs(), 0);
}

void ReportWndTest::whatKeepsReportsFromBeingMadePausesTheServer()
{
    QVERIFY(QDir().rmdir(Path(u"out"_s)));
    Queue(CDAOReport::rtMemberCount);
    CShown shown;
    QTRY_VERIFY(shown.State().contains(u"is not there"_s));
    QCOMPARE(Jobs()[0].attempts, 0);
    QVERIFY(QDir().mkdir(Path(u"out"_s)));
    shown.Press("goOnButton");
    QTRY_COMPARE(Jobs()[0].state, CQueuedReport::done);
    QVERIFY(!shown.CanPress("goOnButton"));
    // The queue itself may be away.
    auto const queue = m_centre->Folder() / "report.mdb";
    CDatabaseSession::Get().ShutDown();
    std::filesystem::rename(queue, queue.string() + "x");
    QTRY_VERIFY(shown.State().contains(u"does not exist"_s));
    std::filesystem::rename(queue.string() + "x", queue);
    Queue(CDAOReport::rtMemberCount);
    shown.Press("goOnButton");
    QTRY_COMPARE(Pdfs(), 2);
}

void ReportWndTest::aReportIsShownAndSavedBesideTheQueue()
{
    Queue(CDAOReport::rtMemberCount);
    CShown shown;
    QTRY_COMPARE(shown.Cell(0, CReportModel::state), u"Done"_s);
    auto const save = [this](QDialog& dialog) {
        auto* const files = qobject_cast<QFileDialog*>(&dialog);
        QVERIFY(files != nullptr);
        Child<QLineEdit>(*files, "fileNameEdit").setText(Path(u"saved"_s));
        Click(*files, QDialogButtonBox::Save);
    };
    auto const no = [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); };
    CDialogUser user({[](QDialog& dialog) {
                          QVERIFY(qobject_cast<QPrintPreviewDialog*>(&dialog) != nullptr);
                          QCOMPARE(dialog.windowTitle(), u"Preview of Member Count"_s);
                          dialog.reject();
                      },
        save, save, no});
    shown.Key(Qt::Key_Return);
    shown.Press("saveButton");
    auto const file = Path(u"saved.pdf"_s);
    QVERIFY(!(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther)));
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadWrite) && written.size() > 1000);
    QVERIFY(written.resize(3)); // of the user's own
    shown.Press("saveButton");
    QCOMPARE(QFile(file).size(), 3);
    QCOMPARE(user.Faults().join(u';'), QString());
    QCOMPARE(Jobs()[0].attempts, 1);
}

void ReportWndTest::theSettingsAreRemembered()
{
    CShown shown;
    CDialogUser user({[](QDialog& dialog) {
                          QVERIFY(Child<QRadioButton>(dialog, "folderButton").isChecked());
                          Child<QCheckBox>(dialog, "namesCheck").click();
                          Choose(Child<QComboBox>(dialog, "paperList"), 1);
                          ClickOk(dialog);
                      },
        [](QDialog& dialog) {
            Child<QRadioButton>(dialog, "printerButton").click();
            ClickCancel(dialog);
        }});
    shown.Press("settingsButton");
    shown.Press("settingsButton");
    QCOMPARE(user.Faults().join(u';'), QString());
    auto const plan = CReportPlan::Load();
    QVERIFY(plan.hasNames && plan.isA4 && !plan.isToPrinter);
    QCOMPARE(plan.folder, Path(u"out"_s));
    WriteProfileInt("reports", "copies", 4711);
    WriteProfileText("reports", "folder", u"not/absolute"_s);
    QCOMPARE(CReportPlan::Load().copies, 99);
    QVERIFY(!CReportPlan::Load().isFolderChosen);
    // Where nothing was chosen there is a folder of the user's own, for nobody else to look into.
    qputenv("HOME", QFile::encodeName(m_place->path()));
    QCOMPARE(CReportPlan::Load().PrepareFolder().Error(), DbError::none);
    auto const folder = CReportPlan::Load().folder;
    QVERIFY(folder.startsWith(m_place->path()) && folder.endsWith(u"/Corvana Reports"_s));
    QVERIFY(
        !(QFile::permissions(folder) & (QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther)));
}

void ReportWndTest::aFileHasOneWriterAndReplacesNone()
{
    auto const path = Path(u"out/report.pdf"_s);
    auto const name = path.toStdString();
    auto const text = [](QString const& of) {
        QFile file(of);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    };
    CPdfFile first(name);
    CPdfFile second(name);
    QVERIFY(first.Begin());
    QCOMPARE(second.Begin().Error(), DbError::inUse);
    QVERIFY(first.write("first") == 5);
    CPdfFile::RemoveLeftover(name);
    QCOMPARE(text(path + u".part"_s), "first");
    QCOMPARE(text(path), "none");
    QVERIFY(first.Publish());
    {
        CPdfFile third(name);
        QVERIFY(third.Begin() && third.write("third") == 5);
        QCOMPARE(third.Publish().Error(), DbError::exists);
    }
    QCOMPARE(text(path), "first");
    QCOMPARE(QDir(Path(u"out"_s)).entryList(QDir::Files | QDir::Hidden).size(), 1);
    QVERIFY(second.Begin() && second.write("second") == 6 && second.Publish(true));
    QCOMPARE(text(path), "second");
}

static CTestEntryOf<ReportWndTest> const g_entry;
#include "ReportWndTest.moc"
