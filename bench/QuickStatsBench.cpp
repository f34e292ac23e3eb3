// Measures Quick Statistics: counting a large centre, and refreshing the list of who is checked in,
// against plain SQLite that reads the same keys and rows. Times are CPU of this process, each the
// median of its repetitions, with the two sides taking turns.

#include "bench/ConsoleBench.h"
#include "bench/RawMember.h"
#include "doc/CheckInModel.h"
#include "doc/CorvanaDoc.h"
#include "doc/QuickStatsDlg.h"

#include <QTimer>

#include <array>
#include <functional>

namespace
{

std::string Rows(char const* columns, int count, std::string const& table, char const* values)
{
    return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
        + std::to_string(count) + ") INSERT INTO " + table + " (" + columns + ") SELECT " + values
        + " FROM n";
}

/// As three years leave them: in the order of time, members mixed.
void StoreRecords(int members, int workouts)
{
    CRawDatabase const raw(MemberPath());
    AddMembers(raw, members);
    auto const member = "i * 7919 % " + std::to_string(members) + " + 1, ";
    auto const add
        = [&](char const* columns, int count, char const* table, std::string const& values) {
              raw.Run(Rows(columns, count, table, values.c_str()).c_str());
          };
    add("member_id, workout_ok, class_index, check_in, check_out, circuits, station1, station2, "
        "station3, station4, station5, station6, station7, station8, station9, station10, "
        "station11, station12",
        workouts, "workouts",
        member
            + "1, 1, 3900000000 + i * 90, 3900003600 + i * 90, 3, 1, 2, 3, 4, 5, 6, 7, 8, 9, "
              "10, 11, 12");
    add("member_id, eval_id, eval_date, class_index, height, weight, activity_level, "
        "resting_heart_rate, systolic, diastolic, trunk_flexion, sit_ups, ab_crunches, step_test, "
        "run_seconds, ergometer",
        workouts / 10, "evaluations",
        member + "i, 3900000000 + i * 900, 1, 70, 150, 1, 60, 120, 80, 10, 20, 30, 90, 800, 40");
    add("member_id, body_comp_date, class_index, height, weight, activity_level, method, "
        "percent_fat, waist, wrist, hip, thigh, chest, abdomen, triceps, suprailiac, midaxillary, "
        "subscapular, water_temperature, wet_weight, tare_weight, units",
        workouts / 20, "body_compositions",
        member
            + "3900000000 + i * 1800, 1, 70, 150, 1, 0, 20, 30, 7, 40, 0, 0, 0, 0, 0, 0, 0, 0, "
              "0, 0, 0");
    raw.Run("PRAGMA wal_checkpoint(TRUNCATE)");
}

std::string CheckInPath()
{
    return CDatabaseSession::Get().PathOf(DataFile::checkIn);
}

void StoreCheckIns(int count)
{
    CRawDatabase const raw(CheckInPath());
    raw.Run(Rows("member_id, workout_number, first_name, last_name, check_in", count, "check_ins",
        "i * 7919 % 10007, i, 'Catharine', 'Featherstone', 4000000000 + i * 10")
                .c_str());
}

/// The statements of plain SQLite for the seven counts, prepared once.
class CRawCounts
{
public:
    CRawCounts()
        : m_raw(MemberPath())
    {
        for (auto const* const rows : {"members ORDER BY id", "workouts ORDER BY check_in, id",
                 "evaluations ORDER BY eval_date, id",
                 "body_compositions ORDER BY "
                 "body_comp_date, id"}) {
            m_keys.push_back(
                std::make_unique<CRawStatement>(m_raw, std::string("SELECT id FROM ") + rows));
        }
    }

