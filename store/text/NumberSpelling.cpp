#include "store/text/NumberSpelling.h"

#include <array>
#include <cmath>

namespace
{

constexpr std::array kPowers
    = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

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

std::from_chars_result ReadWhole(char const* first, char const* last, std::int64_t& value)
{
    constexpr std::ptrdiff_t kFitsAlways = 18; // digits
    auto const* const begin = first + (*first == '-' ? 1 : 0);
    auto const* end = begin;
    std::int64_t number = 0;
    while (IsDigit(*end) && end - begin < kFitsAlways) {
        number = number * 10 + (*end++ - '0');
    }
    if (end == begin || (*begin == '0' && (end - begin > 1 || begin != first))) {
        return {first, std::errc::invalid_argument};
    }
    value = begin == first ? number : -number;
    return IsDigit(*end) ? std::from_chars(first, last, value)
                         : std::from_chars_result{end, std::errc()};
}

std::from_chars_result ReadMask(char const* first, char const* last, std::int64_t& value)
{
    constexpr std::ptrdiff_t kMostDigits = 8;
    if (last - first < 3 || first[0] != '0' || first[1] != 'x') {
        return {first, std::errc::invalid_argument};
    }
    auto const* const begin = first + 2;
    auto const* end = begin;
    value = 0;
    while (HexDigit(*end) >= 0 && end - begin < kMostDigits) {
        value = value * 16 + HexDigit(*end++);
    }
    bool const spelled = end > begin && (*begin != '0' || end - begin == 1);
    return {end, spelled ? std::errc() : std::errc::invalid_argument};
}

int ReadDigits(std::string_view digits)
{
    int value = 0;
    for (char const c : digits) {
        if (!IsDigit(c)) {
            return -1;
        }
        value = value * 10 + (c - '0');
    }
    return value;
}

bool ReadShortest(std::string_view text, double& value)
{
    return ShortDecimal(text, value) || AnyReal(text, value);
}
