#include "store/text/Text.h"

#include "store/text/Crc32C.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <ostream>
#include <utf8proc.h>

namespace
{

constexpr std::string_view kHex = "0123456789ABCDEF";
constexpr std::size_t kLongestEscape = 4; // \xHH
constexpr std::size_t kLongestNumber = 32;

// How a byte of a text is written: as it is, by a letter after a backslash, or:
enum Escape : std::uint8_t
{
    plain = 0,
    hex = 1,
    utf8 = 2 ///< as it is when it begins a character, in hex otherwise
};

using Escapes = std::array<std::uint8_t, 256>;

Escapes MakeEscapes(char separator)
{
    Escapes escapes = {};
    for (std::size_t byte = 0; byte < escapes.size(); ++byte) {
        escapes[byte] = byte < 0x20 || byte == 0x7F ? hex : byte > 0x7F ? utf8 : plain;
    }
    escapes['\t'] = plain;
    escapes['\n'] = 'n';
    escapes['\r'] = 'r';
    escapes['\\'] = '\\';
    escapes[static_cast<unsigned char>(separator)] = 'p';
    return escapes;
}

char* PutHex(char* to, std::uint32_t value, int digits)
{
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) {
        *to++ = kHex[(value >> static_cast<unsigned>(shift)) & 0xFU];
    }
    return to;
}

constexpr auto kTwoDigits = [] {
    std::array<std::array<char, 2>, 100> texts = {};
    for (std::size_t value = 0; value < texts.size(); ++value) {
        texts[value] = {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
    }
    return texts;
}();

char* PutTwoDigits(char* to, int value)
{
    std::memcpy(to, kTwoDigits[static_cast<std::size_t>(value)].data(), 2);
    return to + 2;
}

template <typename Number>
char* PutNumber(char* to, Number value)
{
    return std::to_chars(to, to + kLongestNumber, value).ptr;
}

char* Put(char* to, std::string_view text)
{
    std::memcpy(to, text.data(), text.size());
    return to + text.size();
}

/// Writes a text with its escapes, for which there must be room.
char* PutText(char* to, std::string_view text, Escapes const& escapes)
{
    while (!text.empty()) {
        auto const byte = static_cast<unsigned char>(text.front());
        auto const escape = escapes[byte];
        std::size_t length = 1;
        if (escape == plain) [[likely]] {
            *to++ = text.front();
        } else if (escape == utf8 && (length = CharacterLength(text)) > 0) {
            to = Put(to, text.substr(0, length));
        } else if (escape == hex || escape == utf8) {
            length = 1;
            to = PutHex(Put(to, "\\x"), byte, 2);
        } else {
            *to++ = '\\';
            *to++ = static_cast<char>(escape);
        }
        text.remove_prefix(length);
    }
    return to;
}

} // namespace

