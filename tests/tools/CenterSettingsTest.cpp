#include "store/fitness/Circuit.h"
#include "store/sets/DAOBon.h"
#include "store/sets/DAOCat.h"
#include "store/sets/DAOCenter.h"
#include "store/sets/DAOCour.h"
#include "store/sets/DAODef.h"
#include "store/sets/DAOSec.h"
#include "store/sets/DAOStn.h"
#include "store/sets/DAOTouch.h"
#include "tests/tools/CorvanaDbFixture.h"

namespace fs = std::filesystem;

namespace
{

std::string Replaced(std::string text, std::string_view from, std::string_view to)
{
    auto const at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

std::string Repeated(std::string_view text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

} // namespace

using CenterSettingsTest = CCorvanaDbTest;

TEST_F(CenterSettingsTest, WhatTheSettingsSayIsInTheRecords)
{
    MakeCenter();
    CDAOCenter center;
    ASSERT_EQ(center.OpenSet(true), 1);
    EXPECT_EQ(center.m_strCenterName, "Łódź Gym");
    EXPECT_EQ(center.m_strAddress1 + "|" + center.m_strAddress2, "1 Main Street|");
    EXPECT_EQ(center.m_strCity + center.m_strState + center.m_strZip, "AlbanyNY12207");
    EXPECT_EQ(center.m_nMinMinutes, 1440);
    EXPECT_EQ(center.m_nMinCircuits, 5);
    EXPECT_TRUE(center.ChkPassword(kPassword));
    EXPECT_FALSE(center.ChkPassword("correct horse"));
    CDAOTouch touch;
    ASSERT_EQ(touch.OpenSet(true), 1);
    EXPECT_EQ(touch.m_clrPanel, 0x030201U);
    EXPECT_EQ(touch.m_clrFrame, 0x00EEFFU);
    CDAODef defaults;
    ASSERT_EQ(defaults.OpenSet(true), 1);
    EXPECT_EQ(defaults.m_nDefGradeStat, CDAODef::gsWithdrawn);
    EXPECT_EQ(defaults.m_nDefReEvalBonuses, 255);
    EXPECT_EQ(defaults.m_nDefOtherBonuses, 0);
    EXPECT_EQ(defaults.m_nDefFlags, CDAODef::kOrientBonus);
    CDAOBon bonuses;
    ASSERT_EQ(bonuses.OpenSet(true), 1);
    EXPECT_EQ(bonuses.m_nPoints, -5);
    CDAOStn stations;
    ASSERT_EQ(stations.OpenSet(true), 2);
    EXPECT_EQ(stations.m_strStnName + stations.m_strStnAbbr, "CircuitsCirc");
    CCircuit circuit;
    circuit.Load();
    ASSERT_EQ(circuit.m_nNumStations, 1);
    EXPECT_EQ(circuit.m_arrStnMinLift[0], 2.5);
    EXPECT_EQ(circuit.m_arrStnMaxLift[0], 400.0);
    CDAOCat categories;
    ASSERT_EQ(categories.FindCategories(0), 2);
    EXPECT_EQ(categories.m_strCatName, "Day");
    EXPECT_TRUE(categories.Op(CDAOEFSet::opMoveNext));
    CDAOCour courses;
    ASSERT_EQ(courses.FindCourses(categories.m_nCatID, 0), 2);
    EXPECT_EQ(courses.m_strCourName, "Spin");
    CDAOSec sections;
    EXPECT_EQ(sections.FindSections(courses.m_nCourID), 2);
    EXPECT_EQ(sections.m_strSecName, "A");
    EXPECT_TRUE(courses.Op(CDAOEFSet::opMoveNext));
    EXPECT_EQ(sections.FindSections(courses.m_nCourID), 0);
}

TEST_F(CenterSettingsTest, BadSettingsAreToldByLineAndMakeNothing)
{
    struct Case
    {
        char const* what;
        std::string from;
        std::string to;
        std::string expected;
    };
    auto const lift = std::string("[[lift_station]]\nname = \"L%\"\nleast = 1\ngreatest = 2\n");
    std::string lifts;
    std::string stations;
    for (char letter = 'a'; letter < 'a' + 24; ++letter) {
        lifts += Replaced(lift, "%", {&letter, 1});
        stations
            += "[[station]]\nname = \"S" + std::string(1, letter) + "\"\nabbreviation = \"s\"\n";
    }
    std::vector<Case> const cases = {
        {"no TOML", "[touch]", "[touch", ":9:7: "},
        {"a key twice", "city =", "zip =", ":6:"},
        {"invalid UTF-8", "Main", "M\xFFin", ":3:"},
        {"misspelt key", "min_circuits", "min_circiuts", ":8:1: unknown key \"min_circiuts\""},
        {"misspelt table", "[defaults]", "[default]", ":12:2: unknown key \"default\""},
        {"misspelt inner key", "sections", "section",
            ":35:1: unknown key \"section\" in [category.course]"},
        {"text for a number", "1440", "\"1440\"", ":7:15: \"min_minutes\" must be a whole"},
        {"fraction for a number", "1440", "30.5", ":7:15: \"min_minutes\" must be a whole"},
        {"number too large", "1440", "32768", ":7:15: \"min_minutes\" must be a whole"},
        {"more circuits than there are", "5", "6", ":8:16: \"min_circuits\" must be"},
        {"byte too large", "255", "256", ":14:19: \"re_eval_bonuses\" must be"},
        {"number for a flag", "true", "1", ":15:16: \"orient_bonus\" must be true or false"},
        {"number for a text", "\"NY\"", "7", ":5:9: \"state\" must be a text"},
        {"unknown choice", "Withdrawn", "Gone", ":13:16: \"grade_status\" must be one of"},
        {"no colour", "#010203", "blue", ":10:9: \"panel\" must be a colour"},
        {"short colour", "#010203", "#12345", ":10:9: \"panel\" must be a colour"},
        {"signed colour", "#010203", "#-10203", ":10:9: \"panel\" must be a colour"},
        {"missing key", "frame = \"#fFeE00\"\n", "", ":9:1: \"frame\" is missing in [touch]"},
        {"missing name", "name = \"Łódź Gym\"\n", "", ":1:1: \"name\" is missing in [center]"},
        {"empty name", "Łódź Gym", "", ":2:8: \"name\" must not be empty"},
        {"blank around", "Albany", "Albany ", ":4:8: \"city\" must not begin or end"},
        {"line break", "Albany", "Al\\nbany", ":4:8: \"city\" must be one line"},
        {"terminal sequence", "Albany", "\\u009b31m", ":4:8: \"city\" must be one line"},
        {"long text", "Albany", Repeated("é", 81), ":4:8: \"city\" must have at most 80 letters"},
        {"points missing", "points = -5\n", "", ":16:1: \"points\" is missing in [bonus]"},
        {"no number", "2.5", "nan", ":27:9: \"least\" must be a number"},
        {"crossed limits", "400", "2", ":28:12: \"greatest\" must not be below"},
        {"no bonus", "[[bonus]]\nname = \"Late\"\npoints = -5\n", "", ": there must be at least 1"},
        {"a name twice", "Evening", "Day", ":32:8: \"name\" is the name of an earlier one"},
        {"a section twice", "\"B\"", "\"A\"", ":35:18: \"sections\" names this one twice"},
        {"number among sections", "\"B\"", "2", ":35:18: \"sections\" must hold texts"},
        {"table for a list", "[[bonus]]", "[bonus]", ":16:1: \"bonus\" must be a list of tables"},
        {"too many lift stations", "[[category]]", lifts + "[[category]]",
            ":121:1: there can be at"},
        {"too many stations", "[[lift_", stations + "[[lift_", ":58:1: there can be at most 13"},
    };
    for (auto const& bad : cases) {
        Write(m_settings, Replaced(kSettings, bad.from, bad.to));
        auto const result = Create();
        EXPECT_EQ(result.exitCode, 1) << bad.what;
        EXPECT_TRUE(result.errors.starts_with("corvana-db: " + m_settings.string() + ":"))
            << bad.what << "\n"
            << result.errors;
        EXPECT_NE(result.errors.find(bad.expected), std::string::npos) << bad.what << "\n"
                                                                       << result.errors;
        EXPECT_FALSE(fs::exists(m_data.parent_path())) << bad.what;
    }
    auto const text = std::string(kSettings);
    for (auto const* const needed : {"[[station]]", "[[category]]"}) {
        auto const from = text.find(needed);
        auto const to = needed[2] == 's' ? text.find("[[lift_station]]") : text.size();
        Write(m_settings, text.substr(0, from) + text.substr(to));
        EXPECT_NE(
            Create().errors.find("at least 1 table " + std::string(needed)), std::string::npos);
    }
}

TEST_F(CenterSettingsTest, WhatIsNoSettingsFileIsRefused)
{
    auto const pipe = m_temporary.Path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    auto const huge = m_temporary.Path() / "huge";
    Write(huge, "");
    fs::resize_file(huge, 100'000'000);
    for (auto const& path : {m_temporary.Path(), m_temporary.Path() / "missing", pipe, huge,
             fs::path("/dev/zero"), m_settings / "x"}) {
        auto const result = Run({"create", path.string(), "--password-file", m_password.string()});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_TRUE(result.errors.starts_with("corvana-db: Cannot read \"" + path.string()))
            << result.errors;
        EXPECT_EQ(Names(), "none");
    }
}
