#pragma once

#include "reports/content/FitnessRecord.h"

#include <functional>
#include <initializer_list>

// What the four fitness reports say in the same way.

/// What is known of the member on those days; the report adds what was measured.
CReportFacts FitnessFacts(CFitnessCase const& of);
/// The value of each record, "180.0 lb and 175.5 lb"; empty when none has one.
std::string ValuesOf(
    CFitnessCase const& of, std::function<std::string(CFitnessRecord const&)> const& value);
/// The item of a record with its unit and how it came about; empty when it was not measured.
std::string ValueOf(CFitnessItem const& item);
/// Adds the values of these items of a record.
void AddValues(
    CReportFacts& facts, CFitnessRecord const& record, std::initializer_list<char const*> titles);
/// What a reader has to know of the records: that the age is not known, or that both are one.
void ShowRemarks(CReport& report, CFitnessCase const& of);
/// Whether it is told that an item was not measured: not what follows from others, lifts, and the
/// measurements of other methods than those of the records.
bool IsExpected(CFitnessCase const& of, CFitnessItem const& item);
/// What the first record has no value for, and what cannot be.
void ShowMissing(CReport& report, CFitnessCase const& of);
