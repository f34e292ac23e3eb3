#pragma once

#include "reports/content/FitnessMember.h"
#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOEval.h"

#include <string>

// Whose equation gives the percentage of fat that a record holds, with the measurements beside it
// and the member's age then; "as recorded" when none does.

/// Reads the skinfolds of the evaluation.
CDbStatus ReadFatSource(CDAOEval const& eval, CFitnessMember const& member, std::string& source);
CDbStatus ReadFatSource(
    CDAOBodyComp const& bodyComp, CFitnessMember const& member, std::string& source);
