#pragma once

#include "reports/document/ReportTable.h"

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

// A report is a value: what it says, from top to bottom, and nothing of how that is drawn. Texts
// are UTF-8 and may come from any record; whoever draws them copes with what they hold.

/// A line or a paragraph.
struct CReportText
{
    enum class Kind
    {
        heading, ///< of a section; stays with what follows
        body,
        note ///< smaller: sources, remarks
    };
    Kind m_kind = Kind::body;
    std::string m_strText;
};

/// What is known of somebody or something: labels and their values. Empty values are shown as a
/// dash.
struct CReportFacts
{
    std::vector<std::pair<std::string, std::string>> m_lstFacts;
    int m_nColumns = 2; ///< side by side, 1 to 3
};

/// Where a value lies among the bands of a norm: the bands side by side with their names, a mark at
/// the value, and the words beside it.
struct CNormBar
{
    struct CBand
    {
        std::string m_strName; ///< "Above average"
        double m_dFrom; ///< from here to the next band
    };
    struct CMark
    {
        double m_dValue;
        std::string m_strLabel; ///< "32", or with a date where there are two
    };
    std::string m_strTitle; ///< "Sit-ups"
    std::string m_strValue; ///< "32 in a minute: above average"
    std::vector<CBand> m_lstBands; ///< in the order of the scale, from left to right
    double m_dEnd = 0.0; ///< of the last band
    std::vector<CMark> m_lstMarks; ///< one or two; a value off the scale is drawn at its end
    std::string m_strRemark; ///< a sentence or two that a trainer can stand behind
    std::string m_strSource; ///< author, year
};

/// Values over time as lines, or side by side as bars. What it shows is told in words below it too.
struct CReportChart
{
    enum class Kind
    {
        lines,
        bars
    };
    struct CPoint
    {
        std::int64_t m_nX; ///< lines: seconds as in CEFOleDateTime; bars: not used
        double m_dY;
        std::string m_strLabel; ///< below a bar, or of the date of a point
    };
    struct CSeries
    {
        std::string m_strName; ///< with its unit: "Weight, lb"
        std::vector<CPoint> m_lstPoints; ///< in the order of time
    };
    Kind m_kind = Kind::lines;
    std::string m_strTitle;
    std::vector<CSeries> m_lstSeries; ///< lines: each in its own panel; bars: one
    std::string m_strInWords;
};

using CReportBlock = std::variant<CReportText, CReportFacts, CReportTable, CNormBar, CReportChart>;

struct CReport
{
    std::string m_strTitle; ///< "Membership Status"
    std::string m_strCenter; ///< its name
    std::string m_strCenterLine; ///< its address and telephone
    std::vector<std::string> m_lstScope; ///< dates, class, options: one line each
    std::string m_strMade; ///< when the records were read: "11/26/2026 07:30:00"
    bool m_bLandscape = false;
    std::vector<CReportBlock> m_lstBlocks;

    void Heading(std::string text)
    {
        m_lstBlocks.emplace_back(CReportText{CReportText::Kind::heading, std::move(text)});
    }
    void Body(std::string text)
    {
        m_lstBlocks.emplace_back(CReportText{CReportText::Kind::body, std::move(text)});
    }
    void Note(std::string text)
    {
        m_lstBlocks.emplace_back(CReportText{CReportText::Kind::note, std::move(text)});
    }
};
