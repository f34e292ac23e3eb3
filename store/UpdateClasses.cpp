#include "store/MemberChange.h"
#include "store/MemberServices.h"

#include <algorithm>
#include <vector>

namespace
{

/// Beyond our own indexes other programs may have given theirs.
bool IsClassIndex(std::uint8_t index)
{
    return index >= 1 && (index <= CDAOCls::kLargestIndex || index > CDAOCls::kAllClasses);
}

/// A class as it stands in the table.
struct StoredClass
{
    CClassSlot slot;
    bool taken = false; ///< a slot carries its index on
};

/// A class as it is to be stored.
struct GivenClass
{
    CClassSlot slot;
    bool settled = false; ///< which index it carries
};

CClassSlot SlotOf(CDAOCls const& row)
{
    return {row.m_Category, row.m_Course, row.m_Section, row.m_GradeStat, row.m_Orient != 0,
        row.m_ReEval, row.m_Other, row.m_ClassIndex};
}

std::vector<StoredClass> ReadClasses(CDAOCls& set, std::int32_t memberID)
{
    std::vector<StoredClass> classes;
    int const count = set.FindClasses(memberID);
    for (int i = 0; i < count; ++i) {
        classes.push_back({SlotOf(set), false});
        set.Op(CDAOEFSet::opMoveNext);
    }
    return classes;
}

bool IsSameClass(CClassSlot const& a, CClassSlot const& b)
{
    return a.category == b.category && a.course == b.course && a.section == b.section;
}

bool IsHeld(std::vector<GivenClass> const& given, std::uint8_t index)
{
    return std::any_of(given.begin(), given.end(),
        [&](GivenClass const& one) { return one.settled && one.slot.classIndex == index; });
}

/// The first free index that no slot of this save holds either; 0 when there is none.
std::uint8_t FreshIndex(std::int32_t memberID, std::vector<GivenClass> const& given)
{
    CDAOCls set;
    std::uint8_t seed = 1;
    for (unsigned tries = 0; tries < CDAOCls::kLargestIndex; ++tries) {
        auto const index = set.GenerateIndex(memberID, seed);
        if (index == 0 || !IsHeld(given, index)) {
            return index;
        }
        seed = static_cast<std::uint8_t>(index % CDAOCls::kLargestIndex + 1);
    }
    return 0;
}

/// Settles the slots that know their index; returns those that name one which an earlier slot has.
/// A class given back as it was read keeps even an index that is none.
std::vector<GivenClass*> SettleKnown(
    std::vector<GivenClass>& given, std::vector<StoredClass> const& stored)
{
    std::vector<GivenClass*> twice;
    for (std::size_t i = 0; i < given.size(); ++i) {
        auto& one = given[i];
        if (IsClassIndex(one.slot.classIndex)) {
            one.settled = !IsHeld(given, one.slot.classIndex);
            if (!one.settled) {
                twice.push_back(&one);
            }
        } else {
            one.settled = i < stored.size() && one.slot == stored[i].slot;
        }
    }
    return twice;
}

/// Settles a slot on the index of the first suitable row that no slot has taken.
template <typename Suits>
void TakeIndex(GivenClass& one, std::vector<GivenClass> const& given,
    std::vector<StoredClass>& stored, Suits const& suits)
{
    auto const found = std::find_if(stored.begin(), stored.end(), [&](StoredClass const& row) {
        return !row.taken && IsClassIndex(row.slot.classIndex)
            && !IsHeld(given, row.slot.classIndex) && suits(row);
    });
    if (!one.settled && found != stored.end()) {
        found->taken = true;
        one.slot.classIndex = found->slot.classIndex;
        one.settled = true;
    }
}

bool TakeFreshIndex(std::int32_t memberID, GivenClass& one, std::vector<GivenClass> const& given)
{
    if (!one.settled) {
        one.slot.classIndex = FreshIndex(memberID, given);
        one.settled = one.slot.classIndex != 0;
    }
    return one.settled;
}

/// Settles which index each slot carries on; false when there is none left.
bool GiveIndexes(
    std::int32_t memberID, std::vector<GivenClass>& given, std::vector<StoredClass>& stored)
{
    // Slots that know their index come first: nobody else may take it.
    for (auto* const one : SettleKnown(given, stored)) {
        if (!TakeFreshIndex(memberID, *one, given)) {
            return false;
        }
    }
    for (auto& one : given) {
        TakeIndex(one, given, stored,
            [&](StoredClass const& row) { return IsSameClass(row.slot, one.slot); });
    }
    return std::all_of(given.begin(), given.end(), [&](GivenClass& one) {
        TakeIndex(one, given, stored, [](StoredClass const&) { return true; });
        return TakeFreshIndex(memberID, one, given);
    });
}

/// Sets the fields that a slot has otherwise.
void SetFields(CDAOCls& row, CClassSlot const& slot)
{
    row.m_ClassIndex = slot.classIndex;
    row.m_Category = slot.category;
    row.m_Course = slot.course;
    row.m_Section = slot.section;
    row.m_GradeStat = slot.gradeStat;
    if ((row.m_Orient != 0) != slot.orientBonus) {
        row.m_Orient = slot.orientBonus ? 1 : 0;
    }
    row.m_ReEval = static_cast<std::int16_t>(slot.reEvalBonuses);
    row.m_Other = static_cast<std::int16_t>(slot.otherBonuses);
}

/// Stores the classes in the order of their slots. Rows that stay in their places are changed
/// there, in nothing but what differs: what another program put into them is kept. From the first
/// row on that does not stay, all are stored anew.
bool StoreClasses(CDAOCls& set, std::int32_t memberID, std::vector<GivenClass> const& given)
{
    std::size_t stay = 0;
    bool stored = true;
    int const count = set.CountSet();
    for (int i = 0; i < count; ++i) {
        bool const stays = stay == static_cast<std::size_t>(i) && stay < given.size()
            && set.m_ClassIndex == given[stay].slot.classIndex;
        if (!stays) {
            stored = stored && set.DelCurrent();
        } else if (SlotOf(set) != given[stay++].slot) {
            stored = stored && set.Op(CDAOEFSet::opEdit);
            SetFields(set, given[stay - 1].slot);
            stored = stored && set.Op(CDAOEFSet::opUpdate);
        }
        set.Op(CDAOEFSet::opMoveNext);
    }
    for (; stored && stay < given.size(); ++stay) {
        stored = set.Op(CDAOEFSet::opAddNew);
        set.m_MemberID = memberID;
        SetFields(set, given[stay].slot);
        stored = stored && set.Op(CDAOEFSet::opUpdate);
    }
    return stored;
}

} // namespace

bool UpdateClasses(std::int32_t memberID, CClassSlot const& slot1, CClassSlot const& slot2,
    CClassSlot const& slot3)
{
    std::vector<GivenClass> given;
    for (auto const* slot : {&slot1, &slot2, &slot3}) {
        if (!slot->IsEmpty()) {
            given.push_back({*slot, false});
        }
    }
    CMemberChange change;
    if (!change.IsOK()) {
        return false; // record sets would write without the transaction
    }
    CDAOCls set;
    auto stored = ReadClasses(set, memberID);
    change.Require(set.LastStatus() && GiveIndexes(memberID, given, stored));
    for (auto const& row : stored) {
        if (!IsHeld(given, row.slot.classIndex)) {
            change.Require(UpdateClassIndex(memberID, row.slot.classIndex, CDAOCls::kUnknown));
        }
    }
    change.Require(StoreClasses(set, memberID, given));
    return change.Commit();
}
