#pragma once

#include "store/sets/DAOSmMem.h"
#include "ui/FieldExchange.h"

/// Member IDs, and workout numbers too.
constexpr CRange<std::int32_t> kMemberNumbers = {1, CDAOSmMem::kLargestNumber};

/// Refuses an ID that no member has, or that cannot be looked up now: message, focus into the field
/// that it stands in, false. One index look-up.
bool CheckMember(QLineEdit& field, std::int32_t memberID);
