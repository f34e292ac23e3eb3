// Measures what the member editor costs beside its windows: reading a member into the pages and
// saving a change, against the statements that plain SQLite needs for it, on the same file.

#include "bench/ConsoleBench.h"
#include "bench/RawMember.h"
#include "doc/CorvanaDoc.h"
#include "members/MemberEditor.h"
#include "members/MemberEnrollPg.h"
#include "members/MemberGoalsPg.h"
#include "members/MemberMedHistPg.h"
#include "members/MemberProfilePg.h"

#include <array>

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
    CConsoleBench const bench(argc, argv);
    int const most = bench.IsQuick() ? 2'000 : 100'000;
    int const repetitions = bench.IsQuick() ? 3 : 501;
    CBenchCentre const centre({DataFile::center, DataFile::member});
    StoreMembers(most);
    std::printf("%d members\n\n| what | raw | editor | ratio |\n|---|---:|---:|---:|\n", most);
    Measure("three classes", 2, most, repetitions);
    Measure("one class", 1, most, repetitions);
    return 0;
}
