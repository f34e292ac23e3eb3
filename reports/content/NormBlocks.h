#pragma once

#include "reports/content/FitnessItem.h"
#include "reports/content/FitnessMember.h"
#include "reports/document/Report.h"

#include <initializer_list>
#include <set>
#include <string>
#include <vector>

/// Shows results beside their norms, or says why there is none, and remembers whose norms they
/// were.
class CNormBlocks
{
public:
    CNormBlocks(CReport& report, CFitnessMember const& member)
        : m_report(report)
        , m_member(member)
    {
    }

    /// The results of one day, or of two in the order of time.
    struct CDay
    {
        std::vector<CFitnessItem> const& m_items;
        CEFOleDateTime m_dtDay;
        std::string m_strDay; ///< as the report calls it
    };
    /// Some of them below a heading; nothing when none was measured. Both pressures go together,
    /// since their class is the higher of the two.
    void ShowSection(std::string heading, std::vector<CDay> const& days,
        std::initializer_list<Measure> const& measures);
    void ShowSources();

    /// The class of a blood pressure among the bands of the systolic norm, from 0 on; empty when it
    /// was not measured whole or there is no norm for the age.
    std::optional<std::size_t> PressureClass(CDay const& day) const;
    /// How far a result lies outside the band to aim at; empty when there is none for it.
    std::optional<double> OutsideAim(CDay const& day, CFitnessItem const& item) const;

private:
    struct CResult
    {
        CFitnessItem const* m_pItem;
        CDay const* m_pDay;
        CNorm::CRow const* m_pRow; ///< null without a norm
    };

    CNorm::CRow const* RowFor(CNorm const& norm, CDay const& day) const;
    void Show(std::vector<CDay> const& days, Measure measure);
    void ShowPressure(std::vector<CDay> const& days);
    void ShowResults(
        CNorm const& norm, std::vector<CResult> const& results, std::string const& remark);
    void ShowAlike(
        CNorm const& norm, std::vector<CResult> const& results, std::string const& remark);
    void ShowBar(CNorm const& norm, std::vector<CResult> const& results, std::string const& remark);
    std::string WhyNoNorm(CNorm const& norm, CDay const& day) const;

    CReport& m_report;
    CFitnessMember const& m_member;
    std::set<Measure> m_used;
};
