#pragma once

#include "reports/norms/Norm.h"

#include <array>
#include <cstdint>
#include <string_view>

/// What the reports compare with a norm.
enum class Measure : std::uint8_t
{
    restingHeartRate,
    systolic,
    diastolic,
    trunkFlexion,
    sitUps,
    abCrunches,
    stepTest,
    aerobicCapacity, ///< estimated from the run of 1.5 miles
    ergometer,
    bodyMassIndex,
    waistHipRatio,
    percentFat
};
constexpr std::size_t kMeasures = 12;

/// The norm that the reports use for it, which can be that there is none. They are part of the
/// program and checked by its tests.
CNorm const& NormOf(Measure measure);
/// Their files, in the order of the enumeration.
std::array<std::string_view, kMeasures> NormTexts();
