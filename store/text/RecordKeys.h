#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// A set of records by member and time: 16 bytes each, three quarters of the memory in use at most.
class CRecordKeys
{
public:
    enum class Found
    {
        none,
        same,
        different ///< only others of the same member and time
    };

    /// Notes a record unless it is there, and tells what was noted of that member and time before.
    /// Two with the same check sum count as the same.
    Found Add(std::int32_t member, std::int64_t time, std::uint32_t checkSum);
    bool Has(std::int32_t member, std::int64_t time) const;
    std::size_t Size() const { return m_count; }

private:
    struct Slot
    {
        std::int64_t time = 0;
        std::int32_t member = 0; ///< 0 in a free one
        std::uint32_t checkSum = 0;

        bool operator==(Slot const&) const = default;
    };

    std::size_t FirstPlace(std::int32_t member, std::int64_t time, std::uint32_t checkSum) const;
    std::size_t NextPlace(std::size_t place) const { return (place + 1) & (m_slots.size() - 1); }
    std::size_t PlaceOf(std::int32_t member, std::int64_t time) const;
    Found Put(Slot const& record);
    void Grow();

    std::vector<Slot> m_slots;
    std::size_t m_count = 0;
};
