#include "store/sets/KeyPlaces.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>

namespace
{

constexpr std::uint64_t kClose = 4; // numbers of which one is a key, on average

} // namespace

CKeyPlaces::CKeyPlaces(CKeyset const& keys)
    : m_nFirst(std::numeric_limits<std::int64_t>::max())
{
    auto last = std::numeric_limits<std::int64_t>::min();
    for (std::size_t i = 0; i < keys.Size(); ++i) {
        m_nFirst = std::min(m_nFirst, keys[i]);
        last = std::max(last, keys[i]);
    }
    auto const width = static_cast<std::uint64_t>(last) - static_cast<std::uint64_t>(m_nFirst);
    bool const isClose = width / kClose < keys.Size();
    if (isClose) {
        m_close.assign(width + 1, -1);
    }
    for (std::size_t i = 0; i < keys.Size(); ++i) {
        auto const place = static_cast<std::int32_t>(i);
        if (isClose) {
            m_close[static_cast<std::size_t>(keys[i] - m_nFirst)] = place;
        } else {
            m_sparse.emplace_back(keys[i], place);
        }
    }
    std::ranges::sort(m_sparse);
}

std::int32_t CKeyPlaces::Of(std::int64_t key) const
{
    if (m_sparse.empty()) {
        auto const at = static_cast<std::uint64_t>(key) - static_cast<std::uint64_t>(m_nFirst);
        return at < m_close.size() ? m_close[at] : -1;
    }
    auto const found = std::ranges::lower_bound(m_sparse, std::pair(key, std::int32_t(0)));
    return found != m_sparse.end() && found->first == key ? found->second : -1;
}

std::vector<std::int32_t> CKeyPlaces::ByKey() const
{
    std::vector<std::int32_t> places;
    std::ranges::copy_if(
        m_close, std::back_inserter(places), [](std::int32_t place) { return place >= 0; });
    for (auto const& [key, place] : m_sparse) {
        places.push_back(place);
    }
    return places;
}
