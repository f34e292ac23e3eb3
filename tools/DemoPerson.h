#pragma once

#include "store/EFOleDateTime.h"
#include "store/services/MemberServices.h"
#include "tools/CenterSettings.h"
#include "tools/DemoRandom.h"

#include <string>
#include <vector>

/// A member that nobody knows, with a body, habits and a history of membership that all of the
/// member's records follow from.
struct CDemoPerson
{
    std::int32_t memberID = 0;
    std::int32_t workoutNumber = 0;
    bool male = false;
    std::string firstName;
    std::string middleInit;
    std::string lastName;
    std::string address;
    std::string city;
    std::string zip;
    std::string phone;
    std::string email;
    std::string emergencyName;
    std::string emergencyPhone;
    std::string physician;
    bool release = false;
    bool employee = false;
    CEFOleDateTime birthday;
    std::uint32_t goals = 0;
    std::uint32_t medicalHistory = 0;

    CEFOleDateTime enrolled;
    CEFOleDateTime expires;
    CEFOleDateTime lastDay; ///< of training: today, or the day on which the membership ends
    std::uint8_t period = 0;
    bool incentive = false;
    bool current = false;
    std::vector<CClassSlot> classes; ///< with the indexes 1, 2, 3

    double height = 0; ///< inches
    double weight = 0; ///< pounds, at the start
    double percentFat = 0; ///< at the start
    double strength = 0; ///< share of what a station can take, at the start
    double visits = 0; ///< a week, on average
    double progress = 0; ///< -0.3 to 1: what a year of training changes
    int hour = 0; ///< of the usual check-in

    int AgeAt(CEFOleDateTime const& day) const;
    /// Years of training until a day, each year weighing less than the one before.
    double TrainingAt(CEFOleDateTime const& day) const;
};

/// Makes the n-th member, from 0 on. A seed gives the same members on the same day.
CDemoPerson MakeDemoPerson(
    CDemoRandom& random, int n, CCenterSettings const& center, CEFOleDateTime const& today);
