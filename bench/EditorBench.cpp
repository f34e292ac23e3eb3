// Measures what the editors of members, workouts and body compositions cost beside their windows:
// reading a record into its form and saving a change, against the statements that plain SQLite
// needs for it, on the same file.

#include "bench/ConsoleBench.h"
#include "bench/RawMember.h"
#include "bodycomp/BodyCompEditor.h"
#include "bodycomp/BodyCompRecord.h"
#include "doc/CorvanaDoc.h"
#include "evaluations/EvaluationEditor.h"
#include "evaluations/EvaluationRecord.h"
#include "members/MemberEditor.h"
#include "members/MemberEnrollPg.h"
#include "members/MemberGoalsPg.h"
#include "members/MemberMedHistPg.h"
#include "members/MemberProfilePg.h"
#include "workouts/WorkoutDlg.h"
#include "workouts/WorkoutEditor.h"

#include <array>
#include <functional>

namespace
{

/// Members with a row in every table; the even ones have three classes, the others one.
void StoreMembers(int count)
{
    CRawDatabase const raw(MemberPath());
    AddMembers(raw, count);
    AddTablesOfMembers(raw, 250);
    raw.Run("DELETE FROM classes WHERE class_index > 1 AND member_id % 2 = 1; "
            "PRAGMA wal_checkpoint(TRUNCATE)");
}

// Of each member.
constexpr int kWorkouts = 10;
constexpr int kBodyComps = 5;
constexpr int kEvaluations = 3;

/// When the n-th record of a kind of a member was.
std::int64_t When(int memberID, int n)
{
    return 3'900'000'000 + 86'400LL * n + memberID;
}

void StoreWorkouts()
{
    CRawDatabase const raw(MemberPath());
    raw.Run("BEGIN");
    CRawStatement const add(raw,
        "INSERT INTO workouts SELECT NULL, member_id, 1, 1, ?1 + member_id, ?1 + member_id + 3600,"
        " 3, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120 FROM members");
    for (int workout = 0; workout < kWorkouts; ++workout) {
        add.Bind(1, When(0, workout));
        add.Step();
        add.Reset();
    }
    raw.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
}

void StoreBodyComps()
{
    CRawDatabase const raw(MemberPath());
    raw.Run("BEGIN");
    CRawStatement const add(raw,
        "INSERT INTO body_compositions SELECT NULL, member_id, ?1 + member_id, 1, 70, 180, 2, 1,"
        " 21.5, 36, 7, 40, 16, 12, 20, 10, 14, 11, 13, 92, 14.2, 7, 0 FROM members");
    for (int n = 0; n < kBodyComps; ++n) {
        add.Bind(1, When(0, n));
        add.Step();
        add.Reset();
    }
    raw.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
}

/// With skinfolds and 24 lifts; of a member the numbers follow each other.
void StoreEvaluations()
{
    CRawDatabase const raw(MemberPath());
    raw.Run("BEGIN");
    CRawStatement const add(raw,
        "INSERT INTO evaluations SELECT NULL, member_id * 10 + ?1, member_id, ?2 + member_id, 1, "
        "70,"
        " 180, 2, 61, 120, 80, 15, 40, 41, 99, 754, 40 FROM members");
    for (int n = 0; n < kEvaluations; ++n) {
        add.Bind(1, n);
        add.Bind(2, When(0, n));
        add.Step();
        add.Reset();
    }
    std::string lifts;
    for (int i = 1; i <= 24; ++i) {
        lifts += ", " + std::to_string(5 * i);
    }
    raw.Run(("INSERT INTO lifts SELECT NULL, eval_id" + lifts + " FROM evaluations").c_str());
    raw.Run("INSERT INTO skinfolds SELECT NULL, eval_id, 21.5, 16, 12, 20, 10, 14, 11, 13"
            " FROM evaluations");
    raw.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
}

/// The statements of plain SQLite, prepared once.
class CRawMember
{
public:
    CRawMember()
        : m_raw(MemberPath())
        , m_selects(m_raw, CRawMemberStatements::Kind::select)
        , m_update(m_raw, "UPDATE profiles SET city = ?1 WHERE member_id = ?2")
    {
    }

    void Load(int memberID) { m_nSum += LoadRaw(m_selects, memberID); }

