#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// The row keys of a selection, in its order. Kept in chunks, so that growing never copies and ten
/// million rows cost 80 MB without a peak; the first few, which are all of most selections, cost no
/// memory of their own.
class CKeyset
{
public:
    void Add(std::int64_t key)
    {
        if (m_count < kFew) {
            m_few[m_count++] = key;
            return;
        }
        auto const place = m_count++ - kFew;
        if (place == m_chunks.size() * kChunk) {
            m_chunks.push_back(std::make_unique_for_overwrite<Chunk>());
        }
        (*m_chunks.back())[place % kChunk] = key;
    }

    void Clear()
    {
        m_chunks.clear();
        m_count = 0;
    }

    std::size_t Size() const { return m_count; }

    std::int64_t operator[](std::size_t position) const
    {
        assert(position < m_count);
        if (position < kFew) {
            return m_few[position];
        }
        auto const place = position - kFew;
        return (*m_chunks[place / kChunk])[place % kChunk];
    }

private:
    static constexpr std::size_t kFew = 16;
    static constexpr std::size_t kChunk = 65536;
    using Chunk = std::array<std::int64_t, kChunk>;

    std::array<std::int64_t, kFew> m_few = {};
    std::vector<std::unique_ptr<Chunk>> m_chunks;
    std::size_t m_count = 0;
};
