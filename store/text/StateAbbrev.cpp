#include "store/text/StateAbbrev.h"

#include <array>
#include <strings.h>

namespace
{

constexpr std::array kStates = {"AK", "AL", "AR", "AZ", "CA", "CO", "CT", "DC", "DE", "FL", "GA",
    "HI", "IA", "ID", "IL", "IN", "KS", "KY", "LA", "MA", "MD", "ME", "MI", "MN", "MO", "MS", "MT",
    "NC", "ND", "NE", "NH", "NJ", "NM", "NV", "NY", "OH", "OK", "OR", "PA", "RI", "SC", "SD", "TN",
    "TX", "UT", "VA", "VT", "WA", "WI", "WV", "WY", "AS", "GU", "MP", "PR", "VI"};

} // namespace

char const* CStateAbbrev::GetStAbbrev(int const& index) const
{
    return index >= 0 && index < Count() ? kStates[static_cast<std::size_t>(index)] : "";
}

int CStateAbbrev::FindStAbbrev(std::string_view text) const
{
    for (int i = 0; i < Count(); ++i) {
        if (text.size() == 2 && ::strncasecmp(GetStAbbrev(i), text.data(), 2) == 0) {
            return i;
        }
    }
    return -1;
}

int CStateAbbrev::Count() const
{
    return static_cast<int>(kStates.size());
}
