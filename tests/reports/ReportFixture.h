#pragma once

#include "reports/content/BuildReport.h"
#include "tests/store/MemberFixture.h"

/// Reports on the members of a made-up centre.
class CReportTest : public CMemberTest
{
protected:
    void SetUp() override
    {
        CMemberTest::SetUp();
        AddCenter();
    }

    static void AddCenter()
    {
        Run(DataFile::center,
            "INSERT INTO center (name, address1, address2, city, state, zip, phone, email, web,"
            " min_minutes, min_circuits) VALUES ('Gym', '', '', 'Town', 'IL', '62701', '', '', '',"
            " 0, 0)");
    }

    static CReport Build(CReportJob const& job, DbError expected = DbError::none)
    {
        CReport report;
        auto const status = BuildReport(job, {}, report);
        EXPECT_EQ(status.Error(), expected) << status.Text();
        return report;
    }

    /// The rows of the report's tables, one below the other, their cells with bars between; sums
    /// begin with "=", groups with "#".
    static Rows RowsOf(CReport const& report)
    {
        Rows rows;
        std::vector<std::string_view> cells;
        for (auto const& block : report.m_lstBlocks) {
            auto const* const table = std::get_if<CReportTable>(&block);
            for (std::size_t i = 0; table != nullptr && i < table->CountRows(); ++i) {
                table->ReadRow(i, cells);
                auto const kind = table->KindOf(i);
                std::string text = kind == CReportTable::Row::sum ? "="
                    : kind == CReportTable::Row::group            ? "#"
                                                                  : "";
                char const* separator = "";
                for (auto const cell : cells) {
                    text += std::exchange(separator, "|") + std::string(cell);
                }
                rows.push_back(text);
            }
        }
        return rows;
    }
    static Rows RowsOf(CReportJob const& job) { return RowsOf(Build(job)); }

    static void AddClass(std::int32_t member, int index, std::string const& category,
        std::string const& course = "", std::string const& section = "")
    {
        Run(DataFile::member,
            "INSERT INTO classes (member_id, class_index, category, course, section, grade_status,"
            " orientation, re_evaluations, other_bonuses) VALUES (?, ?, ?, ?, ?, 1, 0, 0, 0)",
            {std::int64_t(member), std::int64_t(index), category, course, section});
    }
};
