#include "store/fitness/Circuit.h"
#include "store/sets/DAOBon.h"
#include "store/sets/DAOCat.h"
#include "store/sets/DAOCenter.h"
#include "store/sets/DAOCour.h"
#include "store/sets/DAODef.h"
#include "store/sets/DAOLiftStn.h"
#include "store/sets/DAOSec.h"
#include "store/sets/DAOStn.h"
#include "store/sets/DAOTouch.h"
#include "store/services/Password.h"
#include "tests/store/StoreFixture.h"

namespace
{

class CenterRecordsTest : public CStoreTest
{
protected:
    static void AddCenter()
    {
        Add<CDAOCenter>([](CDAOCenter& set) { set.m_strCenterName = "Riverside"; });
    }
};

} // namespace

TEST_F(CenterRecordsTest, CatalogueFollowsItsLevels)
{
    for (int category = 1; category <= 2; ++category) {
        Add<CDAOCat>([&](CDAOCat& set) { set.m_nCatID = category * 10; });
        for (int course = 1; course <= 2; ++course) {
            int const number = category * 100 + course;
            Add<CDAOCour>([&](CDAOCour& set) {
                set.m_nCourID = number;
                set.m_nCourCatID = category * 10;
            });
            for (auto const* name : {"Morning", "Evening", "Morning"}) {
                static std::int32_t section = 0;
                Add<CDAOSec>([&](CDAOSec& set) {
                    set.m_nSecID = ++section;
                    set.m_nSecCourID = number;
                    set.m_strSecName = name;
                });
            }
        }
    }
    CDAOCat categories;
    CDAOCour courses;
    CDAOSec sections;
    EXPECT_EQ(categories.FindCategories(0), 2);
    EXPECT_EQ(categories.m_nCatID, 10);
    EXPECT_EQ(categories.FindCategories(20), 1);
    EXPECT_EQ(categories.FindCategories(30), 0);
    EXPECT_EQ(courses.FindCourses(20, 0), 2);
    EXPECT_EQ(courses.m_nCourID, 201);
    EXPECT_EQ(courses.FindCourses(20, 101), 0) << "of another category";
    EXPECT_EQ(courses.FindCourses(20, 202), 1);
    EXPECT_EQ(sections.FindSections(102), 3);
    EXPECT_EQ(sections.FindSections(102, nullptr), 3);
    EXPECT_EQ(sections.FindSections(102, "Morning"), 2);
    EXPECT_EQ(sections.FindSections(999), 0);
}

TEST_F(CenterRecordsTest, SmallRecordsKeepTheirLimits)
{
    Add<CDAODef>([](CDAODef& set) {
        set.m_nDefGradeStat = 4;
        set.m_nDefFlags = 255;
    });
    Add<CDAOTouch>([](CDAOTouch& set) { set.m_clrPanel = 0xFFFFFFFF; });
    Add<CDAOBon>([](CDAOBon& set) { set.m_nPoints = -32768; });
    Add<CDAOStn>(
        [](CDAOStn& set) { set.m_strStnName = "Beinpresse \xE2\x80\x94 \xF0\x9F\xA6\xB5"; });
    CDAODef defaults;
    CDAOTouch touch;
    CDAOBon bonuses;
    CDAOStn stations;
    ASSERT_EQ(defaults.OpenSet(true) + touch.OpenSet(true) + bonuses.OpenSet(true)
            + stations.OpenSet(true),
        4);
    EXPECT_EQ(defaults.m_nDefFlags, 255);
    EXPECT_EQ(touch.m_clrPanel, 0xFFFFFFFF);
    EXPECT_EQ(bonuses.m_nPoints, -32768);
    EXPECT_EQ(stations.m_strStnName, "Beinpresse \xE2\x80\x94 \xF0\x9F\xA6\xB5");
    EXPECT_STREQ(CDAODef::GetGrdStatStr(CDAODef::gsWithdrawn), "Withdrawn");
    EXPECT_STREQ(CDAODef::GetEnrPerStr(CDAODef::epYear), "1 Year");
    EXPECT_STREQ(CDAODef::GetGrdStatStr(static_cast<CDAODef::gradestat>(5)), "");
}

