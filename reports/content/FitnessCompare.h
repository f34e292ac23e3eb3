#pragma once

#include "reports/content/FitnessRecord.h"

// What two records of a case have in common and in what they differ.

/// The place of every lift that was made both times, those that changed most by their percentage
/// first.
std::vector<std::size_t> LiftsByChange(CFitnessCase const& of);
/// Each measure that was taken at least once, with its change.
void ShowComparison(CReport& report, CFitnessCase const& of);
/// What became better, what did not, and what is neither.
void ShowInWords(CReport& report, CFitnessCase const& of, CNormBlocks const& norms);