    void Save(int memberID, std::string const& city)
    {
        m_raw.Run("BEGIN IMMEDIATE");
        Load(memberID);
        m_update.Bind(1, city);
        m_update.Bind(2, memberID);
        m_update.Step();
        m_update.Reset();
        m_raw.Run("COMMIT");
    }

private:
    CRawDatabase const m_raw;
    CRawMemberStatements const m_selects;
    CRawStatement const m_update;
    std::size_t m_nSum = 0; ///< so that nothing is read in vain
};

/// The same for one workout.
class CRawWorkout
{
public:
    CRawWorkout()
        : m_raw(MemberPath())
        , m_select(m_raw,
              "SELECT id, member_id, workout_ok, class_index, check_in, check_out, circuits,"
              " station1, station2, station3, station4, station5, station6, station7, station8,"
              " station9, station10, station11, station12 FROM workouts"
              " WHERE member_id = ?1 AND check_in = ?2")
        , m_update(m_raw, "UPDATE workouts SET station1 = ?1 WHERE id = ?2")
    {
    }

    std::int64_t Load(int memberID, std::int64_t checkIn)
    {
        m_select.Bind(1, memberID);
        m_select.Bind(2, checkIn);
        m_select.Step();
        auto const key = m_select.Integer(0);
        for (int column = 1; column < 19; ++column) {
            m_nSum += m_select.Integer(column);
        }
        m_select.Reset();
        return key;
    }

    void Save(int memberID, std::int64_t checkIn, int value)
    {
        m_raw.Run("BEGIN IMMEDIATE");
        m_update.Bind(2, Load(memberID, checkIn));
        m_update.Bind(1, value);
        m_update.Step();
        m_update.Reset();
        m_raw.Run("COMMIT");
    }

private:
    CRawDatabase const m_raw;
    CRawStatement const m_select;
    CRawStatement const m_update;
    std::int64_t m_nSum = 0; ///< so that nothing is read in vain
};

/// The same for one body composition, with the member and all body compositions.
class CRawBodyComp
{
public:
    CRawBodyComp()
        : m_raw(MemberPath())
        , m_select(m_raw, Select("body_comp_date = ?2"))
        , m_selectAll(m_raw, Select("?2 IS NOT NULL ORDER BY body_comp_date, id"))
        , m_member(m_raw,
              "SELECT p.birthday, p.sex FROM members AS m JOIN profiles AS p"
              " ON p.member_id = m.member_id WHERE m.member_id = ?1")
        , m_update(m_raw, "UPDATE body_compositions SET triceps = ?1 WHERE id = ?2")
    {
    }

    void Load(int memberID, std::int64_t when)
    {
        m_member.Bind(1, memberID);
        m_member.Step();
        m_dSum += double(m_member.Integer(0) + m_member.Integer(1));
        m_member.Reset();
        Read(m_select, memberID, when);
        Read(m_selectAll, memberID, when);
    }

    void Save(int memberID, std::int64_t when, int value)
    {
        m_raw.Run("BEGIN IMMEDIATE");
        m_update.Bind(2, Read(m_select, memberID, when));
        m_update.Bind(1, value);
        m_update.Step();
        m_update.Reset();
        m_raw.Run("COMMIT");
    }

private:
    static std::string Select(std::string const& condition)
    {
        return "SELECT id, member_id, body_comp_date, class_index, height, weight, activity_level,"
               " method, percent_fat, waist, wrist, hip, thigh, chest, abdomen, triceps,"
               " suprailiac, midaxillary, subscapular, water_temperature, wet_weight, tare_weight,"
               " units FROM body_compositions WHERE member_id = ?1 AND "
            + condition;
    }
    std::int64_t Read(CRawStatement const& select, int memberID, std::int64_t when)
    {
        select.Bind(1, memberID);
        select.Bind(2, when);
        std::int64_t key = 0;
        while (select.Step()) {
            key = select.Integer(0);
            for (int column = 1; column < select.Columns(); ++column) {
                m_dSum += select.Real(column);
            }
        }
        select.Reset();
        return key;
    }

