#pragma once

#include "platform/db/RowBlock.h"
#include "platform/db/Status.h"
#include "platform/db/Value.h"

#include <cstdint>
#include <string>
#include <vector>

// For reports of counts and sums, which no record set gives.

/// Runs a SELECT on the file of the members and keeps its whole result.
CDbStatus QueryMembers(std::string const& sql, std::vector<DbValue> const& values, CRowBlock& rows);

// The cells of a row of it; 0 and "" for what is none.
std::int64_t NumberIn(CRowView const& row, std::size_t column);
std::string TextIn(CRowView const& row, std::size_t column);
