#pragma once

#include <string_view>

/// The state abbreviations of member addresses: the fifty states and DC in the order of their
/// abbreviations, then the territories. The order never changes: records keep the place.
class CStateAbbrev
{
public:
    virtual ~CStateAbbrev() = default;

    /// The abbreviation at a place from 0 on; empty text outside the table.
    char const* GetStAbbrev(int const& index) const;
    /// The place of an abbreviation, ignoring case; -1 when it is none.
    int FindStAbbrev(std::string_view text) const;
    int Count() const;
};
