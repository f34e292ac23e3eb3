#include "reports/content/MemberReports.h"
#include "reports/content/QueryCells.h"
#include "reports/content/ReportTexts.h"

#include <utility>

namespace
{

void AddCounts(CReportTable& table, std::string const& name, CRowView const& row, std::size_t first,
    CReportTable::Row kind)
{
    auto const members = NumberIn(row, first);
    auto const current = NumberIn(row, first + 1);
    table.AddRow(
        {name, CountText(current), CountText(members - current), CountText(members)}, kind);
}

} // namespace

// Reads every member and every class once. A member who is in several classes counts in each, and
// once in the sums of a category and of the centre.
CDbStatus MemberCount(CReportRequest const& request)
{
    // Names that differ in their case alone are one class, as in every search.
    constexpr char const* kGroups
        = "SELECT min(c.category), CASE WHEN grouping = 1 THEN min(c.course) END,"
          " CASE WHEN grouping = 1 THEN min(c.section) END, grouping,"
          " count(DISTINCT c.member_id),"
          " count(DISTINCT CASE WHEN m.status <> 0 THEN c.member_id END)"
          " FROM classes AS c JOIN members AS m ON m.member_id = c.member_id"
          " JOIN (SELECT 0 AS grouping UNION ALL SELECT 1)"
          " GROUP BY c.category COLLATE NOCASE, grouping,"
          " CASE WHEN grouping = 1 THEN c.course END COLLATE NOCASE,"
          " CASE WHEN grouping = 1 THEN c.section END COLLATE NOCASE"
          " ORDER BY c.category COLLATE NOCASE, grouping DESC,"
          " CASE WHEN grouping = 1 THEN c.course END COLLATE NOCASE,"
          " CASE WHEN grouping = 1 THEN c.section END COLLATE NOCASE";
    constexpr char const* kTotals
        = "SELECT count(*), coalesce(sum(status <> 0), 0),"
          " coalesce(sum(enrolled), 0), coalesce(sum(enrolled AND status <> 0), 0),"
          " coalesce(sum(NOT enrolled), 0), coalesce(sum(NOT enrolled AND status <> 0), 0)"
          " FROM (SELECT status, EXISTS (SELECT 1 FROM classes AS c"
          " WHERE c.member_id = m.member_id) AS enrolled FROM members AS m)";
    CRowBlock groups;
    CRowBlock totals;
    if (auto status = QueryMembers(kGroups, {}, groups); !status) {
        return status;
    }
    if (auto status = QueryMembers(kTotals, {}, totals); !status) {
        return status;
    }
    if (!request.GoesOn(1)) {
        return StoppedReport();
    }
    CReportTable table({{"Category, course and section", 44}, {"Current", 10, true},
        {"Past", 10, true}, {"Members", 10, true}});
    using Row = CReportTable::Row;
    bool isFirst = true; // class of its category
    for (std::size_t i = 0; i < groups.Rows(); ++i) {
        auto const row = groups.Row(i);
        auto const category = TextIn(row, 0);
        if (std::exchange(isFirst, false)) {
            table.AddGroup(category);
        }
        if (NumberIn(row, 3) == 1) {
            auto const name = ClassText(TextIn(row, 1), TextIn(row, 2), {});
            AddCounts(table, name.empty() ? "(no course)" : name, row, 4, Row::plain);
        } else {
            AddCounts(table, "All of " + category, row, 4, Row::sum);
            isFirst = true;
        }
    }
    auto const row = totals.Row(0);
    AddCounts(table, "Members with a class", row, 2, Row::sum);
    AddCounts(table, "Members without a class", row, 4, Row::sum);
    AddCounts(table, "All members", row, 0, Row::sum);
    request.m_report.m_lstBlocks.emplace_back(std::move(table));
    request.m_report.Note("A member in several classes counts in each of them, and once in the "
                          "sums of a category and of all members.");
    return {};
}
