#include "tests/tools/CorvanaDbFixture.h"

namespace fs = std::filesystem;

namespace
{

/// So many tables of a kind, each with a name of its own.
std::string Tables(std::string const& kind, int count, std::string const& rest)
{
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += "[[" + kind + "]]\nname = \"name " + std::to_string(i) + "\"\n" + rest;
    }
    return all;
}

} // namespace

using CenterSettingsTest = CCorvanaDbTest;

TEST_F(CenterSettingsTest, WhatTheSettingsSayIsInTheRecords)
{
    MakeCenter();
    for (auto const& [sql, expected] : {
             std::pair("name || '|' || address1 || '|' || address2 || '|' || city || state || zip "
                       "|| min_minutes || '|' || min_circuits FROM center",
                 "Łódź Gym|1 Main Street||AlbanyNY122071440|5"),
             {"printf('%06x%06x', panel_color, frame_color) FROM touch", "03020100eeff"},
             {"grade_status || '|' || re_eval_bonuses || '|' || other_bonuses || '|' || flags "
              "FROM defaults",
                 "4|255|0|32"},
             {"name || points FROM bonuses", "Late-5"},
             {"group_concat(name || abbreviation) FROM stations", "CircuitsCirc,RowerRow"},
             {"group_concat(name || least_lift || '|' || greatest_lift) FROM lift_stations",
                 "Press2.5|400.0,Bar45.0|45.0"},
             {"group_concat(c.name || ifnull(o.name, '') || ifnull(s.name, '')) FROM categories AS "
              "c "
              "LEFT JOIN courses AS o ON o.category = c.number "
              "LEFT JOIN sections AS s ON s.course = o.number",
                 "Day,EveningSpinA,EveningSpinB,EveningWalk"},
         }) {
        EXPECT_EQ(Select(DataFile::center, sql), expected);
    }
}

TEST_F(CenterSettingsTest, BadSettingsAreToldByLineAndMakeNothing)
{
    auto const settings = ReadFile(m_settings);
    auto const lifts = Tables("lift_station", 24, "least = 1\ngreatest = 2\n");
    auto const stations = Tables("station", 12, "abbreviation = \"s\"\n");
    // What takes the place of what, and what is said of it.
    std::vector<std::array<std::string, 3>> const cases = {
        {"[defaults]", "[default]", ":12:2: unknown key \"default\""},
        {"sections", "section", ":35:1: unknown key \"section\" in [category.course]"},
        {"1440", "1441", ":7:15: \"min_minutes\" must be a whole"},
        {"255", "256", ":14:19: \"re_eval_bonuses\" must be"},
        {"true", "1", ":15:16: \"orient_bonus\" must be true or false"},
        {"\"NY\"", "7", ":5:9: \"state\" must be a text"},
        {"Withdrawn", "Gone", ":13:16: \"grade_status\" must be one of"},
        {"#010203", "blue", ":10:9: \"panel\" must be a colour"},
        {"frame = \"#fFeE00\"\n", "", ":9:1: \"frame\" is missing in [touch]"},
        {"Łódź Gym", "", ":2:8: \"name\" must not be empty"},
        {"1 Main", " 1 Main", ":3:12: \"address1\" must not begin or end"},
        {"Albany", "Al\\nbany", ":4:8: \"city\" must be one line"},
        {"Albany", std::string(81, 'x'), ":4:8: \"city\" must have at most 80 letters"},
        {"2.5", "nan", ":27:9: \"least\" must be a number"},
        {"400", "2", ":28:12: \"greatest\" must not be below"},
        {"[[bonus]]\nname = \"Late\"\npoints = -5\n", "", ":1:1: there must be at least 1"},
        {"Evening", "Day", ":32:8: \"name\" is the name of an earlier one"},
        {"\"B\"", "\"A\"", ":35:18: \"sections\" names this one twice"},
        {"[[bonus]]", "[bonus]", ":16:1: \"bonus\" must be a list of tables"},
        {"[[category]]", lifts + "[[category]]", ":121:1: there can be at most 24"},
        {"[[lift_", stations + "[[lift_", ":58:1: there can be at most 13"},
    };
    for (auto const& [from, to, expected] : cases) {
        auto const at = settings.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        Write(m_settings, std::string(settings).replace(at, from.size(), to));
        Expect(1, "corvana-db: " + m_settings.string() + expected, m_create);
        EXPECT_FALSE(fs::exists(m_data.parent_path())) << to;
    }
    for (auto const& path :
        {m_folder.string(), std::string("/dev/zero"), m_settings.string() + "/x"}) {
        Expect(1, "corvana-db: Cannot read \"" + path,
            {"create", path, "--password-file", m_password.string()});
    }
}
