#pragma once

#include "reports/content/FitnessItem.h"
#include "reports/content/FitnessMember.h"
#include "reports/content/NormBlocks.h"
#include "reports/content/ReportRequest.h"
#include "store/fitness/Circuit.h"

#include <functional>
#include <string>
#include <vector>

/// An evaluation or a body composition as the reports show it.
struct CFitnessRecord
{
    CEFOleDateTime m_dtWhen;
    std::string m_strActivity; ///< empty when it is none of the levels
    std::string m_strMethod; ///< of a body composition; empty when it is none
    /// The items, and of an evaluation its lifts behind them: of all records of a report the same
    /// ones in the same order.
    std::vector<CFitnessItem> m_items;
    bool m_bOneOfMany = false; ///< the first of several of the same second
};

/// What one of the four reports is about.
struct CFitnessCase
{
    CFitnessMember m_member;
    CCircuit m_circuit; ///< for evaluations
    std::vector<CFitnessRecord> m_records; ///< in the order of time
    std::vector<std::string> m_days; ///< what the report calls them

    /// As the norms are shown with: a single one needs no name.
    std::vector<CNormBlocks::CDay> Days() const;
};

// Set is CDAOEval or CDAOBodyComp.

/// Reads what a job names, one record or two.
template <typename Set>
CDbStatus ReadFitnessCase(CReportRequest const& request, std::size_t records, CFitnessCase& found);

/// Shows each record of the member up to a time, oldest first; those without a date that can be are
/// only counted.
template <typename Set>
CDbStatus ReadFitnessHistory(CReportRequest const& request, CFitnessCase const& of,
    CEFOleDateTime const& until, std::function<void(CFitnessRecord const&)> const& show,
    int& withoutDate);

/// The place of an item among those of a record; there must be one.
std::size_t PlaceOf(CFitnessRecord const& record, std::string_view title);
