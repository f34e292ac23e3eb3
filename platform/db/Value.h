#pragma once

#include <cstdint>
#include <string>
#include <variant>

/// A value to be bound to a statement: null, a whole number, a number or UTF-8 text.
using DbValue = std::variant<std::monostate, std::int64_t, double, std::string>;
