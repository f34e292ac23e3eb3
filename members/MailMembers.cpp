#include "members/MailMembers.h"

#include <algorithm>
#include <numeric>
#include <vector>

CMailMembers::CMailMembers(CDAOMem& found)
    : m_found(found)
    , m_nCount(found.CountSet())
{
}

CDAOMem const* CMailMembers::At(std::int32_t place)
{
    bool const isInBlock = place >= m_nBlockFirst && place < m_nBlockEnd;
    if (place < 0 || place >= m_nCount || !(isInBlock || ReadBlock(place))) {
        return nullptr;
    }
    auto const index = static_cast<std::size_t>(place - m_nBlockFirst);
    if (!m_block.IsPresent(index)) {
        return nullptr;
    }
    m_row.ShowFields(m_block.Row(index));
    return &m_row;
}

std::int32_t CMailMembers::FirstFrom(std::int32_t place)
{
    while (place < m_nCount && m_bRead && At(place) == nullptr) {
        ++place;
    }
    return m_bRead ? place : m_nCount;
}

bool CMailMembers::ReadBlock(std::int32_t from)
{
    auto const size
        = std::min<std::size_t>(CDatabase::kBlockRows, static_cast<std::size_t>(m_nCount - from));
    std::vector<std::int32_t> places(size);
    std::iota(places.begin(), places.end(), from);
    m_bRead = m_bRead && m_found.ReadPlaces(places, m_found, m_block);
    m_nBlockFirst = from;
    m_nBlockEnd = m_bRead ? from + static_cast<std::int32_t>(size) : from;
    return m_bRead;
}

std::string MailName(CDAOMem const& member)
{
    return member.m_FirstName + ' ' + member.m_LastName;
}

std::string MailPlace(CDAOMem const& member)
{
    if (member.m_City.empty() || member.m_State.empty() || member.m_Zip.empty()) {
        return {};
    }
    return member.m_City + ", " + member.m_State + "  " + member.m_Zip;
}
