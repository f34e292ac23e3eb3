#pragma once

#include "store/EFOleDateTime.h"

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

/// Bytes of the UTF-8 character at the front of the text, 0 when there is none.
std::size_t CharacterLength(std::string_view text);
/// The number of UTF-8 characters; a byte that belongs to none counts as one.
std::size_t CountCharacters(std::string_view text);

/// Writes records as lines of fields to a stream that the caller owns:
///
///     KIND|field|...|CRC LF
///
/// In a text the separator is written \p, a backslash \\, line feed \n, carriage return \r, and any
/// other control byte but the tab, and every byte that is not UTF-8, as \xHH, so that a line is
/// always one record and each text has one spelling. CRC is the CRC-32C of all before it in eight
/// capital hex digits. docs/data-files.md describes the format, CTextReader reads it.
///
/// Every line goes to the stream at once. One that was given a buffer of some hundred kilobytes
/// before it was opened saves a tenth of the time.
class CText
{
public:
    /// The bytes of a line, without its end. More are neither written nor read.
    static constexpr std::size_t kLongestLine = std::size_t(16) << 20U;

    /// The separator is one for which IsSeparator is true; with any other no line is ever taken.
    CText(std::ostream* stream, char const& separator);
    virtual ~CText() = default;

    void Begin(std::string_view kind); ///< capital letters and a digit for the format
    void Text(std::string_view text);
    void Null(); ///< no value, which is not the empty text
    void Integer(std::int64_t value)
    {
        // Most fields of most records are one digit.
        if (value >= 0 && value < 10 && m_pBufferEnd - m_pEnd >= 2) [[likely]] {
            *m_pEnd++ = m_separator;
            *m_pEnd++ = static_cast<char>('0' + value);
        } else {
            LongInteger(value);
        }
    }
    void Real(double value); ///< the shortest text that reads back as the same number
    void Mask(std::uint32_t bits); ///< 0x1F
    /// 2026-11-16T18:05:09; the zero date is empty, an invalid one written by Unfit.
    void Date(CEFOleDateTime const& date);
    /// \#300: a number that another program stored, out of the range of its field; infinities too.
    void Unfit(std::int64_t value);
    void Unfit(double value);
    /// Ends the line; false when it is longer than kLongestLine, of which nothing is written then,
    /// or when the stream did not take it.
    bool End();
    bool IsTooLong() const { return m_bTooLong; } ///< why End() was false

    /// Can the character stand between fields? A tab or a punctuation mark that no number has.
    static bool IsSeparator(char c);
    /// The spelling of a text between two separators.
    static std::string Spelling(std::string_view text, char separator);

private:
    char* Room(std::size_t count);
    void Grow(std::size_t count);
    char* NewField(std::size_t count);
    void LongInteger(std::int64_t value);

    std::ostream* m_pStream;
    std::array<std::uint8_t, 256> m_escapes; ///< how each byte is written
    char m_separator;
    bool m_bTooLong = false;
    std::vector<char> m_line;
    char* m_pEnd = nullptr; ///< of what stands in the line
    char* m_pBufferEnd = nullptr;
    std::int64_t m_nDay; ///< the day whose text is kept
    std::array<char, 11> m_day = {}; ///< "2026-11-16T"
};
