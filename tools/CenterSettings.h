#pragma once

#include "platform/db/Status.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What a new centre starts with, checked: every value fits its record.
struct CCenterSettings
{
    struct Bonus
    {
        std::string name;
        std::int16_t points;
    };
    struct Station
    {
        std::string name;
        std::string abbreviation;
    };
    struct LiftStation
    {
        std::string name;
        double least; ///< pounds
        double greatest; ///< pounds
    };
    struct Course
    {
        std::string name;
        std::vector<std::string> sections;
    };
    struct Category
    {
        std::string name;
        std::vector<Course> courses;
    };

    /// The first row of the station table counts circuits, the others are the twelve stations of a
    /// workout record.
    static constexpr std::size_t kMostStations = 13;

    std::string name;
    std::string address1;
    std::string address2;
    std::string city;
    std::string state;
    std::string zip;
    std::string phone;
    std::string email;
    std::string web;
    std::int16_t minMinutes = 0;
    std::uint8_t minCircuits = 0;
    std::uint32_t panelColor = 0; ///< 0xBBGGRR
    std::uint32_t frameColor = 0; ///< 0xBBGGRR
    std::uint8_t gradeStatus = 0; ///< a CDAODef::gradestat
    std::uint8_t reEvalBonuses = 0;
    std::uint8_t otherBonuses = 0;
    bool orientBonus = false;
    std::vector<Bonus> bonuses; ///< at least one
    std::vector<Station> stations; ///< 1 to kMostStations
    std::vector<LiftStation> liftStations; ///< at most CCircuit::kMostStations
    std::vector<Category> categories; ///< at least one
};

/// Reads a settings text. The failure tells the first thing wrong as "ORIGIN:LINE:COLUMN: what".
CDbStatus ParseCenterSettings(
    std::string_view text, std::string const& origin, CCenterSettings& settings);

/// Reads a settings file of at most 1 MB.
CDbStatus ReadCenterSettings(std::string const& path, CCenterSettings& settings);
