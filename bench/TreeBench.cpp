// Measures the member tree: loading all members against plain SQLite that reads the same rows in
// the same order, the memory that takes, and what one member's coming, changing and going costs as
// the number of members grows. Times are CPU of this process, each the median of its repetitions.

#include "bench/ConsoleBench.h"
#include "bench/RawMember.h"
#include "doc/CorvanaDoc.h"
#include "workouts/MainViewTree.h"

#include <QMainWindow>

#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace
{

/// Members of many names, in no order, some of them not capitalised.
void StoreMembers(int count)
{
    CRawDatabase const raw(MemberPath());
    raw.Run("DELETE FROM members");
    auto const sql = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
        + std::to_string(count)
        + ") INSERT INTO members (member_id, workout_number, first_name, middle_initial, "
          "last_name, status) SELECT i, i, char(65 + i * 31 % 26) || 'atharine', "
          "char(65 + i % 26), char(65 + i * 7919 % 26 + 32 * (i % 50 = 0)) || "
          "substr('eatherstone', 1, 3 + i * 13 % 9) || char(97 + i * 17 % 26) || "
          "CASE i % 40 WHEN 0 THEN ' Lee' WHEN 1 THEN '-Lee' ELSE '' END, i % 10 <> 0 FROM n";
    raw.Run(sql.c_str());
    raw.Run("PRAGMA wal_checkpoint(TRUNCATE)");
}

/// The rows of the tree's members, each made a string as someone would who shows them.
double RawLoadMs()
{
    CRawDatabase const raw(MemberPath());
    double const start = CpuMs();
    CRawStatement const select(raw,
        "SELECT id, member_id, workout_number, first_name, middle_initial, last_name, status FROM "
        "members ORDER BY last_name COLLATE NOCASE, first_name COLLATE NOCASE, "
        "middle_initial COLLATE NOCASE, id");
    std::vector<std::pair<std::int64_t, std::string>> rows;
    while (select.Step()) {
        rows.emplace_back(
            select.Integer(1), select.Text(5) + ", " + select.Text(3) + " " + select.Text(4));
    }
    return CpuMs() - start;
}

/// A tree in a window of its own, on the screen, with nothing loaded.
class CTreeWindow
{
public:
    CTreeWindow()
        : m_doc(m_commands)
        , m_tree(new CMainViewTree(m_doc))
    {
        m_window.setCentralWidget(m_tree);
        m_window.resize(320, 700);
        m_window.show();
        Paint();
    }

    CMainViewTree& Tree() { return *m_tree; }
    void Load()
    {
        m_tree->expand(m_tree->model()->index(0, 0));
        Paint();
    }
    /// What has changed is laid out by a timer and painted by the event after that.
    void Paint()
    {
        for (int round = 0; round < 3; ++round) {
            QCoreApplication::processEvents();
        }
    }
    double LoadMs()
    {
        double const start = CpuMs();
        Load();
        return CpuMs() - start;
    }

private:
    CNoCommands m_commands;
    CCorvanaDoc m_doc;
    QMainWindow m_window;
    CMainViewTree* m_tree;
};

void MeasureLoading(int count, int repetitions)
{
    StoreMembers(count);
    std::vector<double> raw;
    std::vector<double> tree;
    for (int i = 0; i < repetitions; ++i) { // taking turns: a busy moment hits both
        raw.push_back(RawLoadMs());
        tree.push_back(CTreeWindow().LoadMs());
    }
    std::printf("| load %d members | %.1f ms | %.1f ms | %.2f |\n", count, Median(raw),
        Median(tree), Median(tree) / Median(raw));
}

/// CPU of each operation with the paint that follows, 20 members of it opened.
void MeasureChanges(int count, int repetitions)
{
    StoreMembers(count);
    CTreeWindow window;
    window.Load();
    auto& tree = window.Tree();
    auto const root = tree.model()->index(0, 0);
    for (int row = 0; row < 20; ++row) {
        tree.expand(tree.model()->index(row, 0, root));
    }
    window.Paint();
    std::array<std::vector<double>, 3> times;
    for (int i = 0; i < repetitions; ++i) {
        auto const memberID = 1 + i * 97 % count;
        std::size_t operation = 0;
        for (auto const& run : std::initializer_list<std::function<bool()>>{
                 [&] { return tree.RefreshMemberNode(memberID, kMembersNode, 0); },
                 [&] { return tree.RemoveMemberNode(memberID); },
                 [&] { return tree.AddMemberNode(memberID); }}) {
            double const start = CpuMs();
            if (!run()) {
                std::fprintf(stderr, "member %d is not there\n", memberID);
                std::exit(1);
            }
            window.Paint();
            times[operation++].push_back(CpuMs() - start);
        }
    }
    std::printf("| %d | %.2f ms | %.2f ms | %.2f ms |\n", count, Median(times[2]), Median(times[1]),
        Median(times[0]));
}

} // namespace

int main(int argc, char** argv)
{
    CConsoleBench const bench(argc, argv);
    auto const counts
        = bench.IsQuick() ? std::vector{2'000} : std::vector{1'000, 10'000, 100'000, 300'000};
    int const usual = bench.IsQuick() ? 2'000 : 100'000;
    int const repetitions = bench.IsQuick() ? 1 : 9;

    CBenchCentre const centre({DataFile::member});
    StoreMembers(usual);
    {
        CTreeWindow window;
        double const empty = MemoryMB("VmRSS");
        window.Load();
        std::printf("%d members: %.1f MB more than the empty window's %.1f MB, %.1f MB at the "
                    "peak\n\n",
            usual, MemoryMB("VmRSS") - empty, empty, MemoryMB("VmHWM") - empty);
    }
    std::puts("| what | raw | tree | ratio |\n|---|---:|---:|---:|");
    for (int const count : {usual, counts.back()}) {
        MeasureLoading(count, repetitions);
    }
    std::puts("\n| members | add one | remove one | refresh one |\n|---:|---:|---:|---:|");
    for (int const count : counts) {
        MeasureChanges(count, repetitions * 5);
    }
    return 0;
}
