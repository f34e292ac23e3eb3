#pragma once

#include "platform/db/Status.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

/// Reads the lines that CText writes, strictly: what it accepts is exactly what CText would have
/// written, except that all lines together may end with CR LF instead of LF. Every other departure
/// is refused, so that a damaged file is not taken for another one.
///
/// Fields are taken in the order of the line, by the type that each must have. The first failure
/// ends the reading: everything afterwards is false, and Status() tells the line, the field (the
/// kind is field 1, as tools count that cut columns) and the reason, never what stands there.
///
/// Keeps one line and some hundred kilobytes in memory, whatever the file. Throws std::bad_alloc
/// where there is no memory, and nothing else.
class CTextReader
{
public:
    /// The separator is one that CText takes. The stream stays the caller's.
    CTextReader(std::istream& stream, char separator);

    /// Goes to the next line and checks its end, its check sum and its kind's spelling. False after
    /// the last line, and when the line is bad.
    bool Next();
    std::string_view Kind() const { return m_kind; }
    std::int64_t Line() const { return m_lLine; } ///< counts from 1
    std::uint32_t CheckSum() const { return m_nCheckSum; } ///< of the line

    // Each takes one field. A number out of the range of its field is taken where CText::Unfit
    // spells it, and refused where it stands like others. The ranges include their ends.

    bool TakeNull(); ///< takes a null; false, without an error, when something else is next
    bool IsAtEnd(); ///< are all fields taken? One too many refuses the line
    bool Integer(std::int64_t least, std::int64_t most, std::int64_t& value);
    /// The same without a spelling for what is out of the range.
    bool Number(std::int64_t least, std::int64_t most, std::int64_t& value);
    bool Mask(std::int64_t& value);
    bool Real(double& value);
    bool Date(std::int64_t& seconds); ///< as CEFOleDateTime keeps them
    bool Text(std::string_view& text); ///< valid until the next one is taken

    /// Refuses the field taken last, and with it the file, for a reason that a sentence can end
    /// with. Always false.
    bool RefuseField(std::string_view reason);
    bool RefuseNext(std::string_view reason); ///< the field to be taken next
    /// Refuses the line as a whole.
    bool RefuseLine(std::string_view reason);
    CDbStatus const& Status() const { return m_status; }

private:
    enum class LineEnd
    {
        unknown,
        lf,
        crLf
    };

    bool ReadLine();
    bool ReadMore();
    bool TakeKind(std::string_view line);
    bool TakeCheckSum(std::string_view line);
    bool Begin();
    bool IsUnfit();
    bool EndField(char const* end);
    bool EndNumber(std::from_chars_result const& number);
    bool Digits(std::int64_t& value);
    bool Plain(char const*& end);
    bool Decode(char const* end, std::string_view& text);
    char const* Unescape(char const* from);
    bool DayOf(std::string_view text, std::int64_t& seconds);

    std::istream& m_stream;
    char m_separator;
    std::array<bool, 256> m_plain = {}; ///< the bytes that stand for themselves in a text
    CDbStatus m_status;

    std::vector<char> m_buffer;
    std::size_t m_nRead = 0; ///< bytes of the buffer that are handed out
    std::size_t m_nFilled = 0;
    LineEnd m_lineEnd = LineEnd::unknown;

    std::string_view m_line; ///< the bytes of the line, without its end
    std::string_view m_kind;
    std::int64_t m_lLine = 0;
    std::int64_t m_lField = 0;
    std::uint32_t m_nCheckSum = 0;
    char const* m_pNext = nullptr; ///< where the next field begins
    char const* m_pLast = nullptr; ///< the separator before the check sum

    std::string m_strText; ///< of a field with escapes
    std::array<char, 10> m_day = {'1', '8', '9', '9', '-', '1', '2', '-', '3', '0'}; ///< read last
    std::int64_t m_lDaySeconds = 0; ///< its midnight
};
