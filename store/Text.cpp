#include "store/Text.h"

#include <array>
#include <charconv>
#include <ostream>
#include <utf8proc.h>

namespace
{

constexpr std::string_view kHex = "0123456789ABCDEF";

constexpr std::array<std::uint32_t, 256> MakeCrcTable()
{
    std::array<std::uint32_t, 256> table = {};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        auto value = byte;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 1U) != 0 ? (value >> 1U) ^ 0x82F63B78U : value >> 1U;
        }
        table[byte] = value;
    }
    return table;
}

void AppendHex(std::string& line, std::uint32_t value, int digits)
{
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) {
        line += kHex[(value >> static_cast<unsigned>(shift)) & 0xFU];
    }
}

template <typename Number>
void AppendNumber(std::string& line, Number value)
{
    std::array<char, 32> digits = {};
    auto const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    line.append(digits.data(), end);
}

/// Bytes of the UTF-8 character at the front of the text, 0 when there is none.
std::size_t CharacterLength(std::string_view text)
{
    utf8proc_int32_t character = 0;
    auto const length = utf8proc_iterate(reinterpret_cast<utf8proc_uint8_t const*>(text.data()),
        static_cast<utf8proc_ssize_t>(text.size()), &character);
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

} // namespace

std::uint32_t Crc32C(std::string_view bytes)
{
    static constexpr auto kTable = MakeCrcTable();
    std::uint32_t crc = 0xFFFFFFFFU;
    for (char const c : bytes) {
        crc = kTable[(crc ^ static_cast<unsigned char>(c)) & 0xFFU] ^ (crc >> 8U);
    }
    return ~crc;
}

CText::CText(std::ostream* stream, char const& separator)
    : m_pStream(stream)
    , m_separator(separator)
{
}

void CText::Begin(std::string_view kind)
{
    m_strLine = kind;
}

void CText::Separator()
{
    m_strLine += m_separator;
}

void CText::Text(std::string_view text)
{
    Separator();
    while (!text.empty()) {
        char const c = text.front();
        auto const byte = static_cast<unsigned char>(c);
        std::size_t length = 1;
        if (c == m_separator) {
            m_strLine += "\\p";
        } else if (c == '\\') {
            m_strLine += "\\\\";
        } else if (c == '\n') {
            m_strLine += "\\n";
        } else if (c == '\r') {
            m_strLine += "\\r";
        } else if (byte < 0x20 && c != '\t') {
            AppendHex(m_strLine += "\\x", byte, 2);
        } else if (byte < 0x7F) {
            m_strLine += c;
        } else if (length = CharacterLength(text); byte != 0x7F && length > 0) {
            m_strLine.append(text.substr(0, length));
        } else {
            length = 1;
            AppendHex(m_strLine += "\\x", byte, 2);
        }
        text.remove_prefix(length);
    }
}

void CText::Null()
{
    Separator();
    m_strLine += "\\N";
}

void CText::Integer(std::int64_t value)
{
    Separator();
    AppendNumber(m_strLine, value);
}

void CText::Real(double value)
{
    Separator();
    AppendNumber(m_strLine, value);
}

void CText::Mask(std::uint32_t bits)
{
    Separator();
    int digits = 1;
    while (digits < 8 && bits >> static_cast<unsigned>(4 * digits) != 0) {
        ++digits;
    }
    AppendHex(m_strLine += "0x", bits, digits);
}

void CText::Date(CEFOleDateTime const& date)
{
    Separator();
    if (!date.IsZero()) {
        m_strLine += date.Format("%Y-%m-%dT%H:%M:%S");
    }
}

bool CText::End()
{
    Separator();
    AppendHex(m_strLine, Crc32C(m_strLine), 8);
    m_strLine += '\n';
    m_pStream->write(m_strLine.data(), static_cast<std::streamsize>(m_strLine.size()));
    m_strLine.clear();
    return m_pStream->good();
}
