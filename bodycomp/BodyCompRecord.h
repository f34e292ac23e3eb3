#pragma once

#include "doc/FitnessRecord.h"
#include "store/sets/DAOBodyComp.h"
#include "ui/TrendChart.h"

#include <optional>
#include <vector>

/// What the forms of a body composition show and take.
struct CBodyCompValues
{
    std::uint8_t m_nMethod = CDAOBodyComp::mSkinfolds; ///< whose form it is
    CFitnessBasics m_basics;
    double m_dWaist = 0.0; ///< inches, as wrist and hip
    double m_dHip = 0.0;
    double m_dWrist = 0.0;
    CSkinfolds m_folds;
    double m_dWaterTemp = 0.0; ///< in the units of the flags, as the weights
    double m_dWetWeight = 0.0;
    double m_dTareWeight = 0.0;
    bool m_bFahrenheit = true; ///< else Celsius
    bool m_bWetPounds = true; ///< else kilograms
    bool m_bTarePounds = true;
    bool m_bBrozek = false; ///< else Siri
    double m_dPercentFat = 0.0;

    // What was weighed under water, in degrees Fahrenheit and pounds.
    double WaterTempF() const;
    double WetPounds() const;
    double TarePounds() const;
};

/// A body composition in work, with what belongs beside it. The pages of its form are views of it:
/// each changes its own values of m_now, and a page that is not shown leaves them as they came.
struct CBodyCompRecord
{
    CMemberFacts m_member;
    CBodyCompValues m_now;
    std::optional<CBodyCompValues> m_last; ///< the member's body composition before this one
    std::vector<CTrendPoint> m_history; ///< the member's body compositions in the order of time

    /// A value of the body composition before, of those in m_now.
    std::optional<double> Last(double CBodyCompValues::*value) const
    {
        return m_last ? std::optional((*m_last).*value) : std::nullopt;
    }
};

/// Body fat from weight, height and girths.
CBodyFat FatByTape(CBodyCompRecord const& record);
/// Body fat from weighing under water.
CBodyFat FatByWater(CBodyCompRecord const& record);
