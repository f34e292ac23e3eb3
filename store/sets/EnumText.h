#pragma once

#include <cstddef>
#include <initializer_list>

/// The display text of a number from 0 on; empty when there is none, as for a number that another
/// program stored.
inline char const* TextAt(std::initializer_list<char const*> texts, int number)
{
    return number >= 0 && static_cast<std::size_t>(number) < texts.size() ? texts.begin()[number]
                                                                          : "";
}
