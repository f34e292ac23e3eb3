#pragma once

#include <sqlite3.h>

/// Gives SQL two functions that compare texts ignoring case, for all alphabets, and keeping
/// accents: begins_folded(TEXT, PREFIX) and equals_folded(TEXT, OTHER), 1 or 0.
int AddFoldFunctions(sqlite3* connection);
