#include "reports/norms/Norms.h"

#include <gtest/gtest.h>
#include <set>
#include <tuple>

namespace
{

/// The band of a value by name; "-" when there is no norm for the age.
std::string BandOf(Measure measure, bool isMale, int age, double value)
{
    auto const& norm = NormOf(measure);
    auto const* const row = norm.Find(isMale, age);
    return row == nullptr ? "-" : norm.m_lstBands[row->BandOf(value)].m_strName;
}

constexpr bool kMan = true;
constexpr bool kWoman = false;

std::string const kNorm = R"(test = "pull_ups"
title = "Pull-ups"
unit = ""
better = "higher"
whole = true
scale = [0, 30]
[source]
authors = "Doe"
year = 1999
title = "Bars"
publisher = "Elm"
note = "adults"
[[band]]
name = "few"
remark = "More next time."
[[band]]
name = "many"
remark = "Well done."
[[row]]
sex = "both"
ages = [18, 29]
borders = [8]
[[row]]
sex = "men"
ages = [30, 49]
borders = [6]
[[row]]
sex = "women"
ages = [30, 39]
borders = [5]
)";

} // namespace

TEST(NormTest, EveryNormOfTheProgramIsWhole)
{
    std::set<std::string> tests;
    for (auto const text : NormTexts()) {
        CNorm norm;
        auto const status = ParseNorm(text, norm);
        EXPECT_TRUE(status) << norm.m_strTest << ": " << status.Text();
        EXPECT_TRUE(tests.insert(norm.m_strTest).second) << norm.m_strTest;
        EXPECT_NE(norm.m_strNone.empty(), norm.m_lstRows.empty()) << norm.m_strTest;
    }
}

TEST(NormTest, RefusesDamagedFilesAndNamesTheFault)
{
    CNorm norm;
    ASSERT_TRUE(ParseNorm(kNorm, norm)) << ParseNorm(kNorm, norm).Text();
    EXPECT_EQ(norm.ShortSource(), "Doe, 1999");

    for (auto const& [from, to, fault] : {
             std::tuple{"borders = [6]", "borders = []", "one less"},
             {"borders = [6]", "borders = [6, 7]", "one less"},
             {"borders = [6]", "borders = [6.5]", "whole numbers"},
             {"borders = [6]", "borders = [0]", "within the scale"},
             {"borders = [6]", "borders = [30]", "within the scale"},
             {"borders = [6]", "borders = [nan]", "list of numbers"},
             {"borders = [6]", "borders = \"6\"", "list of numbers"},
             {"ages = [30, 49]", "ages = [29, 49]", "overlap"},
             {"ages = [30, 49]", "ages = [31, 49]", "gap"},
             {"ages = [30, 39]", "ages = [39, 30]", "first and the last"},
             {"ages = [30, 39]", "ages = [30, 39.5]", "first and the last"},
             {"ages = [30, 39]", "ages = [30, 200]", "first and the last"},
             {"sex = \"both\"", "sex = \"all\"", "choices"},
             {"better = \"higher\"", "better = \"more\"", "choices"},
             {"better = \"higher\"", "better = \"higher\"\naim = \"few\"", "\"aim\" must be"},
             {"better = \"higher\"", "better = \"neither\"\naim = \"x\"", "\"aim\" must be"},
             {"scale = [0, 30]", "scale = [30, 0]", "two ends"},
             {"whole = true", "whole = 1", "wrong kind"},
             {"year = 1999", "year = 99", "year"},
             {"authors = \"Doe\"", "", "\"authors\" is missing"},
             {"note = \"adults\"", "note = \"\"", "\"note\" is empty"},
             {"remark = \"Well done.\"", "remarks = \"Well done.\"", "\"remark\" is missing"},
             {"publisher = \"Elm\"", "publisher = \"Elm\"\ncity = \"X\"", "unknown key \"city\""},
             {"[[row]]\nsex = \"both\"", "[row]\nsex = \"both\"", "Line"},
             {"unit = \"\"", "unit = ", "Line 3"},
         }) {
        auto text = kNorm;
        text.replace(text.find(from), std::string(from).size(), to);
        auto const status = ParseNorm(text, norm);
        EXPECT_NE(status.Text().find(fault), std::string::npos) << to << ": " << status.Text();
        EXPECT_EQ(status.Text().find("Line "), 0U);
    }
    auto aimed = kNorm;
    aimed.replace(aimed.find("\"higher\""), 8, "\"neither\"\naim = \"many\"");
    ASSERT_TRUE(ParseNorm(aimed, norm)) << ParseNorm(aimed, norm).Text();
    EXPECT_EQ(norm.OutsideAim(*norm.Find(kMan, 20), 5), 3);
    EXPECT_EQ(norm.OutsideAim(*norm.Find(kMan, 20), 8), 0);
    auto threeBands = kNorm;
    threeBands.insert(threeBands.find("[[row]]"), "[[band]]\nname = \"x\"\nremark = \"x\"\n");
    threeBands.replace(threeBands.find("[8]"), 3, "[8, 8]");
    EXPECT_NE(ParseNorm(threeBands, norm).Text().find("must rise"), std::string::npos);
    for (std::size_t size = 0; size + 1 < kNorm.size(); size += 7) {
        EXPECT_FALSE(ParseNorm(kNorm.substr(0, size), norm) && norm.m_lstRows.size() == 3) << size;
    }
}

