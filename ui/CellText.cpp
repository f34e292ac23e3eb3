#include "ui/CellText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

std::string FixedText(double value, int width, int decimals)
{
    std::array<char, std::numeric_limits<double>::max_exponent10 + 32> digits = {};
    auto const end = std::to_chars(
        digits.begin(), digits.end(), std::abs(value), std::chars_format::fixed, decimals);
    std::string text(digits.begin(), end.ptr);
    bool const isNegative = std::signbit(value);
    auto const places = static_cast<std::size_t>(width - (isNegative ? 1 : 0));
    if (text.size() < places) {
        text.insert(0, places - text.size(), '0');
    }
    return isNegative ? '-' + text : text;
}

int Truncated(double value)
{
    constexpr double kMost = std::numeric_limits<int>::max();
    return value >= -kMost && value <= kMost ? static_cast<int>(value) : 0;
}
