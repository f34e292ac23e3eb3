#pragma once

#include <optional>
#include <string>
#include <string_view>

inline constexpr std::size_t kLeastPasswordCharacters = 8;
inline constexpr std::size_t kMostPasswordBytes = 1024;

/// The Argon2id hash of a password, as a text that names its own parameters. Empty when the text is
/// not UTF-8, too short or too long, or memory is short.
std::optional<std::string> HashPassword(std::string_view password);

/// True when the text is the one that was hashed. A hash that cannot be read refuses every text.
/// Letters that can be written in two ways in UTF-8 are the same letters.
bool VerifyPasswordHash(std::string const& hash, std::string_view text);
