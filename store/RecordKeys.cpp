#include "store/RecordKeys.h"

CRecordKeys::Found CRecordKeys::Add(std::int32_t member, std::int64_t time, std::uint32_t checkSum)
{
    if ((m_count + 1) * 4 > m_slots.size() * 3) {
        Grow();
    }
    auto& slot = m_slots[PlaceOf(member, time)];
    if (slot.member != 0) {
        return slot.checkSum == checkSum ? Found::same : Found::different;
    }
    slot = {time, member, checkSum};
    ++m_count;
    return Found::none;
}

bool CRecordKeys::Has(std::int32_t member, std::int64_t time) const
{
    return m_count > 0 && m_slots[PlaceOf(member, time)].member != 0;
}

/// Where the record is, or the free slot where it belongs.
std::size_t CRecordKeys::PlaceOf(std::int32_t member, std::int64_t time) const
{
    auto hash = static_cast<std::uint64_t>(time) * 0x9E3779B97F4A7C15U;
    hash ^= static_cast<std::uint64_t>(member) * 0xC2B2AE3D27D4EB4FU;
    hash ^= hash >> 29U;
    auto const mask = m_slots.size() - 1;
    auto place = static_cast<std::size_t>(hash) & mask;
    while (m_slots[place].member != 0
        && (m_slots[place].member != member || m_slots[place].time != time)) {
        place = (place + 1) & mask;
    }
    return place;
}

void CRecordKeys::Grow()
{
    std::vector<Slot> slots(m_slots.empty() ? 1024 : m_slots.size() * 2);
    slots.swap(m_slots);
    for (auto const& slot : slots) {
        if (slot.member != 0) {
            m_slots[PlaceOf(slot.member, slot.time)] = slot;
        }
    }
}
