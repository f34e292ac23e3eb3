#include "store/fitness/Convert.h"
#include "store/fitness/HeartRate.h"
#include "store/fitness/HydroStat.h"
#include "store/fitness/SkinFold.h"
#include "store/fitness/TapeMsr.h"

#include <gtest/gtest.h>

namespace
{

constexpr auto kMan = CBodyComp::sMale;
constexpr auto kWoman = CBodyComp::sFemale;
constexpr double kShown = 5e-7; // the published examples have six decimals

} // namespace

TEST(CalculatorTest, HeartRatesMatchTheWorkedExamples)
{
    struct Case
    {
        int sex, age;
        double rest, maximum, lower, upper, safe;
    };
    for (auto const& c : {Case{0, 30, 60, 179.6, 131.76, 155.68, 161.66},
             Case{255, 62, 75, 158, 124.8, 141.4, 145.55}, // any sex but 0 is a man's
             Case{1, 250, 70, 0, 70, 70, 70}, // nobody's age
             Case{1, 40, 200, 180, 200, 200, 200}}) { // a rest above the maximum
        CHeartRate const rates(static_cast<CHeartRate::sex>(c.sex), c.age, c.rest);
        EXPECT_NEAR(rates.PredictedMaximum(), c.maximum, 1e-9) << c.age;
        EXPECT_NEAR(rates.LowerLevel(), c.lower, 1e-9) << c.age;
        EXPECT_NEAR(rates.UpperLevel(), c.upper, 1e-9) << c.age;
        EXPECT_NEAR(rates.SafeMaximum(), c.safe, 1e-9) << c.age;
    }
}

// Truncation must show the whole number wherever the exact result is one.
TEST(CalculatorTest, WholeHeartRatesStayWhole)
{
    for (int age = 18; age <= 100; ++age) {
        for (int rest = 30; rest <= 200; ++rest) {
            CHeartRate const rates(CHeartRate::sMale, age, rest);
            int const reserve = std::max(0, 220 - age - rest);
            EXPECT_EQ(static_cast<int>(rates.LowerLevel()), rest + reserve * 60 / 100);
            EXPECT_EQ(static_cast<int>(rates.UpperLevel()), rest + reserve * 80 / 100);
            EXPECT_EQ(static_cast<int>(rates.SafeMaximum()), rest + reserve * 85 / 100);
        }
    }
}

TEST(CalculatorTest, SkinfoldsMatchTheWorkedExamples)
{
    struct Case
    {
        double (CSkinFold::*query)() const;
        CBodyComp::sex sex;
        int age;
        double percent;
        // A site that the query does not use must not move its result.
        double thigh = 99, chest = 99, abdomen = 99, triceps = 99, suprailiac = 99,
               midaxillary = 99, subscapular = 99;
    };
    auto const three = &CSkinFold::PercentFat_3;
    auto const four = &CSkinFold::PercentFat_4;
    auto const seven = &CSkinFold::PercentFat_7;
    for (auto const& c : {Case{three, kMan, 35, 15.647447, 16, 12, 22},
             Case{three, kWoman, 28, 24.001497, 27, 99, 99, 18, 15},
             Case{four, kMan, 30, 14.762530, 16, 99, 20, 10, 14},
             Case{four, kWoman, 35, 25.663350, 30, 99, 22, 20, 18},
             Case{seven, kMan, 45, 19.305745, 17, 15, 26, 12, 20, 14, 16},
             Case{seven, kWoman, 30, 22.211318, 26, 10, 20, 18, 14, 10, 12},
             Case{three, kMan, 20, 0, 0, 0, 0}, Case{four, kMan, 20, 0, 0, 99, 0, 0, 0},
             Case{seven, kMan, 20, 0, 0, 0, 0, 0, 0, 0, 0}}) {
        CSkinFold const folds(c.sex, c.age, 170, 70, c.thigh, c.chest, c.abdomen, c.triceps,
            c.suprailiac, c.midaxillary, c.subscapular);
        EXPECT_NEAR((folds.*c.query)(), c.percent, kShown) << c.age;
    }
}

TEST(CalculatorTest, HydrostaticWeighingMatchesTheWorkedExamples)
{
    double const warm = CConvert::CelsiusToFahrenheit(30);
    for (auto const& [weighing, siri, brozek] :
        {std::tuple(CHydroStat(kMan, 35, 180, 70, 92, 14.2, 7), 15.363106, 15.438262),
            {CHydroStat(kWoman, 25, 130, 64, 94, 10, 7.2), 23.496233, 22.947027},
            {CHydroStat(kMan, 50, 200, 71, warm, 15, 6), 11.847985, 12.192988},
            // Never less or more than can be stored.
            {CHydroStat(kMan, 30, 100, 70, 90, 1000, 0), 0.0, 0.0},
            {CHydroStat(kMan, 30, 150, 70, 90, 0, 1000), 99.0, 99.0}}) {
        EXPECT_NEAR(weighing.PercentFat(CHydroStat::cmSiri), siri, kShown) << siri;
        EXPECT_NEAR(weighing.PercentFat(CHydroStat::cmBrozek), brozek, kShown) << brozek;
    }
    // Shorter than about 45 inches the line of the residual volume is below zero: none is taken
    // off, so that height and age make no difference any more.
    auto const fat = [](double height) {
        return CHydroStat(kMan, 20, 90, height, 92, 3, 0).PercentFat(CHydroStat::cmSiri);
    };
    EXPECT_GT(fat(44), 0);
    EXPECT_EQ(fat(44), fat(30));
    EXPECT_NE(fat(60), fat(44));
}

TEST(CalculatorTest, BodyMeasurementsMatchTheWorkedExamples)
{
    for (auto const& [tape, percent] :
        {std::pair(CTapeMsr(kMan, 30, 170, 70, 34, 7, 40), 14.766967),
            {CTapeMsr(kWoman, 35, 130, 65, 30, 6, 39), 31.473423},
            {CTapeMsr(kMan, 30, 1, 60, 255, 1, 30), 99.0},
            {CTapeMsr(kMan, 30, 0, 60, 30, 7, 30), 0.0}}) { // no weight
        EXPECT_NEAR(tape.PercentFat(), percent, kShown);
    }
    // Past the turning point of its parabola a larger waist must not lower a woman's result.
    EXPECT_EQ(CTapeMsr(kWoman, 30, 200, 64, 255, 6, 45).PercentFat(),
        CTapeMsr(kWoman, 30, 200, 64, 46, 6, 45).PercentFat());
}