/// Every count from 0 to 99 against the ranges as the book prints them.
TEST(NormTest, ReadsCountsAsTheyArePrinted)
{
    struct CPrinted
    {
        int from;
        int to;
        char const* name;
    };
    for (auto const& [from, to, name] : {CPrinted{0, 16, "far below average"},
             {17, 22, "well below average"}, {23, 26, "below average"}, {27, 29, "average"},
             {30, 34, "above average"}, {35, 41, "good"}, {42, 99, "excellent"}}) {
        for (int count = from; count <= to; ++count) {
            EXPECT_EQ(BandOf(Measure::sitUps, kMan, 40, count), name) << count;
        }
    }
    for (auto const& [from, to, name] : {CPrinted{40, 58, "much lower than most"},
             {59, 63, "lower than most"}, {64, 78, "like most"}, {79, 85, "higher than most"},
             {86, 200, "much higher than most"}}) {
        for (int rate = from; rate <= to; ++rate) {
            EXPECT_EQ(BandOf(Measure::restingHeartRate, kWoman, 47, rate), name) << rate;
        }
    }
    // Printed as 51-76, 79-85, 88-94, 96-102: what lies between is of the slower side.
    for (auto const& [from, to, name] : {CPrinted{51, 76, "excellent"}, {77, 85, "good"},
             {86, 94, "above average"}, {95, 200, "average or below"}}) {
        for (int rate = from; rate <= to; ++rate) {
            EXPECT_EQ(BandOf(Measure::stepTest, kMan, 30, rate), name) << rate;
        }
    }
}

