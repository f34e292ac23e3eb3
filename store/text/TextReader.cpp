#include "store/text/TextReader.h"

#include "store/EFOleDateTime.h"
#include "store/text/Crc32C.h"
#include "store/text/NumberSpelling.h"
#include "store/text/Text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <istream>
#include <utf8proc.h>

namespace
{

constexpr std::size_t kChunk = std::size_t(64) << 10U;
constexpr std::int64_t kLargestMask = 0xFFFFFFFF;
constexpr std::string_view kMisspelled = "is not spelled as it must be";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

} // namespace

CTextReader::CTextReader(std::istream& stream, char separator)
    : m_stream(stream)
    , m_separator(separator)
    , m_buffer(2 * kChunk)
{
    for (std::size_t byte = 0; byte < m_plain.size(); ++byte) {
        m_plain[byte] = (byte >= 0x20 && byte < 0x7F) || byte == '\t';
    }
    m_plain['\\'] = false;
    m_plain[static_cast<unsigned char>(separator)] = false;
    if (!CText::IsSeparator(separator)) {
        RefuseLine("is asked for with a separator that cannot be one");
    }
}

// ---- lines

bool CTextReader::Next()
{
    if (!m_status || !ReadLine()) {
        m_pNext = nullptr;
        return false;
    }
    return TakeKind(m_line) && TakeCheckSum(m_line);
}

/// Finds the next line in the buffer, reading on as long as it has no end.
bool CTextReader::ReadLine()
{
    std::size_t searched = 0;
    char const* end = nullptr;
    while (end == nullptr) {
        auto const* const begin = m_buffer.data() + m_nRead;
        auto const size = m_nFilled - m_nRead;
        end = static_cast<char const*>(std::memchr(begin + searched, '\n', size - searched));
        searched = size;
        if (end != nullptr) {
            m_line = {begin, static_cast<std::size_t>(end - begin)};
        } else if (size > CText::kLongestLine + 1) {
            break;
        } else if (!ReadMore()) {
            ++m_lLine;
            if (m_stream.bad()) {
                return RefuseLine("could not be read");
            }
            return size > 0 && RefuseLine("has no end: the file is cut");
        }
    }
    ++m_lLine;
    m_nRead += end == nullptr ? 0 : m_line.size() + 1;
    auto const lineEnd = end != nullptr && m_line.ends_with('\r') ? LineEnd::crLf : LineEnd::lf;
    m_line.remove_suffix(lineEnd == LineEnd::crLf ? 1 : 0);
    if (end == nullptr || m_line.size() > CText::kLongestLine) {
        return RefuseLine("is longer than a line can be");
    }
    if (m_lineEnd != LineEnd::unknown && m_lineEnd != lineEnd) {
        return RefuseLine("ends otherwise than those before it");
    }
    m_lineEnd = lineEnd;
    return true;
}

/// Reads on behind what is not handed out yet. False at the end of the file.
bool CTextReader::ReadMore()
{
    if (m_nRead > 0) {
        std::memmove(m_buffer.data(), m_buffer.data() + m_nRead, m_nFilled - m_nRead);
        m_nFilled -= m_nRead;
        m_nRead = 0;
    }
    if (m_buffer.size() - m_nFilled < kChunk) {
        m_buffer.resize(m_buffer.size() * 2);
    }
    try {
        m_stream.read(m_buffer.data() + m_nFilled, kChunk);
    } catch (std::ios_base::failure const&) {
        // The stream's state tells the same.
    }
    m_nFilled += static_cast<std::size_t>(m_stream.gcount());
    return m_stream.gcount() > 0;
}

bool CTextReader::TakeKind(std::string_view line)
{
    if (m_lLine == 1 && line.starts_with(kByteOrderMark)) {
        return RefuseLine("begins with a byte-order mark");
    }
    m_kind = line.substr(0, line.find(m_separator));
    m_lField = 1;
    auto const isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
    bool const spelled = m_kind.size() >= 2 && m_kind.size() <= 6 && IsDigit(m_kind.back())
        && std::all_of(m_kind.begin(), m_kind.end() - 1, isLetter);
    return spelled || RefuseField("is no kind of record");
}

