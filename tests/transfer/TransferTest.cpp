#include "tests/QtTests.h"
#include "tests/members/MemberDesk.h"
#include "tests/ui/FileRecorder.h"
#include "tests/ui/FormCheck.h"
#include "tests/ui/LargeFont.h"
#include "tests/ui/UserSteps.h"

#include <QDir>
#include <QFile>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array kKinds = {
    CRecordKind::evaluations, CRecordKind::bodyComps, CRecordKind::workouts, CRecordKind::members};

/// A desk over a centre with members 7 and 8 and records of all kinds, whose user chooses files in
/// a folder and knows the password.
class CTransferDesk : public CMemberDesk
{
public:
    CTransferDesk()
    {
        QVERIFY(m_doc.m_setCenter.SetPassword("OpenSesame"));
        AddMember(8);
        for (int i = 0; i < 3; ++i) {
            StoreRecords(i < 2 ? 7 : 8, CEFOleDateTime(2026, 3, 1 + i), 30 * i, 150.5, 20.25);
        }
        RunOnMembers("INSERT INTO skinfolds SELECT NULL, eval_id, 9.5, 1, 2, 3, 4, 5, 6, 7"
                     " FROM evaluations");
    }

    QString Path(QString const& name = {}) const
    {
        return QString::fromStdString(m_centre.Folder().string()) + u'/' + name;
    }
    static QStringList All()
    {
        auto rows = Rows() + Rows({u"evaluations"_s, u"skinfolds"_s, u"body_compositions"_s});
        rows.sort();
        return rows;
    }
    /// What the operation tells.
    QString Run(void (CCorvanaDoc::*operation)(CRecordKind), CRecordKind kind,
        QList<CDialogUser::Step> const& steps = {}, QList<bool> const& answers = {},
        QString const& file = {})
    {
        m_messages.AnswerNext(answers);
        m_files.AnswerNext(file.isEmpty() ? QStringList() : QStringList{Path(file)});
        return Told(steps, [&] { (m_doc.*operation)(kind); });
    }
    QString ArchiveMembers() { return Run(&CCorvanaDoc::ArchiveAll, CRecordKind::members); }
    QString BackUp(CRecordKind kind, QString const& file)
    {
        return Run(&CCorvanaDoc::BackUpAll, kind, {}, {}, file);
    }
    QString Restore(CRecordKind kind, QList<bool> const& answers, QString const& file,
        QList<CDialogUser::Step> const& steps = {})
    {
        return Run(&CCorvanaDoc::RestoreAll, kind, steps, answers, file);
    }

    CFileRecorder m_files;
};

auto const kPassword = Steps(u"passwordEdit=OpenSesame OK"_s);
auto const kWarning = u"Warning: archiving records will permanently remove\n"
                      "the records from the database. Do you still want to\n"
                      "proceed with the archive?"_s;
auto const kOneMember = u"Do you want to restore records for a specific member?"_s;
auto const kOverwrite
    = u"In the case of duplicate members, do you want to overwrite existing members?"_s;

} // namespace

/// Backup, archive, restore and deletion from the menus, over real files.
class TransferTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void archivesAndRestoresTheWholeCentre();
    void asksFirstAndReplacesNoFile();
    void restoresOneMemberAndRefusesOtherFiles();
    void canBeStoppedAndChangesDisksForADrive();
    void deletesAllOrOneMembersRecords();
};

void TransferTest::archivesAndRestoresTheWholeCentre()
{
    CTransferDesk desk;
    auto const before = desk.All();
    int const counts[] = {3, 3, 4, 2};
    QStringList const first{u"evaluation"_s, u"body composition"_s, u"workout"_s};
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
        // Members go last.
        QVERIFY(i == 3
            || desk.ArchiveMembers()
                == u"All %1 records must be archived before archiving members."_s.arg(
                    first[qsizetype(i)]));
        QCOMPARE(desk.Run(&CCorvanaDoc::ArchiveAll, kKinds[i], {kPassword}, {true},
                     u"archive%1.dat"_s.arg(i)),
            kWarning + u"|You have archived %1 record(s)."_s.arg(counts[i]));
    }
    QCOMPARE(desk.ArchiveMembers(), u"No records are available for archive."_s);
    QCOMPARE(desk.All(), QStringList());
    QVERIFY(desk.m_views.m_lstTreeCalls.contains(u"Refresh 8 -9 0"_s));
    QVERIFY(desk.m_views.m_lstTreeCalls.contains(u"Remove 7"_s));
    for (std::size_t i = kKinds.size(); i-- > 0;) {
        bool const isMembers = kKinds[i] == CRecordKind::members;
        QCOMPARE(desk.Restore(kKinds[i], {false, false}, u"archive%1.dat"_s.arg(i)),
            kOneMember + (isMembers ? u'|' + kOverwrite : QString())
                + u"|You have restored %1 record(s)."_s.arg(counts[i]));
        QCOMPARE(desk.m_views.m_lstTreeCalls.constLast(), u"Reset"_s);
    }
    QCOMPARE(desk.All(), before);
}

