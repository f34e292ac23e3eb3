#include "reports/content/FitnessMember.h"

#include "reports/content/ReportTexts.h"
#include "store/sets/DAOProf.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/SetCloser.h"

std::optional<int> CFitnessMember::AgeOn(CEFOleDateTime const& day) const
{
    constexpr int kOldest = 120;
    auto const& born = m_dtBirthday;
    if (born.IsZero() || !born.ChkStatus() || !day.ChkStatus() || day < born) {
        return std::nullopt;
    }
    bool const before
        = day.Month() < born.Month() || (day.Month() == born.Month() && day.Day() < born.Day());
    int const years = day.Year() - born.Year() - (before ? 1 : 0);
    return years > kOldest ? std::nullopt : std::optional(years);
}

std::string CFitnessMember::SexText() const
{
    return !m_isMale ? "" : *m_isMale ? "Male" : "Female";
}

CDbStatus ReadFitnessMember(std::int32_t memberID, CFitnessMember& member)
{
    CDAOSmMem summary;
    CSetCloser const closeSummary(summary);
    if (summary.FindMember(CDAOSmMem::idMember, memberID) == 0) {
        return summary.LastStatus() ? NoSuchMember() : summary.LastStatus();
    }
    member.m_lMemberID = memberID;
    member.m_strName = NameOf(summary);
    CDAOProf profile;
    CSetCloser const closeProfile(profile);
    if (profile.FindProfile(memberID) != 0) {
        member.m_isMale = profile.m_Sex != 0;
        member.m_dtBirthday = profile.m_Birthday;
    }
    return profile.LastStatus();
}
