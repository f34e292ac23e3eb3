#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The folder of this user for sockets and locks, made when it is missing:
/// "corvana" in $XDG_RUNTIME_DIR if that is the absolute path of a folder that
/// belongs to this user and that nobody else can write to, otherwise
/// "/tmp/corvana-<uid>". Returns its path without a slash at the end. Returns
/// nothing, and says why in reason, when the folder cannot be made or is not a
/// folder of this user alone (a link, another owner, any access for others):
/// whoever can write there could pose as a companion program.
std::optional<std::string> RuntimeFolder(std::string* reason = nullptr);

/// The path of the file "<name><suffix>" in that folder; nothing when the folder
/// cannot be used or the name is not made of 1 to 64 letters, digits, blanks,
/// '-' and '_' (no accents). Does not make the file.
std::optional<std::string> RuntimeFile(std::string_view name, std::string_view suffix);