    CRawDatabase const m_raw;
    CRawStatement const m_select;
    CRawStatement const m_selectAll;
    CRawStatement const m_member;
    CRawStatement const m_update;
    double m_dSum = 0; ///< so that nothing is read in vain
};

/// The same for one evaluation, with the member, the evaluation before and what becomes the
/// history.
class CRawEvaluation
{
public:
    CRawEvaluation()
        : m_raw(MemberPath())
        , m_member(m_raw,
              "SELECT p.birthday, p.sex FROM members AS m JOIN profiles AS p"
              " ON p.member_id = m.member_id WHERE m.member_id = ?1")
        , m_history(m_raw,
              "SELECT e.eval_id, e.eval_date, e.weight, s.percent_fat FROM evaluations AS e"
              " LEFT JOIN skinfolds AS s ON s.eval_id = e.eval_id WHERE e.member_id = ?1"
              " ORDER BY e.eval_date, e.id")
        , m_evaluation(m_raw, "SELECT * FROM evaluations WHERE eval_id = ?1")
        , m_skinfolds(m_raw, "SELECT * FROM skinfolds WHERE eval_id = ?1")
        , m_lifts(m_raw, "SELECT * FROM lifts WHERE eval_id = ?1")
        , m_update(m_raw, "UPDATE evaluations SET resting_heart_rate = ?1 WHERE eval_id = ?2")
    {
    }

    void Load(int memberID, int evalID)
    {
        Read(m_member, memberID);
        Read(m_history, memberID);
        ReadTables(evalID);
        ReadTables(evalID - 1);
    }

    void Save(int evalID, int value)
    {
        m_raw.Run("BEGIN IMMEDIATE");
        ReadTables(evalID);
        m_update.Bind(1, value);
        m_update.Bind(2, evalID);
        m_update.Step();
        m_update.Reset();
        m_raw.Run("COMMIT");
    }

private:
    void ReadTables(int evalID)
    {
        Read(m_evaluation, evalID);
        Read(m_skinfolds, evalID);
        Read(m_lifts, evalID);
    }
    void Read(CRawStatement const& select, int number)
    {
        select.Bind(1, number);
        while (select.Step()) {
            for (int column = 0; column < select.Columns(); ++column) {
                m_dSum += select.Real(column);
            }
        }
        select.Reset();
    }

    CRawDatabase const m_raw;
    CRawStatement const m_member;
    CRawStatement const m_history;
    CRawStatement const m_evaluation;
    CRawStatement const m_skinfolds;
    CRawStatement const m_lifts;
    CRawStatement const m_update;
    double m_dSum = 0; ///< so that nothing is read in vain
};

void Require(bool done)
{
    if (!done) {
        std::fputs("a record could not be read or saved\n", stderr);
        std::exit(1);
    }
}

/// What is measured, each in its turn.
struct COperations
{
    std::function<void()> m_fnRawLoad;
    std::function<void()> m_fnLoad;
    std::function<void()> m_fnRawSave;
    std::function<void()> m_fnChange; ///< as the user would, after another load; not measured
    std::function<void()> m_fnSave;
};

/// The times of many turns of the same operations, in the order of COperations.
class CTimes
{
public:
    /// All of them once: a busy moment hits all.
    void Take(COperations const& run)
    {
        Add(0, run.m_fnRawLoad);
        Add(1, run.m_fnLoad);
        Add(2, run.m_fnRawSave);
        run.m_fnChange();
        Add(3, run.m_fnSave);
    }

    void Print(char const* what) const
    {
        for (auto const operation : {0U, 2U}) {
            double const plain = Median(m_times[operation]);
            double const ours = Median(m_times[operation + 1]);
            std::printf("| %s %s | %.3f ms | %.3f ms | %.2f |\n", operation == 0 ? "load" : "save",
                what, plain, ours, ours / plain);
        }
    }

private:
    void Add(std::size_t operation, std::function<void()> const& run)
    {
        double const start = CpuMs();
        run();
        m_times[operation].push_back(CpuMs() - start);
    }

