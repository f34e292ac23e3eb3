#pragma once

#include "store/sets/DatabaseSession.h"
#include "tests/TempFolder.h"
#include "tests/tools/Command.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

inline constexpr char const* kPassword = "correct horse battery";
inline constexpr char const* kPasswordLine = "correct horse battery\n"; ///< as in its file

inline constexpr char const* kSettings = R"([center]
name = "Łódź Gym"
address1 = "1 Main Street"
city = "Albany"
state = "NY"
zip = "12207"
min_minutes = 1440
min_circuits = 5
[touch]
panel = "#010203"
frame = "#fFeE00"
[defaults]
grade_status = "Withdrawn"
re_eval_bonuses = 255
orient_bonus = true
[[bonus]]
name = "Late"
points = -5
[[station]]
name = "Circuits"
abbreviation = "Circ"
[[station]]
name = "Rower"
abbreviation = "Row"
[[lift_station]]
name = "Press"
least = 2.5
greatest = 400
[[category]]
name = "Day"
[[category]]
name = "Evening"
[[category.course]]
name = "Spin"
sections = ["A", "B"]
[[category.course]]
name = "Walk"
)";

/// Makes a file that its owner alone may read.
inline void Write(std::filesystem::path const& path, std::string_view text)
{
    std::ofstream(path, std::ios::binary) << text;
    ::chmod(path.c_str(), 0600);
}

/// Runs corvana-db over a data folder that is not there yet.
class CCorvanaDbTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Write(m_password, kPasswordLine);
        Write(m_settings, kSettings);
    }
    void TearDown() override { CDatabaseSession::Get().ShutDown(); }

    CCommandResult Run(std::vector<std::string> arguments, std::vector<std::string> before = {})
    {
        before.emplace_back(CORVANA_DB);
        before.insert(before.end(), arguments.begin(), arguments.end());
        before.insert(before.end(), {"--data", m_data.string()});
        return RunCommand(before);
    }
    CCommandResult Create(std::vector<std::string> const& before = {})
    {
        return Run({"create", m_settings.string(), "--password-file", m_password.string()}, before);
    }
    void MakeCenter()
    {
        auto const made = Create();
        ASSERT_EQ(made.exitCode, 0) << made.errors;
        CDatabaseSession::Get().SetDataFolder(m_data);
    }
    /// The names in the data folder, "none" when there is no folder.
    std::string Names() const
    {
        if (!std::filesystem::exists(m_data)) {
            return "none";
        }
        std::string names;
        for (auto const file : kDataFiles) {
            names += std::filesystem::exists(m_data / DataFileName(file)) ? "+" : "-";
        }
        for (auto const& entry : std::filesystem::directory_iterator(m_data)) {
            auto const name = entry.path().filename().string();
            names += name.ends_with(".mdb") ? "" : " " + name;
        }
        return names;
    }
    static CDatabase& Database(DataFile file)
    {
        CDbStatus status;
        auto* const database = CDatabaseSession::Get().Open(file, status);
        EXPECT_NE(database, nullptr) << status.Text();
        return *database;
    }

    CTempFolder m_temporary;
    std::filesystem::path const m_data = m_temporary.Path() / "far" / "data";
    std::filesystem::path const m_password = m_temporary.Path() / "password";
    std::filesystem::path const m_settings = m_temporary.Path() / "settings.toml";
};
