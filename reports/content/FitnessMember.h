#pragma once

#include "platform/db/Status.h"
#include "store/EFOleDateTime.h"

#include <cstdint>
#include <optional>
#include <string>

/// Whom a fitness report is about.
struct CFitnessMember
{
    std::int32_t m_lMemberID = 0;
    std::string m_strName; ///< "Doe, Jo D"
    std::optional<bool> m_isMale; ///< empty without a profile
    CEFOleDateTime m_dtBirthday;

    /// Whole years on a day; empty when the birthday is none, lies after it or more than 120 years
    /// before.
    std::optional<int> AgeOn(CEFOleDateTime const& day) const;
    std::string SexText() const; ///< empty when it is not known
};

/// Reads who it is; "gone" when there is no such member.
CDbStatus ReadFitnessMember(std::int32_t memberID, CFitnessMember& member);