    std::size_t Count() const
    {
        std::size_t sum = 0;
        for (auto const& select : m_keys) {
            std::vector<std::int64_t> keys;
            while (select->Step()) {
                keys.push_back(select->Integer(0));
            }
            select->Reset();
            sum += keys.size();
        }
        for (auto const* const count : {&m_past, &m_today}) {
            count->Step();
            sum += static_cast<std::size_t>(count->Integer(0));
            count->Reset();
        }
        return sum;
    }

private:
    CRawDatabase const m_raw;
    std::vector<std::unique_ptr<CRawStatement>> m_keys;
    CRawStatement const m_past{m_raw, "SELECT count(*) FROM members WHERE status = 0"};
    CRawStatement const m_today{
        m_raw, "SELECT count(*) FROM workouts WHERE check_in BETWEEN 3960000000 AND 3960086399"};
};

/// The rows of the list, each text made a string as someone would who shows them.
std::size_t ReadCheckIns(CRawStatement const& select)
{
    struct CCheckIn
    {
        std::int64_t key, member, workout, checkIn;
        std::string first, last;
    };
    std::vector<CCheckIn> rows;
    while (select.Step()) {
        rows.push_back({select.Integer(0), select.Integer(1), select.Integer(2), select.Integer(5),
            select.Text(3), select.Text(4)});
    }
    select.Reset();
    return rows.size();
}

using COperations = std::vector<std::pair<char const*, std::function<void()>>>;

/// Runs the operations in turn and prints what each takes, and how many times the first one.
void Measure(COperations const& operations, int repetitions)
{
    std::vector<std::vector<double>> times(operations.size());
    for (int i = 0; i < repetitions; ++i) {
        for (std::size_t n = 0; n < operations.size(); ++n) {
            double const start = CpuMs();
            operations[n].second();
            times[n].push_back(CpuMs() - start);
        }
    }
    for (std::size_t n = 0; n < operations.size(); ++n) {
        std::printf("| %s | %.3f ms | %.2f |\n", operations[n].first, Median(times[n]),
            Median(times[n]) / Median(times[0]));
    }
}

} // namespace

int main(int argc, char** argv)
{
    CConsoleBench const bench(argc, argv);
    CBenchCentre const centre({DataFile::checkIn, DataFile::member});
    int const members = bench.IsQuick() ? 2'000 : 100'000;
    StoreRecords(members, members * 10);
    StoreCheckIns(500);
    CNoCommands commands;
    CCorvanaDoc doc(commands);
    auto now = CEFOleDateTime::FromSeconds(4'000'010'000);
    CEFOleDateTime::SetClock(now);
    CQuickStatsDlg dialog(doc.m_setChkIn);
    std::size_t counted = 0; // so that nothing is read in vain

    std::puts("| what | CPU | ratio |\n|---|---:|---:|");
    {
        CRawCounts const raw;
        Measure({{"the seven counts, raw", [&] { counted += raw.Count(); }},
                    {"the seven counts", [&] { doc.CompileStats(dialog); }}},
            bench.IsQuick() ? 1 : 15);
    }
    CRawDatabase const raw(CheckInPath());
    CRawStatement const select(raw,
        "SELECT id, member_id, workout_number, first_name, last_name, check_in FROM check_ins "
        "ORDER BY check_in, id");
    CCheckInModel same;
    CCheckInModel later;
    dialog.show();
    auto& timer = *dialog.findChild<QTimer*>();
    auto const refresh
        = [&](CCheckInModel& model) { counted += model.Refresh(doc.m_setChkIn) ? 1U : 0U; };
    Measure({{"500 check-ins, raw SELECT", [&] { counted += ReadCheckIns(select); }},
                {"refresh, nothing changed", [&] { refresh(same); }},
                {"refresh, a minute later for all",
                    [&] {
                        now = CEFOleDateTime::FromSeconds(now.Seconds() + 60);
                        CEFOleDateTime::SetClock(now);
                        refresh(later);
                    }},
                {"refresh of the open window, painted",
                    [&] {
                        QTimerEvent tick(timer.timerId());
                        QCoreApplication::sendEvent(&timer, &tick);
                        QCoreApplication::processEvents();
                    }}},
        bench.IsQuick() ? 1 : 501);
    return counted > 0 ? 0 : 1;
}