    std::array<std::vector<double>, 4> m_times;
};

void MeasureMembers(char const* what, int first, int count, int repetitions)
{
    CTimes times;
    CNoCommands commands;
    CCorvanaDoc doc(commands);
    CRawMember raw;
    CMemberProfilePg profile;
    CMemberEnrollPg enroll(doc);
    CMemberGoalsPg goals;
    CMemberMedHistPg medHist;
    for (int i = 0; i < repetitions; ++i) {
        int const memberID = first + i * 7918 % count;
        CMemberEditor editor(doc, {profile, enroll, goals, medHist}, memberID);
        times.Take({[&] { raw.Load(memberID); }, [&] { Require(editor.Load()); },
            [&] { raw.Save(memberID, "Salem " + std::to_string(i)); },
            [&] {
                Require(editor.Load());
                profile.m_strCity = "Bend " + std::to_string(i);
            },
            [&] { Require(editor.Save() == CSaveOutcome::saved); }});
    }
    times.Print(what);
}

void MeasureWorkouts(int count, int repetitions)
{
    CTimes times;
    CNoCommands commands;
    CCorvanaDoc doc(commands);
    CRawWorkout raw;
    CWorkoutDlg dialog(doc);
    CWorkoutEditor editor(doc.m_setWk, dialog);
    for (int i = 0; i < repetitions; ++i) {
        int const memberID = 1 + i * 7918 % count;
        auto const checkIn = When(memberID, i % kWorkouts);
        auto const load = [&] {
            Require(doc.m_setWk.FindWks(memberID, CEFOleDateTime::FromSeconds(checkIn)) == 1);
            editor.Load();
        };
        times.Take({[&] { raw.Load(memberID, checkIn); }, load,
            [&] { raw.Save(memberID, checkIn, 200 + i); },
            [&] {
                load();
                dialog.m_nStnVal[1] = static_cast<std::int16_t>(i);
            },
            [&] { Require(editor.Save() == CSaveOutcome::saved); }});
    }
    times.Print("a workout");
}

void MeasureBodyComps(int count, int repetitions)
{
    CTimes times;
    CNoCommands commands;
    CCorvanaDoc doc(commands);
    CRawBodyComp raw;
    for (int i = 0; i < repetitions; ++i) {
        int const memberID = 1 + i * 7918 % count;
        auto const when = When(memberID, i % kBodyComps);
        CBodyCompRecord record;
        record.m_member.m_lMemberID = memberID;
        CBodyCompEditor editor(doc, &doc.m_setBodyComp, record);
        auto const load = [&] {
            auto const date = CEFOleDateTime::FromSeconds(when);
            Require(doc.m_setBodyComp.FindBodyComps(memberID, date) == 1 && editor.Load());
        };
        times.Take(
            {[&] { raw.Load(memberID, when); }, load, [&] { raw.Save(memberID, when, 200 + i); },
                [&] {
                    load();
                    record.m_now.m_folds.m_dTriceps = i;
                },
                [&] { Require(editor.Save() == CSaveOutcome::saved); }});
    }
    times.Print("a body composition");
}

void MeasureEvaluations(int count, int repetitions)
{
    CTimes times;
    CNoCommands commands;
    CCorvanaDoc doc(commands);
    doc.m_circuit.m_nNumStations = CCircuit::kMostStations;
    CRawEvaluation raw;
    for (int i = 0; i < repetitions; ++i) {
        int const memberID = 1 + i * 7918 % count;
        int const evalID = memberID * 10 + kEvaluations - 1;
        CEvaluationRecord record;
        record.m_member.m_lMemberID = memberID;
        CEvaluationEditor editor(doc, record, evalID);
        times.Take({[&] { raw.Load(memberID, evalID); }, [&] { Require(editor.Load()); },
            [&] { raw.Save(evalID, 200 + i); },
            [&] {
                Require(editor.Load());
                record.m_now.m_nRestingHR = i;
            },
            [&] { Require(editor.Save() == CSaveOutcome::saved); }});
    }
    times.Print("an evaluation");
}

} // namespace

int main(int argc, char** argv)
{
    CConsoleBench const bench(argc, argv);
    int const most = bench.IsQuick() ? 2'000 : 100'000;
    int const repetitions = bench.IsQuick() ? 3 : 501;
    CBenchCentre const centre({DataFile::center, DataFile::member});
    StoreMembers(most);
    std::printf("%d members\n\n| what | raw | editor | ratio |\n|---|---:|---:|---:|\n", most);
    MeasureMembers("a member with three classes", 2, most, repetitions);
    MeasureMembers("a member with one class", 1, most, repetitions);
    // Only now: with records, a free class index costs looking through a member's.
    StoreWorkouts();
    StoreBodyComps();
    StoreEvaluations();
    MeasureWorkouts(most, repetitions);
    MeasureBodyComps(most, repetitions);
    MeasureEvaluations(most, repetitions);
    return 0;
}
