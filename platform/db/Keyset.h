#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// The row keys of a selection, in its order. Kept in chunks, so that growing never copies and ten
/// million rows cost 80 MB without a peak.
class CKeyset
{
public:
    void Add(std::int64_t key)
    {
        if (m_count == m_chunks.size() * kChunk) {
            m_chunks.push_back(std::make_unique_for_overwrite<Chunk>());
        }
        (*m_chunks.back())[m_count % kChunk] = key;
        ++m_count;
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
        return (*m_chunks[position / kChunk])[position % kChunk];
    }

private:
    static constexpr std::size_t kChunk = 65536;
    using Chunk = std::array<std::int64_t, kChunk>;

    std::vector<std::unique_ptr<Chunk>> m_chunks;
    std::size_t m_count = 0;
};
