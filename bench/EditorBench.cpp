// Measures what the member editor costs beside its windows: reading a member into the pages and
// saving a change, against the statements that plain SQLite needs for it, on the same file.

#include "bench/ConsoleBench.h"
#include "bench/RawSqlite.h"
#include "doc/CorvanaDoc.h"
#include "members/MemberEditor.h"
#include "members/MemberEnrollPg.h"
#include "members/MemberGoalsPg.h"
#include "members/MemberMedHistPg.h"
#include "members/MemberProfilePg.h"

#include <QApplication>

#include <array>
#include <cstring>
#include <memory>

namespace
{

std::string MemberPath()
{
    return CDatabaseSession::Get().PathOf(DataFile::member);
}

/// Members with a row in every table; the even ones have three classes, the others one.
void StoreMembers(int count)
{
    CRawDatabase const raw(MemberPath());
    auto const numbers = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE "
                         "i < "
        + std::to_string(count) + ") ";
    raw.Run("BEGIN");
    for (auto const* const sql :
        {"INSERT INTO members (member_id, workout_number, first_name, middle_initial, last_name, "
         "status) SELECT i, i, 'Katharine', 'Q', 'Featherstone ' || i, 1 FROM n",
            "INSERT INTO profiles (member_id, address, city, state, zip, phone, email, "
            "emergency_name, emergency_phone, physician, release, employee, birthday, sex, goals, "
            "medical_history) SELECT i, '4711 Evergreen Terrace', 'Springfield', 'WA', "
            "'98101-1234', '(555) 555-0101', 'kq@example.org', 'John Featherstone', "
            "'(555) 555-0102', 'Dr. Elizabeth Hamilton', 1, 0, 3000000000, 0, 21, 5 FROM n",
            "INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive) "
            "SELECT i, 3980000000, 4010000000, 3, 1 FROM n",
            "INSERT INTO messages (member_id, message) SELECT i, 'Welcome back!' FROM n",
            "INSERT INTO classes (member_id, class_index, category, course, section, "
            "grade_status, orientation, re_evaluations, other_bonuses) SELECT i, c.k, 'Athletics', "
            "'Course ' || c.k, 'Monday', 1, 1, 2, 0 FROM n, (SELECT 1 AS k UNION ALL SELECT 2 "
            "UNION ALL SELECT 3) AS c WHERE c.k = 1 OR i % 2 = 0"}) {
        raw.Run((numbers + sql).c_str());
    }
    raw.Run("COMMIT; ANALYZE; PRAGMA wal_checkpoint(TRUNCATE)");
}

/// The statements of plain SQLite, prepared once.
class CRawMember
{
public:
    CRawMember()
        : m_raw(MemberPath())
        , m_update(m_raw, "UPDATE profiles SET city = ?1 WHERE member_id = ?2")
    {
        for (auto const& [sql, columns] : std::array<std::pair<char const*, int>, 5>{
                 {{"SELECT id, member_id, workout_number, status, first_name, middle_initial, "
                   "last_name FROM members WHERE member_id = ?",
                      4},
                     {"SELECT id, member_id, release, employee, birthday, sex, goals, "
                      "medical_history, address, city, state, zip, phone, email, emergency_name, "
                      "emergency_phone, physician FROM profiles WHERE member_id = ?",
                         8},
                     {"SELECT id, member_id, enroll_date, expire_date, period, incentive FROM "
                      "enrollments WHERE member_id = ?",
                         6},
                     {"SELECT id, member_id, message FROM messages WHERE member_id = ? ORDER BY id",
                         2},
                     {"SELECT id, member_id, class_index, grade_status, orientation, "
                      "re_evaluations, other_bonuses, category, course, section FROM classes WHERE "
                      "member_id = ? ORDER BY id",
                         7}}}) {
            m_selects.push_back({std::make_unique<CRawStatement>(m_raw, sql), columns});
        }
    }

    void Load(int memberID)
    {
        for (auto const& [select, numbers] : m_selects) {
            select->Bind(1, memberID);
            while (select->Step()) {
                for (int column = 0; column < select->Columns(); ++column) {
                    m_nBytes += column < numbers ? std::size_t(select->Integer(column))
                                                 : select->Text(column).size();
                }
            }
            select->Reset();
        }
    }

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
    CRawStatement const m_update;
    std::vector<std::pair<std::unique_ptr<CRawStatement>, int>> m_selects;
    std::size_t m_nBytes = 0; ///< so that nothing is read in vain
};

void Require(bool done)
{
    if (!done) {
        std::fputs("the member could not be read or saved\n", stderr);
        std::exit(1);
    }
}

void Measure(char const* what, int first, int count, int repetitions)
{
    std::array<std::vector<double>, 4> times;
    CNoCommands commands;
    CCorvanaDoc doc(commands);
    CRawMember raw;
    CMemberProfilePg profile;
    CMemberEnrollPg enroll(doc);
    CMemberGoalsPg goals;
    CMemberMedHistPg medHist;
    for (int i = 0; i < repetitions; ++i) { // taking turns: a busy moment hits all
        int const memberID = first + i * 7918 % count;
        CMemberEditor editor(doc, {profile, enroll, goals, medHist}, memberID);
        std::size_t operation = 0;
        for (auto const& run : std::initializer_list<std::function<void()>>{
                 [&] { raw.Load(memberID); }, [&] { Require(editor.Load()); },
                 [&] { raw.Save(memberID, "Salem " + std::to_string(i)); },
                 [&] {
                     Require(editor.Load()); // the raw save was another program's
                     profile.m_strCity = "Bend " + std::to_string(i);
                     double const start = CpuMs();
                     Require(editor.Save() == CMemberSave::saved);
                     times[3].push_back(CpuMs() - start);
                 }}) {
            double const start = CpuMs();
            run();
            if (operation < 3) {
                times[operation++].push_back(CpuMs() - start);
            }
        }
    }
    for (auto const operation : {0U, 2U}) {
        double const plain = Median(times[operation]);
        double const ours = Median(times[operation + 1]);
        std::printf("| %s a member with %s | %.3f ms | %.3f ms | %.2f |\n",
            operation == 0 ? "load" : "save", what, plain, ours, ours / plain);
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication const app(argc, argv);
    bool const isQuick = argc > 1 && std::strcmp(argv[1], "--quick") == 0;
    int const most = isQuick ? 2'000 : 100'000;
    int const repetitions = isQuick ? 3 : 501;
    CBenchCentre const centre({DataFile::center, DataFile::member});
    StoreMembers(most);
    std::printf("%d members\n\n| what | raw | editor | ratio |\n|---|---:|---:|---:|\n", most);
    Measure("three classes", 2, most, repetitions);
    Measure("one class", 1, most, repetitions);
    return 0;
}