bool CTextReader::TakeCheckSum(std::string_view line)
{
    bool const hasSum = line.size() > m_kind.size() + kCrcDigits
        && line[line.size() - kCrcDigits - 1] == m_separator;
    if (!hasSum) {
        return RefuseLine("does not end with a check sum");
    }
    std::uint32_t sum = 0;
    for (char const c : line.substr(line.size() - kCrcDigits)) {
        int const digit = HexDigit(c);
        if (digit < 0) {
            return RefuseLine("does not end with a check sum");
        }
        sum = sum * 16 + static_cast<std::uint32_t>(digit);
    }
    line.remove_suffix(kCrcDigits);
    if (sum != Crc32C(line)) {
        return RefuseLine("is damaged: its check sum does not fit");
    }
    m_nCheckSum = sum;
    m_pNext = line.data() + m_kind.size() + 1;
    m_pLast = line.data() + line.size() - 1;
    return true;
}

bool CTextReader::RefuseField(std::string_view reason)
{
    return RefuseLine(", field " + std::to_string(m_lField) + ": " + std::string(reason));
}

bool CTextReader::RefuseNext(std::string_view reason)
{
    ++m_lField;
    return RefuseField(reason);
}

bool CTextReader::RefuseLine(std::string_view reason)
{
    if (m_status) {
        auto const line = "line " + std::to_string(m_lLine);
        m_status = {DbError::damaged,
            line + (reason.starts_with(',') ? "" : ": ") + std::string(reason) + "."};
    }
    m_pNext = nullptr;
    return false;
}

// ---- fields

/// Is there one more field?
bool CTextReader::Begin()
{
    if (m_pNext == nullptr) {
        return false;
    }
    ++m_lField;
    return m_pNext <= m_pLast || RefuseField("is missing");
}

/// The field must end here.
bool CTextReader::EndField(char const* end)
{
    if (*end != m_separator) {
        return RefuseField(kMisspelled);
    }
    m_pNext = end + 1;
    return true;
}

bool CTextReader::TakeNull()
{
    if (m_pNext == nullptr || m_pLast - m_pNext < 2 || m_pNext[0] != '\\' || m_pNext[1] != 'N'
        || m_pNext[2] != m_separator) {
        return false;
    }
    ++m_lField;
    m_pNext += 3;
    return true;
}

bool CTextReader::IsAtEnd()
{
    if (m_pNext == nullptr) {
        return false;
    }
    return m_pNext > m_pLast || RefuseNext("is one too many");
}

bool CTextReader::IsUnfit()
{
    bool const unfit = m_pNext[0] == '\\' && m_pNext[1] == '#';
    m_pNext += unfit ? 2 : 0;
    return unfit;
}

/// A field that is a number ends where the number does.
bool CTextReader::EndNumber(std::from_chars_result const& number)
{
    if (number.ec == std::errc::result_out_of_range) {
        return RefuseField("is out of range");
    }
    return number.ec == std::errc() ? EndField(number.ptr) : RefuseField(kMisspelled);
}

bool CTextReader::Digits(std::int64_t& value)
{
    return EndNumber(ReadWhole(m_pNext, m_pLast, value));
}

bool CTextReader::Number(std::int64_t least, std::int64_t most, std::int64_t& value)
{
    return Begin() && Digits(value)
        && ((value >= least && value <= most) || RefuseField("is out of range"));
}

bool CTextReader::Integer(std::int64_t least, std::int64_t most, std::int64_t& value)
{
    if (!Begin()) {
        return false;
    }
    bool const unfit = IsUnfit();
    return Digits(value)
        && ((value >= least && value <= most) != unfit || RefuseField("is out of range"));
}

bool CTextReader::Mask(std::int64_t& value)
{
    if (!Begin()) {
        return false;
    }
    if (IsUnfit()) {
        return Digits(value)
            && (value < 0 || value > kLargestMask || RefuseField("is out of range"));
    }
    return EndNumber(ReadMask(m_pNext, m_pLast, value));
}

bool CTextReader::Real(double& value)
{
    if (!Begin()) {
        return false;
    }
    if (m_pNext[1] == m_separator && IsDigit(*m_pNext)) [[likely]] {
        value = *m_pNext - '0'; // not measured, most often
        m_pNext += 2;
        return true;
    }
    auto const* const end = static_cast<char const*>(
        std::memchr(m_pNext, m_separator, static_cast<std::size_t>(m_pLast - m_pNext) + 1));
    std::string_view const text(m_pNext, end);
    if (text == "\\#inf" || text == "\\#-inf") {
        value = text.size() == 5 ? HUGE_VAL : -HUGE_VAL;
    } else if (!ReadShortest(text, value)) {
        return RefuseField(kMisspelled);
    }
    return EndField(end);
}

