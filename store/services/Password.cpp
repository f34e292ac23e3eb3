#include "store/services/Password.h"

#include "store/text/Text.h"

#include <array>
#include <cstdlib>
#include <sodium.h>
#include <utf8proc.h>

namespace
{

// 64 MiB and three passes: about a tenth of a second on a front-desk computer.
constexpr unsigned long long kPasses = 3;
constexpr std::size_t kMemory = 64UL * 1024 * 1024;

/// A password in composed form (NFC), so that the keyboard used does not matter. It is wiped out of
/// memory when it goes.
class CSecret
{
public:
    explicit CSecret(std::string_view text)
    {
        if (text.size() <= kMostPasswordBytes) {
            m_nSize = utf8proc_map(reinterpret_cast<utf8proc_uint8_t const*>(text.data()),
                static_cast<utf8proc_ssize_t>(text.size()), &m_pText,
                static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
        }
    }
    ~CSecret()
    {
        if (IsValid()) {
            sodium_memzero(m_pText, Text().size());
            // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): the library took it like that
            std::free(m_pText);
        }
    }
    CSecret(CSecret const&) = delete;
    CSecret& operator=(CSecret const&) = delete;

    /// False for a text that is too long or no UTF-8.
    bool IsValid() const { return m_nSize >= 0; }
    std::string_view Text() const
    {
        return {reinterpret_cast<char const*>(m_pText), static_cast<std::size_t>(m_nSize)};
    }

private:
    utf8proc_uint8_t* m_pText = nullptr;
    utf8proc_ssize_t m_nSize = -1;
};

} // namespace

std::optional<std::string> HashPassword(std::string_view password)
{
    CSecret const secret(password);
    if (!secret.IsValid() || CountCharacters(secret.Text()) < kLeastPasswordCharacters
        || sodium_init() < 0) {
        return std::nullopt;
    }
    std::array<char, crypto_pwhash_STRBYTES> hash = {};
    auto const text = secret.Text();
    if (crypto_pwhash_str(hash.data(), text.data(), text.size(), kPasses, kMemory) != 0) {
        return std::nullopt;
    }
    return std::string(hash.data());
}

bool VerifyPasswordHash(std::string const& hash, std::string_view text)
{
    CSecret const secret(text);
    return secret.IsValid() && hash.size() < crypto_pwhash_STRBYTES && sodium_init() >= 0
        && crypto_pwhash_str_verify(hash.c_str(), secret.Text().data(), secret.Text().size()) == 0;
}
