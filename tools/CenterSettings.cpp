#include "tools/CenterSettings.h"

#include "platform/db/Files.h"
#include "store/fitness/Circuit.h"
#include "store/sets/DAODef.h"
#include "tools/SettingsReader.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr off_t kMostBytes = 1'048'576;
constexpr std::size_t kMostLetters = 80;
constexpr std::size_t kMostNameLetters = 40;
constexpr std::size_t kMostAbbreviationLetters = 8;
constexpr std::size_t kMostTables = 1000;
constexpr std::int64_t kMostMinutes = 1'440; // a day
constexpr std::int64_t kMostCircuits = 5; // of a workout record
constexpr double kMostPounds = 9999.0;

/// A file of one table kind must not name a thing twice: records find it by its name.
template <typename Entry>
std::string TakeName(CSettingsReader& reader, std::vector<Entry> const& before)
{
    auto name = reader.Text("name", kMostNameLetters, true);
    auto const same = [&](Entry const& entry) { return entry.name == name; };
    if (!name.empty() && std::any_of(before.begin(), before.end(), same)) {
        reader.Refuse("name", "is the name of an earlier one");
    }
    return name;
}

void TakeCenter(CSettingsReader reader, CCenterSettings& settings)
{
    settings.name = reader.Text("name", kMostLetters, true);
    settings.address1 = reader.Text("address1", kMostLetters, false);
    settings.address2 = reader.Text("address2", kMostLetters, false);
    settings.city = reader.Text("city", kMostLetters, false);
    settings.state = reader.Text("state", kMostLetters, false);
    settings.zip = reader.Text("zip", kMostLetters, false);
    settings.phone = reader.Text("phone", kMostLetters, false);
    settings.email = reader.Text("email", kMostLetters, false);
    settings.web = reader.Text("web", kMostLetters, false);
    settings.minMinutes
        = static_cast<std::int16_t>(reader.Integer("min_minutes", 0, kMostMinutes, false));
    settings.minCircuits
        = static_cast<std::uint8_t>(reader.Integer("min_circuits", 0, kMostCircuits, false));
    reader.End();
}

void TakeTouch(CSettingsReader reader, CCenterSettings& settings)
{
    settings.panelColor = reader.Color("panel");
    settings.frameColor = reader.Color("frame");
    reader.End();
}

void TakeDefaults(CSettingsReader reader, CCenterSettings& settings)
{
    std::vector<std::string> statuses;
    for (int status = CDAODef::gsNone; status <= CDAODef::gsWithdrawn; ++status) {
        statuses.emplace_back(CDAODef::GetGrdStatStr(static_cast<CDAODef::gradestat>(status)));
    }
    settings.gradeStatus = reader.Choice("grade_status", statuses);
    settings.reEvalBonuses
        = static_cast<std::uint8_t>(reader.Integer("re_eval_bonuses", 0, UINT8_MAX, false));
    settings.otherBonuses
        = static_cast<std::uint8_t>(reader.Integer("other_bonuses", 0, UINT8_MAX, false));
    settings.orientBonus = reader.Flag("orient_bonus");
    reader.End();
}

void TakeBonus(CSettingsReader& reader, CCenterSettings& settings)
{
    auto name = TakeName(reader, settings.bonuses);
    auto const points
        = static_cast<std::int16_t>(reader.Integer("points", INT16_MIN, INT16_MAX, true));
    settings.bonuses.push_back({std::move(name), points});
    reader.End();
}

void TakeStation(CSettingsReader& reader, CCenterSettings& settings)
{
    auto name = TakeName(reader, settings.stations);
    settings.stations.push_back(
        {std::move(name), reader.Text("abbreviation", kMostAbbreviationLetters, true)});
    reader.End();
}

void TakeLiftStation(CSettingsReader& reader, CCenterSettings& settings)
{
    auto name = TakeName(reader, settings.liftStations);
    auto const least = reader.Real("least", 0.0, kMostPounds);
    auto const greatest = reader.Real("greatest", 0.0, kMostPounds);
    if (greatest < least) {
        reader.Refuse("greatest", "must not be below \"least\"");
    }
    settings.liftStations.push_back({std::move(name), least, greatest});
    reader.End();
}

void TakeCategory(CSettingsReader& reader, CCenterSettings& settings)
{
    CCenterSettings::Category category{TakeName(reader, settings.categories), {}};
    for (auto& course : reader.Tables("course", 0, kMostTables)) {
        auto name = TakeName(course, category.courses);
        category.courses.push_back({std::move(name), course.Texts("sections", kMostNameLetters)});
        course.End();
    }
    settings.categories.push_back(std::move(category));
    reader.End();
}

void TakeAll(CSettingsReader reader, CCenterSettings& settings)
{
    TakeCenter(reader.Table("center", true), settings);
    TakeTouch(reader.Table("touch", true), settings);
    TakeDefaults(reader.Table("defaults", false), settings);
    for (auto& bonus : reader.Tables("bonus", 1, kMostTables)) {
        TakeBonus(bonus, settings);
    }
    for (auto& station : reader.Tables("station", 1, CCenterSettings::kMostStations)) {
        TakeStation(station, settings);
    }
    for (auto& station : reader.Tables("lift_station", 0, CCircuit::kMostStations)) {
        TakeLiftStation(station, settings);
    }
    for (auto& category : reader.Tables("category", 1, kMostTables)) {
        TakeCategory(category, settings);
    }
    reader.End();
}

CDbStatus ReadAll(CFileHandle const& file, std::string const& path, std::string& text)
{
    ssize_t count = 0;
    for (std::size_t size = 0; size < text.size(); size += static_cast<std::size_t>(count)) {
        count = ::read(file.Get(), text.data() + size, text.size() - size);
        if (count < 0) {
            return FileFailure("Cannot read", path, errno);
        }
        if (count == 0) {
            text.resize(size);
        }
    }
    return {};
}

} // namespace

CDbStatus ParseCenterSettings(
    std::string_view text, std::string const& origin, CCenterSettings& settings)
{
    CFirstProblem problem(origin);
    try {
        auto const table = toml::parse(text);
        TakeAll(CSettingsReader(table, "", problem), settings);
    } catch (toml::parse_error const& error) {
        problem.Add(error.source().begin, std::string(error.description()));
    }
    return problem.Text().empty() ? CDbStatus() : CDbStatus(DbError::failed, problem.Text());
}

CDbStatus ReadCenterSettings(std::string const& path, CCenterSettings& settings)
{
    // Opening a pipe would wait for its other end.
    CFileHandle const file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat info = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &info) != 0) {
        return FileFailure("Cannot read", path, errno);
    }
    if (!S_ISREG(info.st_mode)) {
        return {DbError::failed, "Cannot read \"" + path + "\": it is not a file."};
    }
    if (info.st_size > kMostBytes) {
        return {
            DbError::failed, "Cannot read \"" + path + "\": no settings file is larger than 1 MB."};
    }
    std::string text(static_cast<std::size_t>(info.st_size), '\0');
    auto const status = ReadAll(file, path, text);
    return status ? ParseCenterSettings(text, path, settings) : status;
}
