#pragma once

#include <string_view>

/// Reads a number in the shortest spelling that reads back as the same double, the one that
/// std::to_chars writes. False for any other spelling, and for infinities and a zero with a sign,
/// which a database does not keep.
bool ReadShortest(std::string_view text, double& value);
