#pragma once

#include <string>
#include <string_view>

/// The text with every control character replaced by "?": what a file says must not steer the
/// terminal. A text that comes back unchanged has none.
std::string Printable(std::string_view text);
