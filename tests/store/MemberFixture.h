#pragma once

#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOWk.h"
#include "store/services/MemberServices.h"
#include "tests/store/StoreFixture.h"

#include <utility>

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
            "last_name, status) VALUES (?, ? + 500, ?, '', ?, ? % 2)",
            {key, key, first, last, key});
        Run(DataFile::member,
            "INSERT INTO profiles (member_id, address, city, state, zip, phone, email, "
            "emergency_name, emergency_phone, physician, release, employee, birthday, sex, goals, "
            "medical_history) VALUES (?, '1 Elm St', 'Springfield', 'IL', '62701', '555', 'a@b', "
            "'', '', 'Dr. No', 1, 0, ?, ? % 2, 0x0F, 0x180001)",
            {key, born.Seconds(), key});
        Run(DataFile::member,
            "INSERT INTO enrollments (member_id, enroll_date, expire_date, period, incentive) "
            "VALUES (?, ?, ?, 1, 0)",
            {key, CEFOleDateTime(2026, 1, 1).Seconds(), CEFOleDateTime(2026, 12, 31).Seconds()});
    }

    static void AddWorkout(std::int32_t member, std::uint8_t index,
        CEFOleDateTime const& in = {2026, 11, 16, 9, 0}, bool good = true)
    {
        Add<CDAOWk>([&](CDAOWk& set) {
            set.m_lMemberID = member;
            set.m_nClassIndex = index;
            set.m_bWorkoutOK = good;
            set.m_dtCheckIn = in;
        });
    }

    static void AddBodyComp(std::int32_t member, std::uint8_t index)
    {
        Add<CDAOBodyComp>([&](CDAOBodyComp& set) {
            set.m_lMemberID = member;
            set.m_nClassIndex = index;
        });
    }

    static std::int32_t AddEvaluation(std::int32_t member, std::uint8_t index)
    {
        std::int32_t number = 0;
        Add<CDAOSmEval>([&](CDAOSmEval& set) {
            set.m_lEvalID = number = set.GenerateIDNum();
            set.m_lMemberID = member;
            set.m_nClassIndex = index;
            set.m_dtEvalDate = CEFOleDateTime(2026, 11, 16, 9, 0);
        });
        return number;
    }

    /// One of each kind.
    static void AddRecords(std::int32_t member, std::uint8_t index)
    {
        AddWorkout(member, index);
        AddEvaluation(member, index);
        AddBodyComp(member, index);
    }

    /// How many of each kind a member has for a class: three digits.
    static std::int64_t Records(std::int32_t member, int index)
    {
        auto const where = " WHERE member_id = " + std::to_string(member)
            + " AND class_index = " + std::to_string(index);
        return Count("workouts" + where) * 100 + Count("evaluations" + where) * 10
            + Count("body_compositions" + where);
    }

    static std::int64_t Count(std::string const& sql)
    {
        CRowBlock rows;
        EXPECT_TRUE(Database(DataFile::member).Query("SELECT count(*) FROM " + sql, {}, rows));
        return rows.Row(0).Cell(0).integerValue;
    }

    /// The class of each index, in stored order.
    static std::vector<std::pair<int, std::string>> Classes(std::int32_t member)
    {
        std::vector<std::pair<int, std::string>> found;
        CDAOCls set;
        int const count = set.FindClasses(member);
        for (int i = 0; i < count; ++i) {
            std::string text;
            set.BuildClassString(text);
            found.emplace_back(set.m_ClassIndex, text);
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