TEST_F(CenterRecordsTest, WorkoutMustMeetBothMinimums)
{
    CDAOCenter center;
    CEFOleDateTime const in(2026, 11, 16, 10, 0);
    auto const verify = [&](int circuits, std::int64_t minutes) {
        return center.VerifyWk(
            circuits, in, CEFOleDateTime::FromSeconds(in.Seconds() + minutes * 60));
    };
    EXPECT_TRUE(verify(0, 0)) << "minimums of 0 are met";
    center.m_nMinCircuits = 2;
    center.m_nMinMinutes = 30;
    EXPECT_TRUE(verify(2, 30));
    EXPECT_FALSE(verify(1, 90));
    EXPECT_FALSE(verify(5, 29));
    center.m_nMinMinutes = 0;
    EXPECT_TRUE(verify(2, -10));
}

TEST_F(CenterRecordsTest, PasswordGateFailsClosed)
{
    CDAOCenter center;
    EXPECT_FALSE(center.ChkPassword("")) << "no centre row";
    AddCenter();
    EXPECT_FALSE(center.ChkPassword("")) << "no password set";
    EXPECT_FALSE(center.SetPassword("short"));
    ASSERT_TRUE(center.SetPassword("Gr\xC3\xBC\xC3\x9F"
                                   "e an alle"));
    EXPECT_TRUE(center.ChkPassword("Gr\xC3\xBC\xC3\x9F"
                                   "e an alle"));
    EXPECT_TRUE(center.ChkPassword("Gru\xCC\x88\xC3\x9F"
                                   "e an alle"))
        << "typed with a combining mark";
    EXPECT_FALSE(center.ChkPassword("gr\xC3\xBC\xC3\x9F"
                                    "e an alle"));
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
    circuit.Load();
    EXPECT_EQ(circuit.m_nNumStations, 0);
    for (int i = 0; i < 26; ++i) {
        Add<CDAOLiftStn>([&](CDAOLiftStn& set) {
            set.m_strStnName = "Lift " + std::to_string(i);
            set.m_dMinLift = 5;
            set.m_dMaxLift = 100 + i;
        });
    }
    circuit.Load();
    ASSERT_EQ(circuit.m_nNumStations, 24);
    EXPECT_EQ(circuit.m_arrStnName.back(), "Lift 23");
    EXPECT_EQ(circuit.m_arrStnMinLift.back(), 5.0);
    EXPECT_EQ(circuit.m_arrStnMaxLift.back(), 123.0);
    for (int const lift : {90, 170, 180, 330, 340, 350, 360}) {
        EXPECT_EQ(circuit.GetWorkWeight(0, lift, 70), lift * 7 / 10) << lift;
    }
    EXPECT_EQ(circuit.GetWorkWeight(23, 150, 70), 105.0);
    EXPECT_EQ(circuit.GetWorkWeight(0, 135, 50), 67.5);
    EXPECT_EQ(circuit.GetWorkWeight(0, 55, 40), 22.0);
    EXPECT_EQ(circuit.GetWorkWeight(24, 100, 50), 0.0);
    EXPECT_EQ(circuit.GetWorkWeight(-1, 100, 50), 0.0);
}

TEST_F(CenterRecordsTest, DamagedFileIsToldAndTriedAgain)
{
    AddCenter();
    CDAOCenter center;
    auto const path = m_folder / "center.mdb";
    CDatabaseSession::Get().ShutDown();
    std::filesystem::rename(path, m_folder / "away");
    EXPECT_EQ(center.OpenSet(true), 0);
    EXPECT_EQ(center.LastStatus().Error(), DbError::missing);
    EXPECT_NE(center.LastStatus().Text().find(path.string()), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(path)) << "opening must never create";
    std::filesystem::rename(m_folder / "away", path);
    EXPECT_EQ(center.OpenSet(true), 1);
    EXPECT_EQ(center.m_strCenterName, "Riverside");
}
