#include "store/Password.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <sodium.h>
#include <utf8proc.h>

namespace
{

// 64 MiB and three passes: about a tenth of a second on a front-desk computer.
constexpr unsigned long long kPasses = 3;
constexpr std::size_t kMemory = 64UL * 1024 * 1024;

struct Free
{
    void operator()(utf8proc_uint8_t* text) const { std::free(text); }
};

/// Composed form (NFC), so that the keyboard used does not matter.
std::optional<std::string> Normalised(std::string_view text)
{
    if (text.size() > kMostPasswordBytes) {
        return std::nullopt;
    }
    utf8proc_uint8_t* raw = nullptr;
    auto const length = utf8proc_map(reinterpret_cast<utf8proc_uint8_t const*>(text.data()),
        static_cast<utf8proc_ssize_t>(text.size()), &raw,
        static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
    std::unique_ptr<utf8proc_uint8_t, Free> const mapped(raw);
    if (length < 0) {
        return std::nullopt;
    }
    return std::string(reinterpret_cast<char const*>(raw), static_cast<std::size_t>(length));
}

std::size_t CountCharacters(std::string_view text)
{
    std::size_t count = 0;
    for (char const c : text) {
        count += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1 : 0;
    }
    return count;
}

} // namespace

std::optional<std::string> HashPassword(std::string_view text)
{
    auto normal = Normalised(text);
    if (!normal || CountCharacters(*normal) < kLeastPasswordCharacters || sodium_init() < 0) {
        return std::nullopt;
    }
    std::array<char, crypto_pwhash_STRBYTES> hash = {};
    int const failed
        = crypto_pwhash_str(hash.data(), normal->data(), normal->size(), kPasses, kMemory);
    sodium_memzero(normal->data(), normal->size());
    if (failed != 0) {
        return std::nullopt;
    }
    return std::string(hash.data());
}

bool VerifyPasswordHash(std::string const& hash, std::string_view text)
{
    auto normal = Normalised(text);
    if (!normal || hash.size() >= crypto_pwhash_STRBYTES || sodium_init() < 0) {
        return false;
    }
    bool const right = crypto_pwhash_str_verify(hash.c_str(), normal->data(), normal->size()) == 0;
    sodium_memzero(normal->data(), normal->size());
    return right;
}
