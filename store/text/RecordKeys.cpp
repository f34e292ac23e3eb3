#include "store/text/RecordKeys.h"

CRecordKeys::Found CRecordKeys::Add(std::int32_t member, std::int64_t time, std::uint32_t checkSum)
{
    if ((m_count + 1) * 4 > m_slots.size() * 3) {
        Grow();
    }
    auto const found = Put({time, member, checkSum});
    m_count += found == Found::same ? 0 : 1;
    return found;
}

bool CRecordKeys::Has(std::int32_t member, std::int64_t time) const
{
    return m_count > 0 && m_slots[PlaceOf(member, time)].member != 0;
}

/// The first record of a member and time stands where they lead, and the others where their check
/// sums lead as well: thousands of one moment would make one another's search long.
CRecordKeys::Found CRecordKeys::Put(Slot const& record)
{
    auto place = PlaceOf(record.member, record.time);
    auto const found = m_slots[place].member == 0 ? Found::none : Found::different;
    if (found == Found::different && m_slots[place].checkSum != record.checkSum) {
        place = FirstPlace(record.member, record.time, record.checkSum);
        while (m_slots[place].member != 0 && m_slots[place] != record) {
            place = NextPlace(place);
        }
    }
    if (m_slots[place].member != 0) {
        return Found::same;
    }
    m_slots[place] = record;
    return found;
}

/// The place of the first record of a member and time, or the free one where it would stand.
std::size_t CRecordKeys::PlaceOf(std::int32_t member, std::int64_t time) const
{
    auto place = FirstPlace(member, time, 0);
    while (m_slots[place].member != 0
        && (m_slots[place].member != member || m_slots[place].time != time)) {
        place = NextPlace(place);
    }
    return place;
}

/// Where the search for a record begins; it is there or in the slots behind it, up to a free one.
std::size_t CRecordKeys::FirstPlace(
    std::int32_t member, std::int64_t time, std::uint32_t checkSum) const
{
    auto hash = static_cast<std::uint64_t>(time) * 0x9E3779B97F4A7C15U;
    hash ^= static_cast<std::uint64_t>(member) * 0xC2B2AE3D27D4EB4FU;
    hash ^= static_cast<std::uint64_t>(checkSum) * 0x9E3779B185EBCA87U;
    hash ^= hash >> 29U;
    return static_cast<std::size_t>(hash) & (m_slots.size() - 1);
}

void CRecordKeys::Grow()
{
    std::vector<Slot> slots(m_slots.empty() ? 1024 : m_slots.size() * 2);
    slots.swap(m_slots);
    for (auto const& slot : slots) {
        if (slot.member != 0) {
            Put(slot);
        }
    }
}