void TransferTest::asksFirstAndReplacesNoFile()
{
    CTransferDesk desk;
    auto const before = desk.All();
    auto const archive = [&](QList<CDialogUser::Step> const& steps, QList<bool> const& answers,
                             QString const& file = {}) {
        return desk.Run(&CCorvanaDoc::ArchiveAll, CRecordKind::workouts, steps, answers, file);
    };
    QCOMPARE(archive({Steps(u"passwordEdit=wrong OK"_s)}, {false}),
        u"Sorry, you have entered an incorrect password"_s);
    QCOMPARE(archive({kPassword}, {false}), kWarning);
    auto const& warning = desk.m_messages.Messages().constLast();
    QVERIFY(
        warning.m_question == CQuestion::destroying && warning.m_icon == CMessageIcon::exclamation);
    QCOMPARE(archive({kPassword}, {true}), kWarning); // no file is chosen
    QCOMPARE(
        desk.BackUp(CRecordKind::workouts, u"mine.dat"_s), u"You have backed up 4 record(s)."_s);
    auto const mine = ReadFile(desk.Path(u"mine.dat"_s).toStdString());
    QCOMPARE(std::ranges::count(mine, '\n'), 4);
    // A file that is there stays, and so do the records.
    auto const failed = u"Error: file already exists\nor cannot write to file"_s;
    QCOMPARE(archive({kPassword}, {true}, u"mine.dat"_s),
        kWarning + u'|' + failed + u"|You have archived 0 record(s)."_s);
    QCOMPARE(desk.BackUp(CRecordKind::evaluations, u"mine.dat"_s),
        failed + u"|You have backed up 0 record(s)."_s);
    auto const& told = desk.m_messages.Messages();
    QVERIFY(!told[told.size() - 2].m_strDetail.isEmpty());
    QCOMPARE(desk.All(), before);
    QVERIFY(ReadFile(desk.Path(u"mine.dat"_s).toStdString()) == mine);
    RunOnMembers("DELETE FROM workouts");
    auto const none = u"No records are available for backup."_s;
    QCOMPARE(desk.BackUp(CRecordKind::workouts, u"w.dat"_s), none);
    RunOnMembers("ALTER TABLE workouts RENAME TO away");
    auto const unread = u"Error: the workouts could not be read."_s;
    QCOMPARE(desk.BackUp(CRecordKind::workouts, u"w.dat"_s), unread);
    RunOnMembers("DELETE FROM evaluations");
    RunOnMembers("DELETE FROM body_compositions");
    QCOMPARE(desk.ArchiveMembers(), unread);
}

