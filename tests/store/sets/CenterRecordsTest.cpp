#include "store/fitness/Circuit.h"
#include "store/services/MemberServices.h"
#include "store/sets/DAOCat.h"
#include "store/sets/DAOCenter.h"
#include "store/sets/DAOCour.h"
#include "store/sets/DAOLiftStn.h"
#include "store/sets/DAOSec.h"
#include "tests/store/StoreFixture.h"

using CenterRecordsTest = CStoreTest;

TEST_F(CenterRecordsTest, CatalogueFollowsItsLevels)
{
    Run(DataFile::center,
        "INSERT INTO categories (number, name) VALUES (10, 'Dance'), (20, 'Gym')");
    Run(DataFile::center,
        "INSERT INTO courses (number, category, name) VALUES (101, 10, 'a'), (201, 20, 'b'), "
        "(202, 20, 'c')");
    Run(DataFile::center,
        "INSERT INTO sections (number, course, name) VALUES (1, 101, 'Noon'), (2, 202, 'Morning'), "
        "(3, 202, 'Evening'), (4, 202, 'Morning')");
    EXPECT_EQ(CDAOCour().FindCourses(20, 101), 0) << "of another category";
    EXPECT_EQ(CDAOSec().FindSections(202, "Morning"), 2);
    EXPECT_TRUE(IsCurrentClass("Gym", "c", "Evening"));
    EXPECT_TRUE(IsCurrentClass("Gym", "", ""));
    EXPECT_FALSE(IsCurrentClass("Gym", "a", "Noon"));
    EXPECT_FALSE(IsCurrentClass("Gym", "b", "Morning"));
    EXPECT_FALSE(IsCurrentClass("Gym", "", "Morning"));
    EXPECT_FALSE(IsCurrentClass("", "", ""));
}

TEST_F(CenterRecordsTest, WorkoutMustMeetBothMinimums)
{
    CDAOCenter center;
    CEFOleDateTime const in(2026, 11, 16, 10, 0);
    for (auto const& [minCircuits, minMinutes, circuits, minutes, isMet] :
        {std::tuple(0, 0, 0, 0, true), {2, 30, 2, 30, true}, {2, 30, 1, 90, false},
            {2, 30, 5, 29, false}, {2, 0, 2, -10, true}}) {
        center.m_nMinCircuits = static_cast<std::uint8_t>(minCircuits);
        center.m_nMinMinutes = static_cast<std::int16_t>(minMinutes);
        auto const out = CEFOleDateTime::FromSeconds(in.Seconds() + minutes * 60);
        EXPECT_EQ(center.VerifyWk(circuits, in, out), isMet) << circuits << ' ' << minutes;
    }
}

TEST_F(CenterRecordsTest, PasswordGateFailsClosed)
{
    CDAOCenter center;
    EXPECT_FALSE(center.ChkPassword("")) << "no centre row";
    ASSERT_TRUE(AddRow<CDAOCenter>([](CDAOCenter& set) { set.m_strCenterName = "Riverside"; }));
    EXPECT_FALSE(center.ChkPassword("")) << "no password set";
    EXPECT_FALSE(center.SetPassword("short"));
    ASSERT_TRUE(center.SetPassword("Gr\u00FC\u00DFe an alle"));
    EXPECT_TRUE(center.ChkPassword("Gru\u0308\u00DFe an alle")) << "typed with a combining mark";
    EXPECT_FALSE(center.ChkPassword("gr\u00FC\u00DFe an alle"));
    EXPECT_FALSE(center.ChkPassword("\xFF\xFE"));
    for (auto const* hash : {"", "x", "$argon2id$v=19$m=65536,t=3,p=1$AAAA"}) {
        Run(DataFile::center, "UPDATE center SET password_hash = ?", {std::string(hash)});
        EXPECT_FALSE(center.ChkPassword(hash)) << hash;
    }
    CDatabaseSession::Get().SetDataFolder("/nonexistent");
    EXPECT_FALSE(center.ChkPassword("anything at all"));
}

TEST_F(CenterRecordsTest, CircuitTakesAtMostItsStations)
{
    CCircuit circuit;
    Run(DataFile::center,
        "WITH RECURSIVE n (i) AS (VALUES (0) UNION ALL SELECT i + 1 FROM n WHERE i < 25) INSERT "
        "INTO lift_stations (name, least_lift, greatest_lift) SELECT 'Lift ' || i, 5, 100 + i FROM "
        "n");
    circuit.Load();
    ASSERT_EQ(circuit.m_nNumStations, 24);
    EXPECT_EQ(circuit.m_arrStnName.back(), "Lift 23");
    EXPECT_EQ(circuit.m_arrStnMinLift.back(), 5.0);
    EXPECT_EQ(circuit.m_arrStnMaxLift.back(), 123.0);
    for (auto const& [station, lift, percentage, weight] : {std::tuple(0, 90, 70, 63.0),
             {23, 135, 50, 67.5}, {24, 100, 50, 0.0}, {-1, 100, 50, 0.0}}) {
        EXPECT_EQ(circuit.GetWorkWeight(station, lift, percentage), weight) << lift;
    }
}
