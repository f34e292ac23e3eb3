#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// A checksum as text: so many digits, hexadecimal.
inline constexpr std::size_t kCrcDigits = 8;

/// CRC-32C (Castagnoli, reflected, as in RFC 3720 appendix B.4), with the processor's instruction
/// for it where there is one.
std::uint32_t Crc32C(std::string_view bytes);
/// Of bytes whose beginning has this check sum already; 0 is that of no bytes.
std::uint32_t Crc32C(std::uint32_t before, std::string_view bytes);

/// The same for a processor without that instruction.
std::uint32_t Crc32CByTable(std::string_view bytes);
