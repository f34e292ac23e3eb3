#pragma once

#include <charconv>
#include <cstdint>
#include <string_view>

// Reads numbers in the one spelling that data files give them. The functions that find the end of
// a number themselves tell it as std::from_chars does, and need one character behind the number.

inline bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// The value of a capital hex digit, -1 for any other character.
inline int HexDigit(char c)
{
    return IsDigit(c) ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

/// A whole number as std::to_chars writes it: no plus, no leading zeros, no zero with a sign.
std::from_chars_result ReadWhole(char const* first, char const* last, std::int64_t& value);

/// A mask of 32 bits: 0x1F.
std::from_chars_result ReadMask(char const* first, char const* last, std::int64_t& value);

/// So many digits; -1 when one of them is none.
int ReadDigits(std::string_view digits);

/// A number in the shortest spelling that reads back as the same double, the one that
/// std::to_chars writes. False for any other spelling, and for infinities and a zero with a sign,
/// which are written otherwise.
bool ReadShortest(std::string_view text, double& value);