void TransferTest::restoresOneMemberAndRefusesOtherFiles()
{
    CTransferDesk desk;
    for (auto const kind : kKinds) {
        desk.BackUp(kind, u"%1.dat"_s.arg(int(kind)));
    }
    auto const before = desk.All();
    auto const enter = Steps(u"memberIDEdit=8 OK"_s);
    auto const workouts = u"%1.dat"_s.arg(int(CRecordKind::workouts));
    auto const members = u"%1.dat"_s.arg(int(CRecordKind::members));
    RunOnMembers("DELETE FROM workouts");
    QCOMPARE(desk.Restore(CRecordKind::workouts, {true}, workouts, {enter}),
        kOneMember + u"|You have restored 1 record(s)."_s);
    QCOMPARE(desk.m_views.m_lstTreeCalls.constLast(), u"Refresh 8 -9 0"_s);
    QCOMPARE(desk.Restore(CRecordKind::workouts, {true}, {}, {ClickCancel}), kOneMember);
    // A member who need not be there is restored, the records of others are not.
    RunOnMembers("DELETE FROM members WHERE member_id = 8");
    QCOMPARE(desk.Restore(CRecordKind::workouts, {false}, workouts),
        kOneMember + u"|You have restored 3 record(s)."_s);
    QCOMPARE(desk.m_messages.Messages().constLast().m_strDetail,
        u"1 record(s) were skipped: their members are not in the database."_s);
    desk.Restore(CRecordKind::workouts, {false}, u"absent"_s);
    QCOMPARE(desk.m_messages.Messages().constLast().m_strDetail, QString());
    RunOnMembers("UPDATE members SET last_name = 'Other'");
    QCOMPARE(desk.Restore(CRecordKind::members, {true, false}, members, {enter}),
        kOneMember + u'|' + kOverwrite + u"|You have restored 1 record(s)."_s);
    QVERIFY(desk.All().filter(u"|Archer|"_s).isEmpty());
    desk.Restore(CRecordKind::members, {false, true}, members);
    for (auto const kind : kKinds) {
        desk.Restore(kind, {false, false}, u"%1.dat"_s.arg(int(kind)));
    }
    QCOMPARE(desk.All(), before);

    for (auto const& [file, text] :
        {std::pair(members, u"Error: empty file, incompatible file format, or corrupt data"_s),
            {u"absent"_s, u"Error: file does not exist\nor cannot read from file"_s}}) {
        QCOMPARE(desk.Restore(CRecordKind::workouts, {false}, file),
            kOneMember + u'|' + text + u"|You have restored 0 record(s)."_s);
    }
    QCOMPARE(desk.All(), before);
}

void TransferTest::canBeStoppedAndChangesDisksForADrive()
{
    CTransferDesk desk;
    auto& set = desk.m_doc.m_setWk;
    auto const here = QDir::currentPath();
    QVERIFY(QDir::setCurrent(desk.Path()));
    RunOnMembers("DELETE FROM workouts");
    AddWorkouts(60000, "7");
    // Presses Stop as soon as the window with the bar is there.
    auto const stop = [&](auto const& operation) {
        QTimer timer;
        connect(&timer, &QTimer::timeout, &timer, [] {
            if (auto* const window = QApplication::activeModalWidget(); window != nullptr) {
                Child<QPushButton>(*window, "stopButton").click();
            }
        });
        timer.start(1);
        QCOMPARE(operation(), 0);
    };
    QCOMPARE(set.FindWks(0), 60000);
    for (auto const mode : {CTransfer::backup, CTransfer::archive}) {
        stop([&] { return desk.m_doc.WriteDataFile(set, mode, u"stopped.dat"_s); });
        QVERIFY(QDir().entryList({u"stopped*"_s}).isEmpty());
    }
    QCOMPARE(desk.m_doc.WriteDataFile(set, CTransfer::backup, u"stopped.dat"_s), 60000);
    RunOnMembers("DELETE FROM workouts");
    auto const read = [&] { return desk.m_doc.ReadDataFile(set, 0, true, u"stopped.dat"_s, '|'); };
    stop(read);
    QCOMPARE(set.FindWks(0), 0);
    QCOMPARE(read(), 60000);
    QCOMPARE(desk.m_messages.Texts(), QStringList());

    auto const next = u"Insert another blank formatted\ndisk then click \"OK\"."_s;
    desk.m_messages.m_fnWhileShown = [&] {
        if (desk.m_messages.Texts().constLast() == next) {
            QVERIFY(QFile::rename(u"a.dat"_s, u"disk1"_s));
        }
    };
    RunOnMembers("DELETE FROM workouts WHERE id NOT IN (SELECT id FROM workouts LIMIT 5001)");
    QCOMPARE(set.FindWks(0), 5001);
    QCOMPARE(desk.m_doc.WriteDataFile(set, CTransfer::archive, u"a.dat"_s), 5001);
    QCOMPARE(desk.m_messages.Texts(),
        (QStringList{u"Insert a blank formatted disk then click \"OK\"."_s, next}));
    QCOMPARE(std::ranges::count(ReadFile("disk1"), '\n'), 5000);
    QCOMPARE(set.FindWks(0), 0);
    // The second disk is not blank: what stands on the first one counts, and nothing is deleted.
    AddWorkouts(5001, "7");
    set.FindWks(0);
    desk.m_messages.m_fnWhileShown = {};
    QVERIFY(QFile::remove(u"a.dat"_s));
    QCOMPARE(desk.m_doc.WriteDataFile(set, CTransfer::backup, u"a.dat"_s), 5000);
    QCOMPARE(desk.m_messages.Texts().constLast(),
        u"Error: file already exists\nor cannot write to file"_s);
    set.Op(CDAOEFSet::opClose);
    QVERIFY(QDir::setCurrent(here));
}

