#include "store/services/MemberChange.h"
#include "store/services/MemberServices.h"

#include <algorithm>
#include <optional>
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
    bool kept = false; ///< by a slot, which stores its class in this row
};

/// A class as it is to be stored.
struct GivenClass
{
    CClassSlot slot;
    bool settled = false; ///< which index it carries
    std::optional<std::size_t> row = {}; ///< place of the stored one that it keeps, unless new
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
        classes.push_back({SlotOf(set)});
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

/// Keeps the first suitable row that no slot keeps; false when there is none.
template <typename Suits>
bool KeepRow(GivenClass& one, std::vector<StoredClass>& stored, Suits const& suits)
{
    auto const found = std::find_if(stored.begin(), stored.end(),
        [&](StoredClass const& row) { return !row.kept && suits(row.slot); });
    if (found == stored.end()) {
        return false;
    }
    found->kept = true;
    one.row = static_cast<std::size_t>(found - stored.begin());
    return true;
}

/// Settles the slots that know their index, unless an earlier one has it.
void SettleKnown(std::vector<GivenClass>& given, std::vector<StoredClass>& stored)
{
    for (std::size_t i = 0; i < given.size(); ++i) {
        auto& one = given[i];
        auto const hasIndex
            = [&](CClassSlot const& row) { return row.classIndex == one.slot.classIndex; };
        if (IsClassIndex(one.slot.classIndex)) {
            one.settled = !IsHeld(given, one.slot.classIndex);
            // Other programs may have given two classes one index: the names tell which it is.
            if (one.settled && !KeepRow(one, stored, [&](CClassSlot const& row) {
                    return hasIndex(row) && IsSameClass(row, one.slot);
                })) {
                KeepRow(one, stored, hasIndex);
            }
        } else if (i < stored.size() && one.slot == stored[i].slot) {
            // Given back as it was read: even an index that is none stays.
            one.settled = KeepRow(
                one, stored, [&](CClassSlot const& row) { return &row == &stored[i].slot; });
        }
    }
}

/// Settles slots without an index on those of stored classes: of the same names first, then of
/// those left over. One whose names are stored takes no other class's.
void TakeIndexes(std::vector<GivenClass>& given, std::vector<StoredClass>& stored)
{
    auto const isFree = [&](CClassSlot const& row) {
        return IsClassIndex(row.classIndex) && !IsHeld(given, row.classIndex);
    };
    auto const take = [&](GivenClass& one) {
        auto const& row = stored[*one.row].slot;
        if (!IsClassIndex(one.slot.classIndex) && isFree(row)) {
            one.slot.classIndex = row.classIndex;
            one.settled = true;
        }
    };
    auto const hasNamesOf = [](GivenClass const& one) {
        return [&one](CClassSlot const& row) { return IsSameClass(row, one.slot); };
    };
    for (auto& one : given) {
        if (!one.settled && KeepRow(one, stored, hasNamesOf(one))) {
            take(one);
        }
    }
    for (auto& one : given) {
        if (!one.settled && !IsClassIndex(one.slot.classIndex)
            && std::ranges::none_of(stored, hasNamesOf(one), &StoredClass::slot)
            && KeepRow(one, stored, isFree)) {
            take(one);
        }
    }
}

/// Settles which index each slot carries on, and which row it keeps; false when no index is left.
bool GiveIndexes(
    std::int32_t memberID, std::vector<GivenClass>& given, std::vector<StoredClass>& stored)
{
    SettleKnown(given, stored); // comes first: nobody else may take what a slot knows
    TakeIndexes(given, stored);
    return std::all_of(given.begin(), given.end(), [&](GivenClass& one) {
        if (!one.settled) {
            one.slot.classIndex = FreshIndex(memberID, given);
            one.settled = one.slot.classIndex != 0;
        }
        return one.settled;
    });
}

/// The slot that keeps a stored class; null when none does.
GivenClass const* KeeperOf(std::vector<GivenClass> const& given, std::size_t row)
{
    auto const found = std::find_if(
        given.begin(), given.end(), [&](GivenClass const& one) { return one.row == row; });
    return found == given.end() ? nullptr : &*found;
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

/// Moves the records of the stored classes whose index no slot carries on: with their class when a
/// slot keeps it, else to index 99, where those of deleted classes are already.
bool MoveRecords(std::int32_t memberID, std::vector<GivenClass> const& given,
    std::vector<StoredClass> const& stored)
{
    bool moved = true;
    for (std::size_t row = 0; row < stored.size(); ++row) {
        auto const index = stored[row].slot.classIndex;
        auto const* const keeper = KeeperOf(given, row);
        if (index != CDAOCls::kUnknown && !IsHeld(given, index)) {
            moved = moved
                && UpdateClassIndex(memberID, index,
                    keeper == nullptr ? CDAOCls::kUnknown : keeper->slot.classIndex);
        }
    }
    return moved;
}

bool AddClass(CDAOCls& set, std::int32_t memberID, CClassSlot const& slot)
{
    bool const begun = set.Op(CDAOEFSet::opAddNew);
    set.m_MemberID = memberID;
    SetFields(set, slot);
    return begun && set.Op(CDAOEFSet::opUpdate);
}

/// Changes a stored class in what differs: what another program put into the rest of it is kept.
bool ChangeClass(CDAOCls& set, CClassSlot const& slot)
{
    if (SlotOf(set) == slot) {
        return true;
    }
    bool const begun = set.Op(CDAOEFSet::opEdit);
    SetFields(set, slot);
    return begun && set.Op(CDAOEFSet::opUpdate);
}

/// Stores the classes in the order of their slots. Rows in their order stay in their places; from
/// the first slot on that has none, all come behind the others.
bool StoreClasses(CDAOCls& set, std::int32_t memberID, std::vector<GivenClass> const& given)
{
    bool stored = true;
    int const count = set.CountSet();
    for (int row = 0; row < count; ++row) {
        auto const* const keeper = KeeperOf(given, static_cast<std::size_t>(row));
        stored = stored && (keeper == nullptr ? set.DelCurrent() : ChangeClass(set, keeper->slot));
        set.Op(CDAOEFSet::opMoveNext);
    }
    auto one = given.begin();
    for (std::optional<std::size_t> last; one != given.end() && one->row > last; ++one) {
        last = one->row;
    }
    for (; stored && one != given.end(); ++one) {
        stored = one->row ? set.MoveSet(static_cast<std::int32_t>(*one->row)) && set.MoveToEnd()
                          : AddClass(set, memberID, one->slot);
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
            given.push_back({*slot});
        }
    }
    if (!std::ranges::all_of(given, &CClassSlot::CanBeStored, &GivenClass::slot)) {
        return false;
    }
    CMemberChange change;
    if (!change.IsOK()) {
        return false; // record sets would write without the transaction
    }
    CDAOCls set;
    auto stored = ReadClasses(set, memberID);
    change.Require(set.LastStatus() && GiveIndexes(memberID, given, stored)
        && MoveRecords(memberID, given, stored) && StoreClasses(set, memberID, given));
    return change.Commit();
}
