#include "platform/db/SqliteFold.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utf8proc.h>

namespace
{

std::string_view TextOf(sqlite3_value* value)
{
    auto const* const bytes = static_cast<char const*>(sqlite3_value_blob(value));
    return {bytes == nullptr ? "" : bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

bool IsPlain(std::string_view text)
{
    return std::all_of(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The case folding of Unicode, composed; a text that is not UTF-8 stays as it is.
std::string Folded(std::string_view text)
{
    std::string folded(text);
    if (IsPlain(text)) {
        std::transform(folded.begin(), folded.end(), folded.begin(), Lower);
        return folded;
    }
    utf8proc_uint8_t* mapped = nullptr;
    auto const length = utf8proc_map(reinterpret_cast<utf8proc_uint8_t const*>(text.data()),
        static_cast<utf8proc_ssize_t>(text.size()), &mapped,
        static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE | UTF8PROC_CASEFOLD));
    std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> const owner(mapped, &std::free);
    if (length >= 0) {
        folded.assign(reinterpret_cast<char const*>(mapped), static_cast<std::size_t>(length));
    }
    return folded;
}

/// The second argument stays the same for all rows of a search: folded once.
std::string const& FoldedPattern(sqlite3_context* context, sqlite3_value* value)
{
    auto* pattern = static_cast<std::string*>(sqlite3_get_auxdata(context, 1));
    if (pattern == nullptr) {
        pattern = new std::string(Folded(TextOf(value)));
        sqlite3_set_auxdata(
            context, 1, pattern, [](void* kept) { delete static_cast<std::string*>(kept); });
        // SQLite may have let it go at once.
        pattern = static_cast<std::string*>(sqlite3_get_auxdata(context, 1));
    }
    static std::string const none;
    return pattern == nullptr ? none : *pattern;
}

bool Meets(std::string_view text, std::string_view pattern, bool whole)
{
    return whole ? text == pattern : text.starts_with(pattern);
}

template <bool Whole>
void Compare(sqlite3_context* context, int /*count*/, sqlite3_value** values)
{
    auto const& pattern = FoldedPattern(context, values[1]);
    auto const text = TextOf(values[0]);
    // Most texts are plain: they are compared where they are.
    bool const met = IsPlain(text)
        ? (Whole ? text.size() == pattern.size() : text.size() >= pattern.size())
            && std::equal(pattern.begin(), pattern.end(), text.begin(),
                [](char folded, char c) { return folded == Lower(c); })
        : Meets(Folded(text), pattern, Whole);
    sqlite3_result_int(context, met ? 1 : 0);
}

} // namespace

int AddFoldFunctions(sqlite3* connection)
{
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
    int code = sqlite3_create_function_v2(
        connection, "begins_folded", 2, kFlags, nullptr, Compare<false>, nullptr, nullptr, nullptr);
    if (code == SQLITE_OK) {
        code = sqlite3_create_function_v2(connection, "equals_folded", 2, kFlags, nullptr,
            Compare<true>, nullptr, nullptr, nullptr);
    }
    return code;
}
