#pragma once

#include "platform/db/Value.h"
#include "store/EFOleDateTime.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// The criteria of a member search. A member is found who meets all of them; without any, every
/// member is. Texts are met by what begins with them, state and category by what equals them, all
/// ignoring case. Setting a criterion again replaces its values.
class CMemberSearchData
{
public:
    enum search : std::uint32_t
    {
        sMedicalHistory = 0x1, ///< has every condition of a mask
        sGoals = 0x2, ///< has every goal of a mask
        sSex = 0x4, ///< 1 = male, 0 = female
        sAge = 0x8, ///< whole years from and to, both included
        sEmployee = 0x10,
        sRelease = 0x20,
        sPhysician = 0x40,
        sEmail = 0x80,
        sPhone = 0x100,
        sZip = 0x200,
        sState = 0x400,
        sCity = 0x800,
        sAddress = 0x1000,
        sStatus = 0x2000, ///< 1 = current, 0 = past
        sLastName = 0x4000,
        sFirstName = 0x8000,
        sWorkoutNumber = 0x10000,
        sIncentive = 0x20000,
        sPeriod = 0x40000,
        sExpireDate = 0x80000, ///< from and to, both days included
        sEnrollDate = 0x100000, ///< from and to, both days included
        sMemberID = 0x200000,
        sClass = 0x400000, ///< category, course, section; an empty course or section means any
    };

    void SetSearchCriteria(search criterion, std::int32_t number);
    void SetSearchCriteria(search criterion, std::uint8_t value);
    void SetSearchCriteria(search criterion, int from, int to);
    void SetSearchCriteria(search criterion, CEFOleDateTime const& from, CEFOleDateTime const& to);
    void SetSearchCriteria(
        search criterion, char const* first, char const* second, char const* third);

    bool Has(search criterion) const { return m_criteria.contains(criterion); }
    /// Whether an index leads to the members, which are few then as a rule.
    bool UsesIndex() const
    {
        return Has(sMemberID) || Has(sWorkoutNumber) || Has(sLastName) || Has(sClass);
    }

    /// Which rows a clause selects from: members, or of each member's classes the first one that
    /// meets the class criterion.
    enum class Over
    {
        members,
        classes
    };
    /// The criteria as the rest of a SELECT, in name order, and the values of its question marks.
    std::string Clause(Over over, std::vector<DbValue>& values) const;

private:
    struct Criterion
    {
        std::array<std::int64_t, 2> numbers = {};
        std::array<std::string, 3> texts;
        std::array<CEFOleDateTime, 2> dates;
    };

    Criterion& Set(search criterion);

    std::map<search, Criterion> m_criteria;
};
