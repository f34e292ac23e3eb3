#include "store/text/Crc32C.h"

#include <array>
#include <cstring>

namespace
{

constexpr std::size_t kStride = 8; // bytes taken at once

using CrcTables = std::array<std::array<std::uint32_t, 256>, kStride>;

/// Table n holds what a byte does to the check sum when n further bytes follow it.
constexpr CrcTables MakeTables()
{
    CrcTables tables = {};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        auto value = byte;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 1U) != 0 ? (value >> 1U) ^ 0x82F63B78U : value >> 1U;
        }
        tables[0][byte] = value;
    }
    for (std::size_t table = 1; table < kStride; ++table) {
        for (std::size_t byte = 0; byte < 256; ++byte) {
            auto const before = tables[table - 1][byte];
            tables[table][byte] = tables[0][before & 0xFFU] ^ (before >> 8U);
        }
    }
    return tables;
}

constexpr auto kTables = MakeTables();

std::uint32_t ByTable(std::uint32_t crc, std::string_view bytes)
{
    auto const byteAt = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    while (bytes.size() >= kStride) {
        std::uint32_t next = 0;
        for (std::size_t i = 0; i < kStride; ++i) {
            auto const mixed = i < 4 ? byteAt(i) ^ (crc >> (8U * i)) : byteAt(i);
            next ^= kTables[kStride - 1 - i][mixed & 0xFFU];
        }
        crc = next;
        bytes.remove_prefix(kStride);
    }
    for (char const c : bytes) {
        crc = kTables[0][(crc ^ static_cast<unsigned char>(c)) & 0xFFU] ^ (crc >> 8U);
    }
    return crc;
}

#if defined(__x86_64__)

__attribute__((target("sse4.2"))) std::uint32_t ByInstruction(
    std::uint32_t crc, std::string_view bytes)
{
    std::uint64_t wide = crc;
    while (bytes.size() >= kStride) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data(), kStride);
        wide = __builtin_ia32_crc32di(wide, word);
        bytes.remove_prefix(kStride);
    }
    auto narrow = static_cast<std::uint32_t>(wide);
    for (char const c : bytes) {
        narrow = __builtin_ia32_crc32qi(narrow, static_cast<unsigned char>(c));
    }
    return narrow;
}

auto const kFastest = __builtin_cpu_supports("sse4.2") ? ByInstruction : ByTable;

#else

constexpr auto kFastest = ByTable;

#endif

} // namespace

std::uint32_t Crc32C(std::string_view bytes)
{
    return ~kFastest(0xFFFFFFFFU, bytes);
}

std::uint32_t Crc32C(std::uint32_t before, std::string_view bytes)
{
    return ~kFastest(~before, bytes);
}

std::uint32_t Crc32CByTable(std::string_view bytes)
{
    return ~ByTable(0xFFFFFFFFU, bytes);
}
