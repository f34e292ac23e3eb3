#include "store/MemberServices.h"

#include "store/DAOCat.h"
#include "store/DAOCour.h"
#include "store/DAOSec.h"
#include "store/Text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace
{

/// The member file, and a transaction on it that is rolled back unless committed.
class CMemberChange
{
public:
    CMemberChange()
        : m_pDatabase(CDatabaseSession::Get().Open(DataFile::member, m_status))
    {
        if (m_pDatabase != nullptr) {
            m_transaction = std::make_unique<CTransaction>(*m_pDatabase);
            m_status = m_transaction->Status();
        }
    }

    /// Runs one statement unless an earlier one failed; returns the number of rows it touched.
    std::int64_t Run(std::string_view sql, std::vector<DbValue> const& values)
    {
        std::int64_t changed = 0;
        if (m_status) {
            m_status = m_pDatabase->Execute(sql, values, changed);
        }
        return changed;
    }

    /// Notes that a record set or another service could not do its part.
    void Require(bool done)
    {
        Require(done, {DbError::failed, "A part of the change could not be stored."});
    }
    void Require(bool done, CDbStatus const& reason)
    {
        if (m_status && !done) {
            m_status = reason;
        }
    }

    /// As long as this is true, record sets write within the transaction.
    bool IsOK() const { return m_status.IsOK(); }
    bool Commit() { return Finish().IsOK(); }
    /// Commits unless something failed, and tells what did.
    CDbStatus Finish() { return m_status ? m_transaction->Commit() : m_status; }

private:
    CDbStatus m_status;
    CDatabase* m_pDatabase;
    std::unique_ptr<CTransaction> m_transaction;
};

constexpr std::array kRecordTables = {"workouts", "evaluations", "body_compositions"};

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

void MoveRecords(
    CMemberChange& change, std::int32_t memberID, std::uint8_t oldIndex, std::uint8_t newIndex)
{
    for (std::string const table : kRecordTables) {
        change.Run(
            "UPDATE " + table + " SET class_index = ? WHERE member_id = ? AND class_index = ?",
            {std::int64_t(newIndex), std::int64_t(memberID), std::int64_t(oldIndex)});
    }
}

void DeleteRecords(CMemberChange& change, std::int32_t memberID, std::uint8_t classIndex)
{
    for (std::string const table : kRecordTables) {
        change.Run("DELETE FROM " + table + " WHERE member_id = ? AND class_index = ?",
            {std::int64_t(memberID), std::int64_t(classIndex)});
    }
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

/// A byte that belongs to no UTF-8 character counts as one.
std::size_t CountCharacters(std::string_view text)
{
    std::size_t count = 0;
    for (; !text.empty(); ++count) {
        text.remove_prefix(std::max(CharacterLength(text), std::size_t(1)));
    }
    return count;
}

} // namespace

CClassSlot EmptySlot(CDAODef const& defaults, std::uint8_t classIndex)
{
    return {.category = {},
        .course = {},
        .section = {},
        .gradeStat = defaults.m_nDefGradeStat,
        .orientBonus = (defaults.m_nDefFlags & CDAODef::kOrientBonus) != 0,
        .reEvalBonuses = defaults.m_nDefReEvalBonuses,
        .otherBonuses = defaults.m_nDefOtherBonuses,
        .classIndex = classIndex};
}

bool IsMember(std::int32_t number, CDAOSmMem::id kind)
{
    CDAOSmMem members;
    return members.FindMember(kind, number) != 0;
}

bool ResetMember(CDAOSmMem& members, CDAOEnr& enrollments, CDAOProf& profiles, CDAOCls& classes,
    CDAOMsg& messages)
{
    CDAODef defaults;
    if (defaults.OpenSet(true) == 0) {
        return false;
    }
    defaults.Op(CDAOEFSet::opClose);
    for (CDAOEFSet* set :
        std::initializer_list<CDAOEFSet*>{&members, &enrollments, &profiles, &classes, &messages}) {
        set->ClearFields();
    }
    auto today = CEFOleDateTime::GetCurrentTime();
    today.Midnight();
    members.m_Status = 1;
    profiles.m_Birthday = today;
    profiles.m_Sex = 1;
    enrollments.m_EnrollDate = today;
    enrollments.m_ExpireDate = today;
    enrollments.m_ExpireDate.AddMonths(1);
    classes.m_ClassIndex = 1;
    classes.m_GradeStat = defaults.m_nDefGradeStat;
    classes.m_Orient = (defaults.m_nDefFlags & CDAODef::kOrientBonus) != 0 ? 1 : 0;
    classes.m_ReEval = defaults.m_nDefReEvalBonuses;
    classes.m_Other = defaults.m_nDefOtherBonuses;
    return true;
}

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

bool ReplaceClass(
    std::int32_t memberID, std::uint8_t classIndex, CClassSlot const& replacement, bool transfer)
{
    CMemberChange change;
    auto const changed = change.Run("UPDATE classes SET category = ?, course = ?, section = ?, "
                                    "grade_status = ?, orientation = ?, re_evaluations = ?, "
                                    "other_bonuses = ? WHERE member_id = ? AND class_index = ?",
        {replacement.category, replacement.course, replacement.section,
            std::int64_t(replacement.gradeStat), std::int64_t(replacement.orientBonus ? 1 : 0),
            std::int64_t(replacement.reEvalBonuses), std::int64_t(replacement.otherBonuses),
            std::int64_t(memberID), std::int64_t(classIndex)});
    change.Require(changed > 0);
    if (!transfer) {
        change.Require(DeleteClassData(memberID, classIndex));
    }
    return change.Commit();
}

bool UpdateEnrollment(std::int32_t const& memberID, CEFOleDateTime const& enrollDate,
    CEFOleDateTime const& expireDate, std::uint8_t const& period, std::uint8_t const& incentive,
    std::uint8_t const& status)
{
    CMemberChange change;
    std::int64_t const id = memberID;
    change.Require(
        change.Run("UPDATE members SET status = ? WHERE member_id = ?", {std::int64_t(status), id})
        == 1);
    change.Run("INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive) "
               "VALUES (?, ?, ?, ?, ?) ON CONFLICT (member_id) DO UPDATE SET "
               "enroll_date = excluded.enroll_date, expire_date = excluded.expire_date, "
               "period = excluded.period, incentive = excluded.incentive",
        {id, enrollDate.Seconds(), expireDate.Seconds(), std::int64_t(period),
            std::int64_t(incentive)});
    return change.Commit();
}

bool UpdateClassIndex(std::int32_t memberID, std::uint8_t oldIndex, std::uint8_t newIndex)
{
    CMemberChange change;
    MoveRecords(change, memberID, oldIndex, newIndex);
    return change.Commit();
}

bool DeleteClassData(std::int32_t memberID, std::uint8_t classIndex)
{
    CMemberChange change;
    DeleteRecords(change, memberID, classIndex);
    return change.Commit();
}

CDbStatus DeleteClass(std::int32_t memberID, std::string_view category, std::string_view course,
    std::string_view section, bool withRecords)
{
    CMemberChange change;
    CDAOCls set;
    bool const found = set.FindClasses(memberID, category, course, section) > 0;
    change.Require(set.LastStatus().IsOK(), set.LastStatus());
    change.Require(found, {DbError::gone, "The class was deleted or changed by another program."});
    if (withRecords) {
        DeleteRecords(change, memberID, set.m_ClassIndex);
    } else {
        MoveRecords(change, memberID, set.m_ClassIndex, CDAOCls::kUnknown);
    }
    if (change.IsOK()) {
        change.Require(set.DelCurrent(), set.LastStatus());
    }
    return change.Finish();
}

bool IsCurrentClass(
    std::string const& category, std::string const& course, std::string const& section)
{
    if (category.empty()) {
        return false;
    }
    std::string sql = "SELECT count(*) FROM categories AS a";
    std::string where = " WHERE a.name = ?";
    std::vector<DbValue> values = {category};
    if (!course.empty()) {
        sql += " JOIN courses AS b ON b.category = a.number";
        where += " AND b.name = ?";
        values.emplace_back(course);
        if (!section.empty()) {
            sql += " JOIN sections AS c ON c.course = b.number";
            where += " AND c.name = ?";
            values.emplace_back(section);
        }
    } else if (!section.empty()) {
        return false;
    }
    CDbStatus status;
    auto* const database = CDatabaseSession::Get().Open(DataFile::center, status);
    CRowBlock rows;
    return database != nullptr && database->Query(sql + where, values, rows)
        && rows.Row(0).Cell(0).integerValue > 0;
}

CORVAPI_RETURN corv_apiPostMemberMessage(
    char const* text, std::int32_t memberID, bool replaceExisting)
{
    std::string const message = text == nullptr ? "" : text;
    if (CountCharacters(message) > CDAOMsg::kLongestMessage) {
        return apiStoreError;
    }
    CMemberChange change;
    if (!change.IsOK()) {
        return apiStoreError;
    }
    CDAOSmMem members;
    if (members.FindMember(CDAOSmMem::idMember, memberID) == 0) {
        return members.LastStatus() ? apiNoMember : apiStoreError;
    }
    CDAOMsg messages;
    bool const there = messages.FindMessages(memberID) > 0;
    change.Require(messages.LastStatus().IsOK());
    if (there && !messages.m_Message.empty() && !replaceExisting) {
        return change.Commit() ? apiSuccess : apiStoreError;
    }
    change.Require(messages.Op(there ? CDAOEFSet::opEdit : CDAOEFSet::opAddNew));
    messages.m_MemberID = memberID;
    messages.m_Message = message;
    change.Require(messages.Op(CDAOEFSet::opUpdate));
    return change.Commit() ? apiSuccess : apiStoreError;
}