std::size_t CharacterLength(std::string_view text)
{
    utf8proc_int32_t character = 0;
    auto const length = utf8proc_iterate(reinterpret_cast<utf8proc_uint8_t const*>(text.data()),
        static_cast<utf8proc_ssize_t>(text.size()), &character);
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

std::size_t CountCharacters(std::string_view text)
{
    std::size_t count = 0;
    for (; !text.empty(); ++count) {
        text.remove_prefix(std::max(CharacterLength(text), std::size_t(1)));
    }
    return count;
}

CText::CText(std::ostream* stream, char const& separator)
    : m_pStream(stream)
    , m_escapes(MakeEscapes(separator))
    , m_separator(separator)
    , m_nDay(std::numeric_limits<std::int64_t>::min())
{
    Grow(1024);
}

bool CText::IsSeparator(char c)
{
    // Neither letters nor digits, nor what dates, numbers and escapes are spelled with.
    return c == '\t' || (c != '\0' && std::strchr("!\"$%&'()*,/;<=>?@[]^_`{|}~", c) != nullptr);
}

std::string CText::Spelling(std::string_view text, char separator)
{
    std::string spelling(text.size() * kLongestEscape, '\0');
    auto* const begin = spelling.data();
    spelling.resize(static_cast<std::size_t>(PutText(begin, text, MakeEscapes(separator)) - begin));
    return spelling;
}

/// Makes sure that so many bytes can be written at the end of the line.
inline char* CText::Room(std::size_t count)
{
    if (static_cast<std::size_t>(m_pBufferEnd - m_pEnd) < count) {
        Grow(count);
    }
    return m_pEnd;
}

void CText::Grow(std::size_t count)
{
    auto const used = static_cast<std::size_t>(m_pEnd - m_line.data());
    m_line.resize(std::max(m_line.size() * 2, used + count));
    m_pEnd = m_line.data() + used;
    m_pBufferEnd = m_line.data() + m_line.size();
}

/// Begins a field of at most so many bytes.
inline char* CText::NewField(std::size_t count)
{
    auto* const to = Room(count + 1);
    *to = m_separator;
    return to + 1;
}

void CText::Begin(std::string_view kind)
{
    m_bTooLong = false;
    m_pEnd = m_line.data();
    m_pEnd = Put(Room(kind.size()), kind);
}

void CText::Text(std::string_view text)
{
    auto const used = static_cast<std::size_t>(m_pEnd - m_line.data());
    if (m_bTooLong || text.size() > kLongestLine - std::min(used, kLongestLine)) {
        m_bTooLong = true;
        return;
    }
    m_pEnd = PutText(NewField(text.size() * kLongestEscape), text, m_escapes);
}

void CText::Null()
{
    m_pEnd = Put(NewField(2), "\\N");
}

void CText::LongInteger(std::int64_t value)
{
    auto* to = NewField(kLongestNumber);
    if (value < 10 || value >= 10'000) {
        to = PutNumber(to, value);
    } else {
        auto const number = static_cast<int>(value);
        if (number >= 1000) {
            to = PutTwoDigits(to, number / 100);
        } else if (number >= 100) {
            *to++ = static_cast<char>('0' + number / 100);
        }
        to = PutTwoDigits(to, number % 100);
    }
    m_pEnd = to;
}

void CText::Real(double value)
{
    if (value == 0.0) {
        Integer(0); // whatever its sign: both are equal
    } else if (std::isfinite(value)) {
        m_pEnd = PutNumber(NewField(kLongestNumber), value);
    } else {
        Unfit(value);
    }
}

void CText::Mask(std::uint32_t bits)
{
    int digits = 1;
    while (digits < 8 && bits >> static_cast<unsigned>(4 * digits) != 0) {
        ++digits;
    }
    m_pEnd = PutHex(Put(NewField(kLongestNumber), "0x"), bits, digits);
}

void CText::Date(CEFOleDateTime const& date)
{
    if (date.IsZero()) {
        m_pEnd = NewField(0);
        return;
    }
    if (!date.ChkStatus()) {
        Unfit(date.Seconds());
        return;
    }
    auto const day = (date.Seconds() - (date.Seconds() < 0 ? CEFOleDateTime::kDay - 1 : 0))
        / CEFOleDateTime::kDay;
    auto const second = static_cast<int>(date.Seconds() - day * CEFOleDateTime::kDay);
    if (day != m_nDay) {
        m_nDay = day;
        auto* to = PutTwoDigits(m_day.data(), date.Year() / 100);
        *(to = PutTwoDigits(to, date.Year() % 100)) = '-';
        *(to = PutTwoDigits(to + 1, date.Month())) = '-';
        *PutTwoDigits(to + 1, date.Day()) = 'T';
    }
    auto* to = Put(NewField(kLongestNumber), {m_day.data(), m_day.size()});
    *(to = PutTwoDigits(to, second / 3600)) = ':';
    *(to = PutTwoDigits(to + 1, second / 60 % 60)) = ':';
    m_pEnd = PutTwoDigits(to + 1, second % 60);
}

void CText::Unfit(std::int64_t value)
{
    m_pEnd = PutNumber(Put(NewField(kLongestNumber + 2), "\\#"), value);
}

void CText::Unfit(double value)
{
    m_pEnd = PutNumber(Put(NewField(kLongestNumber + 2), "\\#"), value);
}

bool CText::End()
{
    m_pEnd = NewField(kCrcDigits + 1);
    auto const size = static_cast<std::size_t>(m_pEnd - m_line.data());
    m_bTooLong = m_bTooLong || size + kCrcDigits > kLongestLine;
    if (m_bTooLong || !IsSeparator(m_separator)) {
        return false;
    }
    m_pEnd = PutHex(m_pEnd, Crc32C({m_line.data(), size}), kCrcDigits);
    *m_pEnd++ = '\n';
    m_pStream->write(m_line.data(), static_cast<std::streamsize>(m_pEnd - m_line.data()));
    return m_pStream->good();
}