void TransferTest::deletesAllOrOneMembersRecords()
{
    CTransferDesk desk;
    CLargeFont const large;
    auto const remove = [&](CRecordKind kind, QString const& steps) {
        QString focus;
        auto const choose = [&](QDialog& dialog) {
            QCOMPARE(FaultsOf(dialog), QStringList());
            QVERIFY(Child<QLineEdit>(dialog, "memberIDEdit").isReadOnly());
            Do(dialog, steps + u" OK"_s);
            if (dialog.isVisible()) {
                focus = u" @"_s + dialog.focusWidget()->objectName();
                ClickCancel(dialog);
            }
        };
        return desk.Run(&CCorvanaDoc::DeleteAll, kind, {kPassword, choose}) + focus;
    };
    auto const before = desk.All();
    auto const enter = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); };
    QCOMPARE( // deletes nothing by accident
        desk.Run(&CCorvanaDoc::DeleteAll, CRecordKind::workouts, {kPassword, enter}), QString());
    auto const member = u"oneMemberRadio memberIDEdit="_s;
    for (auto const& [id, text] :
        {std::pair(u"1000000000"_s, u"Enter an integer between 0 and 999999999. @memberIDEdit"_s),
            {u"9"_s,
                u"Sorry, there is no member in the database\nthat matches ID 9. @memberIDEdit"_s}}) {
        QCOMPARE(remove(CRecordKind::workouts, member + id), text);
    }
    QCOMPARE(desk.All(), before);
    QCOMPARE(remove(CRecordKind::evaluations, member + u'7'),
        u"You have deleted 2 evaluation record(s)."_s);
    QCOMPARE(desk.m_views.m_lstTreeCalls.constLast(), u"Refresh 7 -8 0"_s);
    QCOMPARE(desk.All().filter(u"skinfolds: "_s).size(), 1);
    QCOMPARE(remove(CRecordKind::evaluations, member + u'7'),
        u"No evaluations are recorded for Member ID 7."_s);
    QCOMPARE(remove(CRecordKind::workouts, {}), u"You have deleted 4 workout record(s)."_s);
    QCOMPARE(
        remove(CRecordKind::bodyComps, {}), u"You have deleted 3 body composition record(s)."_s);
    QCOMPARE(remove(CRecordKind::bodyComps, {}), u"No body compositions have been recorded."_s);

    // From a list, those of the search that the list shows.
    StoreRecords(8, CEFOleDateTime(2026, 4, 1));
    RunOnMembers("UPDATE evaluations SET class_index = 5 WHERE eval_date = (SELECT max(eval_date)"
                 " FROM evaluations)");
    desk.m_doc.m_nEvalMemberSel = 8;
    desk.m_doc.m_nEvalClassSel = 5;
    auto& evals = desk.m_doc.m_setEval;
    QCOMPARE(evals.FindEvals(8, std::uint8_t(5)), 1);
    desk.m_messages.AnswerNext({false, true});
    for (int const deleted : {0, 1}) {
        int count = -1;
        QCOMPARE(desk.Told({kPassword}, [&] { count = desk.m_doc.DeleteRecords(evals, true); }),
            u"Are you sure you want to permanently\ndelete all of the records?"_s);
        QCOMPARE(count, deleted);
    }
    QCOMPARE(desk.All().filter(u"evaluations: "_s).size(), 1);
}

static CTestEntryOf<TransferTest> const g_entry;
#include "TransferTest.moc"
