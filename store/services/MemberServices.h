#pragma once

#include "store/sets/DAOCls.h"
#include "store/sets/DAODef.h"
#include "store/sets/DAOEnr.h"
#include "store/sets/DAOMsg.h"
#include "store/sets/DAOProf.h"
#include "store/sets/DAOSmMem.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

// What changes several of a member's tables at once. Each service opens what it needs by itself and
// is one transaction: it happens whole or not at all. Called inside a transaction it is a part of
// that one.

/// One of the three class slots of a member; without category, course and section it stands for no
/// class.
struct CClassSlot
{
    std::string category;
    std::string course;
    std::string section;
    std::uint8_t gradeStat = CDAODef::gsNone; ///< a CDAODef::gradestat, or what else is stored
    bool orientBonus = false;
    int reEvalBonuses = 0;
    int otherBonuses = 0;
    /// The index that the slot's records carry; 0 when the slot does not know.
    std::uint8_t classIndex = 0;

    /// Bonuses have 16 bits in their columns.
    bool CanBeStored() const
    {
        return std::in_range<std::int16_t>(reEvalBonuses)
            && std::in_range<std::int16_t>(otherBonuses);
    }
    bool IsEmpty() const { return category.empty() && course.empty() && section.empty(); }
    bool operator==(CClassSlot const&) const = default;
};

/// A slot without a class, with the centre's defaults and the index that a class in it would have.
CClassSlot EmptySlot(CDAODef const& defaults, std::uint8_t classIndex);

/// True when a member has that member ID or workout number.
bool IsMember(std::int32_t number, CDAOSmMem::id kind);

/// Sets the fields of five record sets to those of a new member: current, male, born and enrolled
/// today for one month, class values from the centre's defaults. False, with nothing set, when the
/// defaults cannot be read.
bool ResetMember(CDAOSmMem& members, CDAOEnr& enrollments, CDAOProf& profiles, CDAOCls& classes,
    CDAOMsg& messages);

/// Rewrites a member's classes from the slots, in their order. A slot keeps the index it gives, the
/// first one where several give the same. One that gives none (0, 99, 100 or 101) keeps that of the
/// stored class of its names or, with names that are not stored, that of the next class that no
/// slot took; else it gets a free one. A class given back in its place as it was read keeps even an
/// index that is none. Records of a stored class that no slot holds any more move to index 99. A
/// class is changed in what differs alone, wherever it moves: what another program put there is
/// kept. False when it could not be stored; before anything is begun, when a number of bonuses
/// does not fit.
bool UpdateClasses(std::int32_t memberID, CClassSlot const& slot1, CClassSlot const& slot2,
    CClassSlot const& slot3);

/// Replaces the class of that index. Its workouts, evaluations and body compositions stay with the
/// new class (transfer), or are deleted. False when the member has no such class or it could not be
/// stored; before anything is begun, when a number of bonuses does not fit.
bool ReplaceClass(
    std::int32_t memberID, std::uint8_t classIndex, CClassSlot const& replacement, bool transfer);

/// Rewrites a member's enrolment and status. False when there is no such member or it could not be
/// stored.
bool UpdateEnrollment(std::int32_t const& memberID, CEFOleDateTime const& enrollDate,
    CEFOleDateTime const& expireDate, std::uint8_t const& period, std::uint8_t const& incentive,
    std::uint8_t const& status);

/// Whether a membership is current and has not expired: its last day still counts.
bool IsUnexpired(std::uint8_t status, CEFOleDateTime expireDate);

/// Moves the workouts, evaluations and body compositions of a member from one class index to
/// another. False when it could not be stored.
bool UpdateClassIndex(std::int32_t memberID, std::uint8_t oldIndex, std::uint8_t newIndex);

/// Deletes the workouts, evaluations and body compositions of a member that carry a class index.
/// False when it could not be stored.
bool DeleteClassData(std::int32_t memberID, std::uint8_t classIndex);

/// Deletes the member's class of these names, with its workouts, evaluations and body compositions;
/// without them they move to index 99. "gone" when the member has no such class (any more).
CDbStatus DeleteClass(std::int32_t memberID, std::string_view category, std::string_view course,
    std::string_view section, bool withRecords);

/// True when the centre's catalogue has the class; an empty course or section is not looked for.
bool IsCurrentClass(
    std::string const& category, std::string const& course, std::string const& section);

enum CORVAPI_RETURN
{
    apiSuccess = 0,
    apiNoMember = 1,
    apiStoreError = 2
};

/// Stores the message that the member sees at the next check-in; null stands for an empty one, and
/// more than CDAOMsg::kLongestMessage characters are a store error. One that is there already, and
/// not empty, is replaced only when asked; leaving it counts as success.
CORVAPI_RETURN corv_apiPostMemberMessage(
    char const* text, std::int32_t memberID, bool replaceExisting);
