#include "tools/DemoPerson.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

namespace
{

constexpr int kFirstMemberID = 1001;
constexpr std::size_t kMostEmail = 32; // letters of an e-mail address in a profile

constexpr std::array<std::string_view, 40> kWomen = {"Abigail", "Alice", "Amina", "Anna", "Beatriz",
    "Carol", "Chloe", "Claire", "Dana", "Diane", "Elena", "Emily", "Erin", "Fatima", "Grace",
    "Hannah", "Helen", "Ingrid", "Jasmine", "Joan", "Julia", "Karen", "Keiko", "Laura", "Linda",
    "Maria", "Mei", "Megan", "Nadia", "Nora", "Olivia", "Priya", "Rachel", "Rosa", "Ruth", "Sofia",
    "Susan", "Theresa", "Wendy", "Yolanda"};
constexpr std::array<std::string_view, 40> kMen = {"Aaron", "Ahmed", "Alan", "Andre", "Ben",
    "Brian", "Carlos", "Chen", "Daniel", "David", "Dmitri", "Edward", "Eric", "Felix", "George",
    "Hassan", "Henry", "Ivan", "Jack", "James", "Jorge", "Kenji", "Kevin", "Leo", "Luis", "Marcus",
    "Martin", "Nathan", "Oscar", "Paul", "Peter", "Rafael", "Raj", "Robert", "Samuel", "Scott",
    "Thomas", "Victor", "Walter", "William"};
constexpr std::array<std::string_view, 72> kLastNames
    = {"Adams", "Alvarez", "Andersen", "Baker", "Barnes", "Bennett", "Brooks", "Brown", "Campbell",
        "Carter", "Chan", "Chavez", "Clark", "Collins", "Cooper", "Cruz", "Davis", "Diaz",
        "Edwards", "Evans", "Fischer", "Foster", "Garcia", "Gomez", "Gray", "Green", "Gupta",
        "Hall", "Hansen", "Harris", "Hill", "Howard", "Hughes", "Ibrahim", "Jackson", "James",
        "Johnson", "Jones", "Kelly", "Khan", "Kim", "King", "Kowalski", "Larsen", "Lee", "Lewis",
        "Lopez", "Martin", "Miller", "Mitchell", "Moore", "Morales", "Murphy", "Nakamura", "Nelson",
        "Nguyen", "O'Brien", "Olsen", "Patel", "Perez", "Phillips", "Reed", "Rivera", "Roberts",
        "Sanchez", "Schmidt", "Singh", "Smith", "Torres", "Walker", "Weber", "Young"};
constexpr std::array<std::string_view, 16> kStreets = {"Alder St", "Bayshore Dr", "Birch Ave",
    "Cedar Ln", "Chestnut St", "College Way", "Dogwood Ct", "Elm St", "Harbor Rd", "Hillcrest Ave",
    "Lakeview Dr", "Maple St", "Orchard Ln", "Pine St", "Spruce Ct", "Water St"};
constexpr std::array<std::string_view, 4> kTowns
    = {"Port Ellery", "Marlow", "Cedar Point", "Eastbrook"};

std::string Number(CDemoRandom& random, int digits)
{
    std::string text;
    for (int i = 0; i < digits; ++i) {
        text += static_cast<char>('0' + random.Between(0, 9));
    }
    return text;
}

/// The block of numbers that no telephone has.
std::string Phone(CDemoRandom& random)
{
    return "(360) 555-01" + Number(random, 2);
}

void GiveName(CDemoPerson& person, CDemoRandom& random)
{
    person.male = random.Chance(0.48);
    person.firstName = person.male ? random.Pick(kMen) : random.Pick(kWomen);
    person.middleInit = random.Chance(0.7) ? std::string(1, char('A' + random.Between(0, 25))) : "";
    person.lastName = random.Pick(kLastNames);
    if (random.Chance(0.06)) {
        person.lastName += '-';
        person.lastName += random.Pick(kLastNames);
        person.lastName.resize(std::min<std::size_t>(person.lastName.size(), 20));
    }
}

void GiveAddress(CDemoPerson& person, CDemoRandom& random)
{
    person.address = std::to_string(random.Between(1, 98) * 10 + random.Between(1, 9)) + " ";
    person.address += random.Pick(kStreets);
    person.city = random.Pick(kTowns);
    person.zip = "9820" + Number(random, 1);
    person.phone = Phone(random);
    if (random.Chance(0.8)) {
        std::string name = person.firstName.substr(0, 1) + person.lastName;
        std::transform(name.begin(), name.end(), name.begin(),
            [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        std::erase(name, '\'');
        auto const rest = std::to_string(person.memberID) + "@mail.example";
        person.email = name.substr(0, kMostEmail - rest.size()) + rest;
    }
    person.emergencyName = random.Pick(random.Chance(0.5) ? kMen : kWomen);
    person.emergencyName += " " + person.lastName;
    person.emergencyPhone = Phone(random);
    person.physician = "Dr. ";
    person.physician += random.Pick(kLastNames);
}

void GiveBody(CDemoPerson& person, CDemoRandom& random, CEFOleDateTime const& today)
{
    double const age
        = std::clamp(random.Chance(0.6) ? random.Around(23, 4) : random.Around(48, 12), 17.0, 88.0);
    person.birthday = CEFOleDateTime::FromSeconds(
        today.Seconds() - static_cast<std::int64_t>(age * 365.25) * CEFOleDateTime::kDay);
    person.birthday.Midnight();
    person.height = std::clamp(random.Around(person.male ? 69.5 : 64, 2.6), 55.0, 82.0);
    double const fat = person.male ? 19 + age * 0.08 : 27 + age * 0.08;
    person.percentFat = std::clamp(random.Around(fat, 5), person.male ? 10.0 : 16.0, 48.0);
    double const lean = std::pow(person.height, 2) * (person.male ? 0.0295 : 0.0255);
    person.weight = std::clamp(lean / (1 - person.percentFat / 100), 85.0, 380.0);
    person.strength = std::clamp(random.Around(person.male ? 0.3 : 0.2, 0.07), 0.08, 0.6);
    person.visits = std::clamp(random.Waiting(0.8), 0.1, 5.0);
    person.progress = std::clamp(random.Around(0.45, 0.35), -0.3, 1.0);
    constexpr std::array kHours = {6, 7, 8, 12, 12, 16, 17, 17, 18, 19};
    person.hour = random.Pick(kHours);
}

void GiveHistory(CDemoPerson& person, CDemoRandom& random)
{
    for (unsigned bit = 0; bit < 8; ++bit) {
        person.goals |= random.Chance(0.33) ? 1U << bit : 0U;
    }
    double const risk = std::clamp((person.AgeAt(person.enrolled) - 15) / 300.0, 0.01, 0.25);
    for (unsigned bit = 0; bit < 21; ++bit) {
        person.medicalHistory |= random.Chance(risk) ? 1U << bit : 0U;
    }
    if (person.percentFat > (person.male ? 28 : 38)) {
        person.medicalHistory |= 0x80000U; // overweight
        person.goals |= 0x10U; // wants to lose weight
    }
}

/// Membership within the last three years: most leave after some months, some stay.
void GiveMembership(CDemoPerson& person, CDemoRandom& random, CEFOleDateTime const& today)
{
    auto const daysAgo = static_cast<std::int64_t>(random.Share() * 3 * 365);
    person.enrolled = CEFOleDateTime::FromSeconds(today.Seconds() - daysAgo * CEFOleDateTime::kDay);
    person.enrolled.Midnight();
    person.period = static_cast<std::uint8_t>(random.Between(0, 3));
    constexpr std::array<int, 4> kMonths = {1, 3, 6, 12};
    auto const stays = static_cast<std::int64_t>(30 + random.Waiting(330));
    person.expires = person.enrolled;
    // Renewed by whole periods until the wish to train is over, or beyond today.
    while (person.expires.Seconds() < person.enrolled.Seconds() + stays * CEFOleDateTime::kDay
        && person.expires < today) {
        person.expires.AddMonths(kMonths[person.period]);
    }
    person.current = !(person.expires < today);
    person.lastDay = std::min(person.expires, today);
    person.incentive = random.Chance(0.25);
    person.release = random.Chance(0.93);
    person.employee = random.Chance(0.05);
}

CClassSlot MakeClass(CDemoRandom& random, CCenterSettings const& center, CDemoPerson const& person)
{
    CClassSlot slot;
    auto const& category = random.Pick(center.categories);
    slot.category = category.name;
    if (!category.courses.empty()) {
        auto const& course = random.Pick(category.courses);
        slot.course = course.name;
        slot.section = course.sections.empty() ? "" : random.Pick(course.sections);
    }
    slot.gradeStat = !person.current
        ? (random.Chance(0.8) ? CDAODef::gsSatisfactory : CDAODef::gsWithdrawn)
        : CDAODef::gsInProgress;
    slot.orientBonus = random.Chance(0.7);
    slot.reEvalBonuses = random.Between(0, 2);
    slot.otherBonuses = random.Between(0, 3);
    return slot;
}

} // namespace

int CDemoPerson::AgeAt(CEFOleDateTime const& day) const
{
    return static_cast<int>((day.DayCount() - birthday.DayCount()) / 365.25);
}

double CDemoPerson::TrainingAt(CEFOleDateTime const& day) const
{
    double const years = std::max(0.0, (day.DayCount() - enrolled.DayCount()) / 365.25);
    return years / (1 + 0.6 * years) * std::min(1.0, visits / 1.5);
}

CDemoPerson MakeDemoPerson(
    CDemoRandom& random, int n, CCenterSettings const& center, CEFOleDateTime const& today)
{
    CDemoPerson person;
    person.memberID = kFirstMemberID + n;
    // A prime modulus keeps the numbers apart, and out of any order.
    person.workoutNumber
        = static_cast<std::int32_t>(100000 + static_cast<std::int64_t>(n) * 7919 % 899981);
    GiveName(person, random);
    GiveAddress(person, random);
    GiveBody(person, random, today);
    GiveMembership(person, random, today);
    GiveHistory(person, random);
    double const share = random.Share();
    int const classes = share < 0.06 ? 0 : share < 0.78 ? 1 : share < 0.95 ? 2 : 3;
    for (int i = 0; i < classes; ++i) {
        auto slot = MakeClass(random, center, person);
        slot.classIndex = static_cast<std::uint8_t>(i + 1);
        auto const same = [&](CClassSlot const& other) {
            return other.category == slot.category && other.course == slot.course
                && other.section == slot.section;
        };
        if (std::none_of(person.classes.begin(), person.classes.end(), same)) {
            slot.classIndex = static_cast<std::uint8_t>(person.classes.size() + 1);
            person.classes.push_back(slot);
        }
    }
    return person;
}
