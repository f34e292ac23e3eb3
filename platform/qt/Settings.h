#pragma once

#include <QString>

#include <cstdint>

/// The whole number stored for an entry of a section of this user's settings
/// (company "Halvetta", application "Corvana"); the given default when there is
/// none or when what is stored is not a whole number of 32 bits. Section and
/// entry are plain ASCII words.
std::int32_t GetProfileInt(char const* section, char const* entry, std::int32_t defaultValue);

/// Stores a whole number there. Returns whether it has reached the disk; shows
/// nothing when it has not.
bool WriteProfileInt(char const* section, char const* entry, std::int32_t value);

/// The same for texts of one line: the empty text when there is none.
QString GetProfileText(char const* section, char const* entry);
bool WriteProfileText(char const* section, char const* entry, QString const& text);
