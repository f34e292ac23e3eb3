#include "store/ShortestReal.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace
{

constexpr std::array kPowers
    = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// A decimal without exponent, of so few digits that one division gives the nearest number. False
/// for everything else, and where the shortest spelling has an exponent.
bool ShortDecimal(std::string_view text, double& value)
{
    bool const negative = !text.empty() && text.front() == '-';
    text.remove_prefix(negative ? 1 : 0);
    if (text.empty() || text.size() > 16 || !IsDigit(text.front())) {
        return false;
    }
    if (text.size() == 1) {
        value = negative ? '0' - text.front() : text.front() - '0';
        return !negative || value != 0.0;
    }
    std::int64_t digits = 0;
    std::size_t point = text.size();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '.' && point == text.size()) {
            point = i;
        } else if (IsDigit(text[i])) {
            digits = digits * 10 + (text[i] - '0');
        } else {
            return false;
        }
    }
    bool const whole = point == text.size();
    bool const leadingZero = text.front() == '0';
    // Below 1 the digits that count begin later, and many zeros at the end may be an exponent.
    if (leadingZero || text.back() == '.' || (text.back() == '0' && (!whole || text.size() > 5))
        || (whole && text.size() > 15)) {
        return false;
    }
    value = static_cast<double>(digits) / kPowers[whole ? 0 : text.size() - point - 1];
    value = negative ? -value : value;
    return true;
}

/// Any number, by writing it again, which takes longer.
bool AnyReal(std::string_view text, double& value)
{
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || !std::isfinite(value) || (value == 0.0 && std::signbit(value))) {
        return false;
    }
    std::array<char, 32> shortest = {};
    auto const last = std::to_chars(shortest.data(), shortest.data() + shortest.size(), value).ptr;
    return text == std::string_view(shortest.data(), last);
}

} // namespace

bool ReadShortest(std::string_view text, double& value)
{
    return ShortDecimal(text, value) || AnyReal(text, value);
}
