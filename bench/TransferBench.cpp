// Measures backup, archive, restore and deletion of a large centre's workouts as the menus run
// them, windows included: against the sqlite3 shell, which writes the same columns as text, and
// against plain SQLite that inserts the same rows and deletes them by their keys. Times are CPU of
// this process, for the shell of that one; each is the median of its repetitions, which take turns.

#include "bench/ConsoleBench.h"
#include "bench/RawMember.h"
#include "doc/CorvanaDoc.h"
#include "ui/Messages.h"

#include <QFile>
#include <QProcess>

#include <map>
#include <sys/resource.h>

namespace
{

/// Nobody is there to answer.
class CNoMessages : public CMessageShower
{
public:
    bool Show(QWidget*, CMessage const& message) override
    {
        std::fprintf(
            stderr, "%s %s\n", qPrintable(message.m_strText), qPrintable(message.m_strDetail));
        return false;
    }
};

void StoreWorkouts(int members, int workouts)
{
    CRawDatabase const raw(MemberPath());
    AddMembers(raw, members);
    raw.Run(("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
        + std::to_string(workouts) + ") INSERT INTO workouts SELECT NULL, i * 7919 % "
        + std::to_string(members)
        + " + 1, 1, 1, 3900000000 + i * 90, 3900003600 + i * 90, 3, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, "
          "11, 12 FROM n; PRAGMA wal_checkpoint(TRUNCATE)")
                .c_str());
}

double ChildrensMs()
{
    rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    auto const ms = [](timeval const& time) {
        return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
    };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}

/// Lets the shell write all rows in the same order to a file.
double ShellMs(QString const& to)
{
    double const before = ChildrensMs();
    QProcess shell;
    shell.setStandardOutputFile(to);
    shell.start(QStringLiteral("sqlite3"),
        {QStringLiteral("-list"), QStringLiteral("-readonly"), QString::fromStdString(MemberPath()),
            QStringLiteral("SELECT member_id, workout_ok, class_index, check_in, check_out, "
                           "circuits, station1, station2, station3, station4, station5, station6, "
                           "station7, station8, station9, station10, station11, station12 FROM "
                           "workouts ORDER BY check_in, id")});
    if (!shell.waitForFinished(-1) || shell.exitCode() != 0) {
        std::fprintf(stderr, "the sqlite3 shell failed\n");
        std::exit(1);
    }
    return ChildrensMs() - before;
}

void DeleteRaw()
{
    CRawDatabase const raw(MemberPath());
    std::vector<std::int64_t> keys;
    CRawStatement const select(raw, "SELECT id FROM workouts ORDER BY check_in, id");
    while (select.Step()) {
        keys.push_back(select.Integer(0));
    }
    select.Reset();
    raw.Run("BEGIN IMMEDIATE");
    CRawStatement const remove(raw, "DELETE FROM workouts WHERE id = ?");
    for (auto const key : keys) {
        remove.Bind(1, key);
        remove.Step();
        remove.Reset();
    }
    raw.Run("COMMIT");
    raw.Run("PRAGMA wal_checkpoint(TRUNCATE)");
}

void InsertRaw(int workouts)
{
    CRawDatabase const raw(MemberPath());
    raw.Run("BEGIN IMMEDIATE");
    CRawStatement const insert(raw,
        "INSERT INTO workouts (member_id, workout_ok, class_index, check_in, check_out, circuits, "
        "station1, station2, station3, station4, station5, station6, station7, station8, station9, "
        "station10, station11, station12) VALUES (?, 1, 1, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
        "?, ?)");
    for (std::int64_t i = 1; i <= workouts; ++i) {
        insert.Bind(1, i * 7919 % (workouts / 10) + 1);
        insert.Bind(2, 3'900'000'000 + i * 90);
        insert.Bind(3, 3'900'003'600 + i * 90);
        for (int value = 4; value <= 16; ++value) {
            insert.Bind(value, value);
        }
        insert.Step();
        insert.Reset();
    }
    raw.Run("COMMIT");
    raw.Run("PRAGMA wal_checkpoint(TRUNCATE)");
}

} // namespace

int main(int argc, char** argv)
{
    CConsoleBench const bench(argc, argv);
    CBenchCentre const centre({DataFile::member});
    int const workouts = bench.IsQuick() ? 2'000 : 1'000'000;
    StoreWorkouts(workouts / 10, workouts);
    CNoMessages messages;
    SetMessageShower(&messages);
    CNoCommands commands;
    CCorvanaDoc doc(commands);
    auto const file = QString::fromStdString(MemberPath()) + QStringLiteral(".dat");
    bool isWell = true;
    auto const write = [&](CTransfer mode) {
        QFile::remove(file);
        doc.m_setWk.FindWks(0);
        isWell = isWell && doc.WriteDataFile(doc.m_setWk, mode, file) == workouts;
        doc.m_setWk.Op(CDAOEFSet::opClose);
    };
    auto const restore
        = [&] { isWell = isWell && doc.ReadDataFile(doc.m_setWk, 0, true, file, '|') == workouts; };
    std::map<std::string, std::vector<double>> times;
    auto const measure = [&](char const* what, auto const& act) {
        double const start = CpuMs();
        act();
        times[what].push_back(CpuMs() - start);
    };
    int const repetitions = bench.IsQuick() ? 1 : 3;
    for (int i = 0; i < repetitions; ++i) {
        times["shell"].push_back(ShellMs(file));
        measure("backup", [&] { write(CTransfer::backup); });
        measure("archive", [&] { write(CTransfer::archive); });
        measure("restore", restore);
        CDatabaseSession::Get().ShutDown(); // two connections in one process must not meet
        measure("raw delete", DeleteRaw);
        measure("raw inserts", [&] { InsertRaw(workouts); });
        measure("delete", [&] {
            doc.m_setWk.FindWks(0);
            isWell = isWell && doc.DeleteRecords(doc.m_setWk, false) == workouts;
            doc.m_setWk.Op(CDAOEFSet::opClose);
        });
        if (i + 1 < repetitions) {
            restore();
        }
    }
    std::puts("| what | CPU | compared with | ratio |\n|---|---:|---|---:|");
    for (auto const& [what, with] : {std::pair("backup", "shell"), {"archive", "backup"},
             {"restore", "raw inserts"}, {"delete", "raw delete"}}) {
        std::printf("| %s | %.0f ms | %s, %.0f ms | %.2f |\n", what, Median(times[what]), with,
            Median(times[with]), Median(times[what]) / Median(times[with]));
    }
    SetMessageShower(nullptr);
    return isWell ? 0 : 1;
}
