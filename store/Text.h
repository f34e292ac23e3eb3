#pragma once

#include "store/EFOleDateTime.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

/// Writes records as lines of fields to a stream that the caller owns:
///
///     KIND|field|...|CRC LF
///
/// In a text the separator is written \p, a backslash \\, line feed \n, carriage return \r, and any
/// other control byte or byte that is not UTF-8 as \xHH, so that a line is always one record and
/// each text has one spelling. CRC is the CRC-32C of all before it in eight capital hex digits.
class CText
{
public:
    CText(std::ostream* stream, char const& separator);
    virtual ~CText() = default;

    void Begin(std::string_view kind); ///< capital letters and a digit for the format
    void Text(std::string_view text);
    void Null(); ///< no value, which is not the empty text
    void Integer(std::int64_t value);
    void Real(double value); ///< the shortest text that reads back as the same number
    void Mask(std::uint32_t bits); ///< 0x1F
    void Date(CEFOleDateTime const& date); ///< 2026-11-16T18:05:09; the zero date is empty
    /// Ends the line; false when the stream did not take it.
    bool End();

private:
    void Separator();

    std::ostream* m_pStream;
    char m_separator;
    std::string m_strLine;
};

/// CRC-32C (Castagnoli, reflected, as in RFC 3720 appendix B.4).
std::uint32_t Crc32C(std::string_view bytes);