bool CTextReader::Date(std::int64_t& seconds)
{
    if (!Begin()) {
        return false;
    }
    if (*m_pNext == m_separator) {
        seconds = 0;
        return EndField(m_pNext);
    }
    if (IsUnfit()) {
        return Digits(seconds)
            && ((seconds != 0 && !CEFOleDateTime::FromSeconds(seconds).ChkStatus())
                || RefuseField("is out of range"));
    }
    constexpr std::ptrdiff_t kLength = 19; // 2026-11-16T18:05:09
    auto const* const at = m_pNext;
    if (m_pLast - at < kLength || at[10] != 'T' || at[13] != ':' || at[16] != ':') {
        return RefuseField(kMisspelled);
    }
    int const hour = ReadDigits({at + 11, 2});
    int const minute = ReadDigits({at + 14, 2});
    int const second = ReadDigits({at + 17, 2});
    bool const exists = DayOf({at, 10}, seconds) && hour >= 0 && hour < 24 && minute >= 0
        && minute < 60 && second >= 0 && second < 60;
    seconds += hour * 3600 + minute * 60 + second;
    // The zero date has its own spelling.
    return exists && seconds != 0 ? EndField(at + kLength)
                                  : RefuseField("is no date and time of the calendar");
}

/// Midnight of a day written 2026-11-16. Records follow each other in time, so that the day before
/// is often the same.
bool CTextReader::DayOf(std::string_view text, std::int64_t& seconds)
{
    if (text != std::string_view(m_day.data(), m_day.size())) {
        CEFOleDateTime const day(ReadDigits(text.substr(0, 4)), ReadDigits(text.substr(5, 2)),
            ReadDigits(text.substr(8, 2)));
        if (text[4] != '-' || text[7] != '-' || !day.ChkStatus()) {
            return false;
        }
        std::copy(text.begin(), text.end(), m_day.begin());
        m_lDaySeconds = day.Seconds();
    }
    seconds = m_lDaySeconds;
    return true;
}

// ---- texts

bool CTextReader::Text(std::string_view& text)
{
    if (!Begin()) {
        return false;
    }
    auto const* end = m_pNext;
    bool escaped = false;
    while (*end != m_separator) {
        if (m_plain[static_cast<unsigned char>(*end)]) [[likely]] {
            ++end;
        } else if (*end == '\\') {
            escaped = true;
            end += 2; // a separator never stands behind it: this is checked when it is decoded
            end = std::min(end, m_pLast);
        } else if (!Plain(end)) {
            return RefuseField("has a byte that must be written otherwise");
        }
    }
    text = {m_pNext, end};
    return (!escaped || Decode(end, text)) && EndField(end);
}

/// Moves behind a character of more than one byte; false when there is none.
bool CTextReader::Plain(char const*& end)
{
    utf8proc_int32_t character = 0;
    auto const length = utf8proc_iterate(
        reinterpret_cast<utf8proc_uint8_t const*>(end), m_pLast - end, &character);
    bool const isCharacter = static_cast<unsigned char>(*end) > 0x7F && length > 0;
    end += isCharacter ? length : 0;
    return isCharacter;
}

/// Takes the escapes out of the field that ends there. A text has one spelling, so that writing it
/// again must give the field.
bool CTextReader::Decode(char const* end, std::string_view& text)
{
    m_strText.clear();
    auto const field = text;
    for (auto const* at = field.data(); at != nullptr && at < end;) {
        if (*at != '\\') {
            m_strText += *at++;
            continue;
        }
        at = Unescape(at + 1);
        if (at == nullptr) {
            return RefuseField("has an escape that does not exist");
        }
    }
    text = m_strText;
    return CText::Spelling(text, m_separator) == field
        || RefuseField("has an escape where none belongs");
}

/// Adds what the letters behind a backslash stand for; null when that is nothing. What stands
/// behind the end of the field is a separator, which no escape has.
char const* CTextReader::Unescape(char const* from)
{
    switch (*from) {
    case 'p':
        m_strText += m_separator;
        return from + 1;
    case '\\':
        m_strText += '\\';
        return from + 1;
    case 'n':
        m_strText += '\n';
        return from + 1;
    case 'r':
        m_strText += '\r';
        return from + 1;
    case 'x':
        if (HexDigit(from[1]) >= 0 && HexDigit(from[2]) >= 0) {
            m_strText += static_cast<char>(HexDigit(from[1]) * 16 + HexDigit(from[2]));
            return from + 3;
        }
        return nullptr;
    default:
        return nullptr;
    }
}
