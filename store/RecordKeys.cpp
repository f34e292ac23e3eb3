#include "store/RecordKeys.h"

CRecordKeys::Found CRecordKeys::Add(std::int32_t member, std::int64_t time, std::uint32_t checkSum)
{
    if ((m_count + 1) * 4 > m_slots.size() * 3) {
        Grow();
    }
    auto found = Found::none;
    auto place = FirstPlace(member, time);
    for (; m_slots[place].member != 0; place = NextPlace(place)) {
        auto const& slot = m_slots[place];
        if (slot.member == member && slot.time == time) {
            if (slot.checkSum == checkSum) {
                return Found::same;
            }
            found = Found::different;
        }
    }
    m_slots[place] = {time, member, checkSum};
    ++m_count;
    return found;
}

bool CRecordKeys::Has(std::int32_t member, std::int64_t time) const
{
    if (m_count == 0) {
        return false;
    }
    auto place = FirstPlace(member, time);
    while (m_slots[place].member != 0
        && (m_slots[place].member != member || m_slots[place].time != time)) {
        place = NextPlace(place);
    }
    return m_slots[place].member != 0;
}

/// Where the search for a record begins; it is there or in the slots behind it, up to a free one.
std::size_t CRecordKeys::FirstPlace(std::int32_t member, std::int64_t time) const
{
    auto hash = static_cast<std::uint64_t>(time) * 0x9E3779B97F4A7C15U;
    hash ^= static_cast<std::uint64_t>(member) * 0xC2B2AE3D27D4EB4FU;
    hash ^= hash >> 29U;
    return static_cast<std::size_t>(hash) & (m_slots.size() - 1);
}

void CRecordKeys::Grow()
{
    std::vector<Slot> slots(m_slots.empty() ? 1024 : m_slots.size() * 2);
    slots.swap(m_slots);
    for (auto const& slot : slots) {
        if (slot.member != 0) {
            auto place = FirstPlace(slot.member, slot.time);
            while (m_slots[place].member != 0) {
                place = NextPlace(place);
            }
            m_slots[place] = slot;
        }
    }
}
