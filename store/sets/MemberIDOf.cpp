#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOEval.h"
#include "store/sets/DAOMem.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/DAOWk.h"

namespace
{

template <typename Set>
Set const* As(CDAOEFSet const& set)
{
    return set.IsKindOf(Set::GetThisClass()) ? static_cast<Set const*>(&set) : nullptr;
}

} // namespace

std::int32_t MemberIDOf(CDAOEFSet const& set)
{
    if (auto const* const members = As<CDAOSmMem>(set)) {
        return members->m_MemberID;
    }
    if (auto const* const members = As<CDAOMem>(set)) {
        return members->m_MemberID;
    }
    if (auto const* const workouts = As<CDAOWk>(set)) {
        return workouts->m_lMemberID;
    }
    if (auto const* const evaluations = As<CDAOSmEval>(set)) {
        return evaluations->m_lMemberID;
    }
    if (auto const* const evaluations = As<CDAOEval>(set)) {
        return evaluations->m_lMemberID;
    }
    if (auto const* const bodyComps = As<CDAOBodyComp>(set)) {
        return bodyComps->m_lMemberID;
    }
    return 0;
}