TEST(NormTest, ABorderBelongsToTheBandThatBeginsThere)
{
    for (auto const& [measure, isMale, age, value, name] : {
             std::tuple{Measure::systolic, kMan, 18, 119.0, "normal"},
             {Measure::systolic, kMan, 18, 120.0, "elevated"},
             {Measure::systolic, kWoman, 90, 129.0, "elevated"},
             {Measure::systolic, kWoman, 90, 130.0, "stage 1"},
             {Measure::systolic, kMan, 50, 139.0, "stage 1"},
             {Measure::systolic, kMan, 50, 140.0, "stage 2"},
             {Measure::systolic, kMan, 50, 180.0, "stage 2"},
             {Measure::systolic, kMan, 50, 181.0, "very high"},
             {Measure::diastolic, kMan, 50, 79.0, "normal"},
             {Measure::diastolic, kMan, 50, 80.0, "stage 1"},
             {Measure::diastolic, kMan, 50, 89.0, "stage 1"},
             {Measure::diastolic, kMan, 50, 90.0, "stage 2"},
             {Measure::diastolic, kMan, 50, 120.0, "stage 2"},
             {Measure::diastolic, kMan, 50, 121.0, "very high"},
             {Measure::trunkFlexion, kWoman, 60, 14.99, "below average"},
             {Measure::trunkFlexion, kWoman, 60, 15.0, "average"},
             {Measure::trunkFlexion, kWoman, 60, 17.0, "above average"},
             {Measure::trunkFlexion, kWoman, 60, 20.0, "well above average"},
             {Measure::aerobicCapacity, kWoman, 35, 22.79, "very low"},
             {Measure::aerobicCapacity, kWoman, 35, 22.8, "low"},
             {Measure::aerobicCapacity, kWoman, 35, 26.99, "low"},
             {Measure::aerobicCapacity, kWoman, 35, 27.0, "fair"},
             {Measure::aerobicCapacity, kWoman, 35, 31.5, "good"},
             {Measure::aerobicCapacity, kWoman, 35, 35.7, "excellent"},
             {Measure::aerobicCapacity, kWoman, 35, 40.0, "excellent"},
             {Measure::aerobicCapacity, kWoman, 35, 40.1, "superior"},
             {Measure::bodyMassIndex, kMan, 33, 18.499, "below the normal range"},
             {Measure::bodyMassIndex, kMan, 33, 18.5, "normal range"},
             {Measure::bodyMassIndex, kMan, 33, 24.95, "normal range"},
             {Measure::bodyMassIndex, kMan, 33, 25.0, "above the normal range"},
             {Measure::bodyMassIndex, kMan, 33, 30.0, "obesity class I"},
             {Measure::bodyMassIndex, kMan, 33, 35.0, "obesity class II"},
             {Measure::bodyMassIndex, kMan, 33, 40.0, "obesity class III"},
             {Measure::waistHipRatio, kMan, 33, 0.8999, "below the border"},
             {Measure::waistHipRatio, kMan, 33, 0.90, "at or above the border"},
             {Measure::waistHipRatio, kWoman, 33, 0.8499, "below the border"},
             {Measure::waistHipRatio, kWoman, 33, 0.85, "at or above the border"},
             {Measure::percentFat, kWoman, 41, 22.99, "below the healthy range"},
             {Measure::percentFat, kWoman, 41, 23.0, "healthy range"},
             {Measure::percentFat, kWoman, 41, 34.0, "above the healthy range"},
             {Measure::percentFat, kWoman, 41, 40.0, "well above the healthy range"},
         }) {
        EXPECT_EQ(BandOf(measure, isMale, age, value), name) << int(measure) << ' ' << value;
    }
}

TEST(NormTest, HasNoNormForAgesOutsideItsTable)
{
    struct CAges
    {
        Measure measure;
        int first;
        int last;
    };
    for (auto const& [measure, first, last] :
        {CAges{Measure::restingHeartRate, 20, 120}, {Measure::systolic, 18, 120},
            {Measure::diastolic, 18, 120}, {Measure::trunkFlexion, 18, 120},
            {Measure::sitUps, 18, 120}, {Measure::stepTest, 18, 120},
            {Measure::aerobicCapacity, 13, 120}, {Measure::bodyMassIndex, 20, 120},
            {Measure::waistHipRatio, 18, 120}, {Measure::percentFat, 20, 79}}) {
        for (bool const isMale : {true, false}) {
            for (int age = 0; age <= 130; ++age) {
                EXPECT_EQ(NormOf(measure).Find(isMale, age) != nullptr, first <= age && age <= last)
                    << int(measure) << ' ' << age;
            }
        }
    }
    // The age at which the next row begins.
    EXPECT_EQ(BandOf(Measure::sitUps, kMan, 65, 31), "good");
    EXPECT_EQ(BandOf(Measure::sitUps, kMan, 66, 31), "excellent");
    for (auto const measure : {Measure::abCrunches, Measure::ergometer}) {
        EXPECT_EQ(NormOf(measure).Find(true, 40), nullptr);
        EXPECT_FALSE(NormOf(measure).m_strNone.empty());
    }
}
