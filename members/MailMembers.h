#pragma once

#include "store/sets/DAOMem.h"

#include <cstdint>

/// The members of a selection in its order, for those who write to them. They are read as they are
/// stored now, beside the cursor of the set that found them.
class CMailMembers
{
public:
    /// Counts the rows of the set; it must outlive this.
    explicit CMailMembers(CDAOMem& found);

    std::int32_t Count() const { return m_nCount; } ///< deleted ones included
    /// The member at a place, 0 and up, until the next call. Null when there is no such place, or
    /// somebody deleted the member meanwhile, or IsRead() is false.
    CDAOMem const* At(std::int32_t place);
    /// The first place from this one on that has a member; Count() when there is none.
    std::int32_t FirstFrom(std::int32_t place);
    /// False once members could not be read: the set's status tells why. Then none is read any
    /// more.
    bool IsRead() const { return m_bRead; }

private:
    bool ReadBlock(std::int32_t from);

    CDAOMem& m_found;
    std::int32_t const m_nCount;
    CDAOMem m_row;
    CRowBlock m_block;
    std::int32_t m_nBlockFirst = 0;
    std::int32_t m_nBlockEnd = 0;
    bool m_bRead = true;
};

// The lines of an address, as labels and letters have them.

std::string MailName(CDAOMem const& member); ///< first and last name
/// City, state and zip; empty unless the member has all three.
std::string MailPlace(CDAOMem const& member);
