#pragma once

#include "doc/FitnessRecord.h"
#include "store/fitness/Circuit.h"
#include "ui/TrendChart.h"

#include <optional>
#include <vector>

/// What the form of an evaluation shows and takes.
struct CEvaluationValues
{
    CFitnessBasics m_basics;
    std::int32_t m_nRestingHR = 0; ///< beats per minute
    std::int32_t m_nSystolic = 0;
    std::int32_t m_nDiastolic = 0;
    double m_dTrunkFlexion = 0.0;
    std::int32_t m_nSitUps = 0; ///< in a minute
    std::int32_t m_nAbCrunches = 0; ///< in a minute
    std::int32_t m_nStepTest = 0; ///< of three minutes
    std::int32_t m_nRunMinutes = 0; ///< for 1.5 miles
    std::int32_t m_nRunSeconds = 0; ///< and the seconds beyond the minutes
    std::int32_t m_nErgometer = 0; ///< pulse recovery
    double m_dPercentFat = 0.0;
    CSkinfolds m_folds;
    std::array<std::int32_t, CCircuit::kMostStations> m_nLifts = {}; ///< pounds, truncated
};

/// An evaluation in work, with what belongs beside it.
struct CEvaluationRecord
{
    CMemberFacts m_member;
    CEvaluationValues m_now;
    std::optional<CEvaluationValues> m_last; ///< the member's evaluation before this one
    std::vector<CTrendPoint> m_history; ///< the member's evaluations in the order of time

    /// A value of the evaluation before, of those in m_now.
    template <typename T>
    std::optional<double> Last(T CEvaluationValues::*value) const
    {
        return m_last ? std::optional(static_cast<double>((*m_last).*value)) : std::nullopt;
    }
};
