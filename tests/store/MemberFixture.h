#pragma once

#include "store/services/MemberServices.h"
#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOWk.h"
#include "tests/store/StoreFixture.h"

/// Members with records, added as other programs add them, on an evening in 2026.
class CMemberTest : public CStoreTest
{
protected:
    void SetUp() override
    {
        CStoreTest::SetUp();
        CEFOleDateTime::SetClock(CEFOleDateTime(2026, 11, 16, 18, 5, 9));
    }

    static void AddMember(std::int32_t id, std::string const& last = "Doe",
        std::string const& first = "Jo", CEFOleDateTime const& born = {1990, 1, 1})
    {
        std::int64_t const key = id;
        Run(DataFile::member,
            "INSERT INTO members (member_id, workout_number, first_name, middle_initial, "
            "last_name, status) VALUES (?1, ?1 + 500, ?2, '', ?3, ?1 % 2)",
            {key, first, last});
        Run(DataFile::member,
            "INSERT INTO profiles (member_id, address, city, state, zip, phone, email, "
            "emergency_name, emergency_phone, physician, release, employee, birthday, sex, goals, "
            "medical_history) VALUES (?1, '1 Elm St', 'Springfield', 'IL', '62701', '555', 'a@b', "
            "'', '', 'Dr. No', 1, 0, ?2, ?1 % 2, 0x0F, 0x180001)",
            {key, born.Seconds()});
        Run(DataFile::member,
            "INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive) "
            "VALUES (?, ?, ?, 1, 0)",
            {key, CEFOleDateTime(2026, 1, 1).Seconds(), CEFOleDateTime(2026, 12, 31).Seconds()});
    }

    /// Adds a record with a number, or the next free one, in what serves as such.
    template <typename Set>
    static void AddRecord(std::int32_t member, int index, CEFOleDateTime const& when,
        std::string const& number = "(SELECT ifnull(max(eval_id), 0) + 1 FROM evaluations)")
    {
        Set set;
        Run(DataFile::member, InsertInto(set, [&](CColumn const& column) {
            auto const& name = column.name;
            bool const isNumber = name == "eval_id" || name == "method" || name == "circuits";
            return name == "member_id"             ? std::to_string(member)
                : name == "class_index"            ? std::to_string(index)
                : column.type == ColumnType::date  ? std::to_string(when.Seconds())
                : isNumber || name == "workout_ok" ? number
                                                   : "0";
        }));
    }
    /// One of each kind.
    template <typename... Number>
    static void AddRecords(std::int32_t member, int index,
        CEFOleDateTime const& when = {2026, 11, 16, 9, 0}, Number const&... number)
    {
        AddRecord<CDAOWk>(member, index, when, number...);
        AddRecord<CDAOSmEval>(member, index, when, number...);
        AddRecord<CDAOBodyComp>(member, index, when, number...);
    }

    /// How many of each kind a member has for a class: three digits.
    static std::int64_t Records(std::int32_t member, int index)
    {
        auto const where = " WHERE member_id = " + std::to_string(member)
            + " AND class_index = " + std::to_string(index);
        return Count("workouts" + where) * 100 + Count("evaluations" + where) * 10
            + Count("body_compositions" + where);
    }

    /// The index and the name of each class, in stored order: "5A 6B".
    static std::string Classes(std::int32_t member)
    {
        std::string found;
        CDAOCls set;
        for (int count = set.FindClasses(member); count > 0; --count) {
            found += (found.empty() ? "" : " ") + std::to_string(set.m_ClassIndex) + set.m_Category;
            set.Op(CDAOEFSet::opMoveNext);
        }
        return found;
    }
};

inline CClassSlot Slot(std::string const& name, std::uint8_t index = 0)
{
    CClassSlot slot;
    slot.category = name;
    slot.course = name.empty() ? "" : "Course";
    slot.classIndex = index;
    return slot;
}
