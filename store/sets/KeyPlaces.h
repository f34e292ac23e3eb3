#pragma once

#include "platform/db/Keyset.h"

#include <cstdint>
#include <utility>
#include <vector>

/// Where the rows of keys are in a selection. Made in one pass where the keys lie close together,
/// as they do unless a search has left few of many rows, and by sorting otherwise; takes at most
/// 16 bytes a row.
class CKeyPlaces
{
public:
    explicit CKeyPlaces(CKeyset const& keys);

    /// The place of a key, -1 when it is not in the selection.
    std::int32_t Of(std::int64_t key) const;
    /// All places, by ascending key.
    std::vector<std::int32_t> ByKey() const;

private:
    std::int64_t m_nFirst = 0; ///< the smallest key
    std::vector<std::int32_t> m_close; ///< the place of each key from there on, -1 for no row
    std::vector<std::pair<std::int64_t, std::int32_t>> m_sparse; ///< sorted; used if that is empty
};
