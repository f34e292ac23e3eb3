#pragma once

#include "store/sets/AddRow.h"
#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOSmEval.h"
#include "store/sets/DAOSmMem.h"
#include "store/sets/DAOWk.h"
#include "tests/doc/TestCentre.h"

#include <QTest>

#include <cstdint>
#include <string>

/// Runs SQL on the member file, as another program of the suite would.
inline void RunOnMembers(std::string const& sql)
{
    CTestCentre::Run(sql, DataFile::member);
}

/// Adds a class of a member; names as SQL: "'Staff', 'Wellness', ''".
inline void AddClass(int memberID, int index, std::string const& names)
{
    RunOnMembers("INSERT INTO classes VALUES (NULL, " + std::to_string(memberID) + ", "
        + std::to_string(index) + ", " + names + ", 1, 1, 2, 3)");
}

/// Adds so many workouts, a minute apart, of the member that the SQL makes of i, from 1 on.
inline void AddWorkouts(int count, std::string const& member)
{
    RunOnMembers("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
        + std::to_string(count) + ") INSERT INTO workouts SELECT NULL, " + member
        + ", 0, 1, 3900000000 + i * 60, 3900000000 + i * 90, 0, i % 1000, 0, 0, 0, 0, 0, 0, 0, 0,"
          " 0, 0, 0 FROM n");
}

/// Adds a row whose fields the function sets.
template <typename Set, typename Fill>
void Store(Fill const& fill)
{
    QVERIFY(AddRow<Set>(fill).IsOK());
}

inline void StoreMember(std::int32_t memberID, std::string const& last,
    std::string const& first = {}, std::string const& middle = {}, std::uint8_t status = 1)
{
    Store<CDAOSmMem>([&](CDAOSmMem& set) {
        set.m_MemberID = set.m_WorkoutNum = memberID;
        set.m_LastName = last;
        set.m_FirstName = first;
        set.m_MiddleInit = middle;
        set.m_Status = status;
    });
}

/// Adds a member of that ID, without anything.
inline void AddMember(int id)
{
    StoreMember(id, "Doe", "Jo");
}

/// A member's workout, evaluation and body composition of one moment.
inline void StoreRecords(std::int32_t memberID, CEFOleDateTime const& when, int minutes = 0,
    double weight = 0.0, double fat = 0.0)
{
    Store<CDAOWk>([&](CDAOWk& set) {
        set.m_lMemberID = memberID;
        set.m_dtCheckIn = when;
        set.m_dtCheckOut = CEFOleDateTime::FromSeconds(when.Seconds() + minutes * 60);
        set.m_bWorkoutOK = minutes > 20;
    });
    Store<CDAOSmEval>([&](CDAOSmEval& set) {
        set.m_lEvalID = set.GenerateIDNum();
        set.m_lMemberID = memberID;
        set.m_dtEvalDate = when;
        set.m_nRestingHR = 62;
        set.m_nSystolic = 121;
        set.m_nDiastolic = 79;
        set.m_dWeight = weight;
    });
    Store<CDAOBodyComp>([&](CDAOBodyComp& set) {
        set.m_lMemberID = memberID;
        set.m_dtBodyCompDate = when;
        set.m_dPercentFat = fat;
        set.m_dWeight = weight;
    });
}
