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

struct Folds
{
    double thigh = 0, chest = 0, abdomen = 0, triceps = 0, suprailiac = 0, midaxillary = 0,
           subscapular = 0;
};

CSkinFold SkinFold(CBodyComp::sex sex, int age, Folds const& f)
{
    return {sex, age, 170, 70, f.thigh, f.chest, f.abdomen, f.triceps, f.suprailiac, f.midaxillary,
        f.subscapular};
}

} // namespace

TEST(CalculatorTest, HeartRatesMatchTheWorkedExamples)
{
    struct Case
    {
        CHeartRate::sex sex;
        int age;
        double rest, maximum, lower, upper, safe;
    };
    for (auto const& c : {Case{CHeartRate::sMale, 40, 70, 180, 136, 158, 163.5},
             Case{CHeartRate::sFemale, 30, 60, 179.6, 131.76, 155.68, 161.66},
             Case{CHeartRate::sMale, 62, 75, 158, 124.8, 141.4, 145.55},
             Case{CHeartRate::sMale, 250, 70, 0, 70, 70, 70}, // nobody's age
             Case{CHeartRate::sMale, 40, 200, 180, 200, 200, 200}, // a rest above the maximum
             Case{CHeartRate::sMale, 20, 0, 200, 120, 160, 170}}) {
        CHeartRate const rates(c.sex, c.age, c.rest);
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

TEST(CalculatorTest, AnySexByteButZeroIsAMans)
{
    for (int const byte : {1, 2, 255}) {
        CHeartRate const rates(static_cast<CHeartRate::sex>(byte), 40, 70);
        EXPECT_EQ(rates.PredictedMaximum(), 180) << byte;
    }
}

TEST(CalculatorTest, SkinfoldsMatchTheWorkedExamples)
{
    EXPECT_NEAR(SkinFold(kMan, 35, {.thigh = 16, .chest = 12, .abdomen = 22}).PercentFat_3(),
        15.647447, kShown);
    EXPECT_NEAR(SkinFold(kWoman, 28, {.thigh = 27, .triceps = 18, .suprailiac = 15}).PercentFat_3(),
        24.001497, kShown);
    EXPECT_NEAR(SkinFold(kMan, 55, {.thigh = 20, .chest = 24, .abdomen = 36}).PercentFat_3(),
        26.269740, kShown);
    EXPECT_NEAR(SkinFold(kMan, 30, {.thigh = 16, .abdomen = 20, .triceps = 10, .suprailiac = 14})
                    .PercentFat_4(),
        14.762530, kShown);
    EXPECT_NEAR(SkinFold(kWoman, 35, {.thigh = 30, .abdomen = 22, .triceps = 20, .suprailiac = 18})
                    .PercentFat_4(),
        25.663350, kShown);
    EXPECT_NEAR(SkinFold(kMan, 60, {.thigh = 18, .abdomen = 32, .triceps = 15, .suprailiac = 25})
                    .PercentFat_4(),
        26.052430, kShown);
    EXPECT_NEAR(SkinFold(kMan, 45, {17, 15, 26, 12, 20, 14, 16}).PercentFat_7(), 19.305745, kShown);
    EXPECT_NEAR(
        SkinFold(kWoman, 30, {26, 10, 20, 18, 14, 10, 12}).PercentFat_7(), 22.211318, kShown);
    EXPECT_NEAR(
        SkinFold(kWoman, 58, {40, 24, 36, 28, 26, 22, 24}).PercentFat_7(), 36.239061, kShown);
}

TEST(CalculatorTest, EachSkinfoldQueryUsesItsSitesAlone)
{
    // A site that a query does not use must not move its result.
    auto const changed = [](CBodyComp::sex sex, double (CSkinFold::*query)() const) {
        std::string used;
        Folds const base{20, 20, 20, 20, 20, 20, 20};
        char const* const names = "tcaTsmS";
        int i = 0;
        for (auto site : {&Folds::thigh, &Folds::chest, &Folds::abdomen, &Folds::triceps,
                 &Folds::suprailiac, &Folds::midaxillary, &Folds::subscapular}) {
            Folds other = base;
            other.*site = 30;
            if ((SkinFold(sex, 40, other).*query)() > (SkinFold(sex, 40, base).*query)()) {
                used += names[i];
            }
            ++i;
        }
        return used;
    };
    EXPECT_EQ(changed(kMan, &CSkinFold::PercentFat_3), "tca");
    EXPECT_EQ(changed(kWoman, &CSkinFold::PercentFat_3), "tTs");
    EXPECT_EQ(changed(kMan, &CSkinFold::PercentFat_4), "taTs");
    EXPECT_EQ(changed(kWoman, &CSkinFold::PercentFat_4), "taTs");
    EXPECT_EQ(changed(kMan, &CSkinFold::PercentFat_7), "tcaTsmS");
    EXPECT_EQ(changed(kWoman, &CSkinFold::PercentFat_7), "tcaTsmS");
}

TEST(CalculatorTest, HydrostaticWeighingMatchesTheWorkedExamples)
{
    CHydroStat const man(kMan, 35, 180, 70, 92, 14.2, 7);
    EXPECT_NEAR(man.PercentFat(CHydroStat::cmSiri), 15.363106, kShown);
    EXPECT_NEAR(man.PercentFat(CHydroStat::cmBrozek), 15.438262, kShown);
    CHydroStat const woman(kWoman, 25, 130, 64, 94, 10, 7.2);
    EXPECT_NEAR(woman.PercentFat(CHydroStat::cmSiri), 23.496233, kShown);
    EXPECT_NEAR(woman.PercentFat(CHydroStat::cmBrozek), 22.947027, kShown);
    CHydroStat const older(kMan, 50, 200, 71, CConvert::CelsiusToFahrenheit(30), 15, 6);
    EXPECT_NEAR(older.PercentFat(CHydroStat::cmSiri), 11.847985, kShown);
    EXPECT_NEAR(older.PercentFat(CHydroStat::cmBrozek), 12.192988, kShown);
}

// Shorter than about 45 inches the line of the residual volume is below zero: none is taken off,
// so that height and age make no difference any more.
TEST(CalculatorTest, TheVerySmallHaveNoResidualVolume)
{
    auto const fat = [](int age, double height) {
        return CHydroStat(kMan, age, 90, height, 92, 3, 0).PercentFat(CHydroStat::cmSiri);
    };
    EXPECT_GT(fat(20, 44), 0);
    EXPECT_EQ(fat(20, 44), fat(20, 30));
    EXPECT_NE(fat(20, 60), fat(20, 44));
}

TEST(CalculatorTest, BodyMeasurementsMatchTheWorkedExamples)
{
    EXPECT_NEAR(CTapeMsr(kMan, 30, 170, 70, 34, 7, 40).PercentFat(), 14.766967, kShown);
    EXPECT_NEAR(CTapeMsr(kMan, 50, 205, 69, 40, 7.25, 40).PercentFat(), 26.609193, kShown);
    EXPECT_NEAR(CTapeMsr(kWoman, 35, 130, 65, 30, 6, 39).PercentFat(), 31.473423, kShown);
    EXPECT_NEAR(CTapeMsr(kWoman, 55, 150, 63, 35, 6, 43).PercentFat(), 43.290527, kShown);
}

TEST(CalculatorTest, ResultsNeverLeaveWhatCanBeStored)
{
    EXPECT_EQ(SkinFold(kMan, 20, {}).PercentFat_3(), 0);
    EXPECT_EQ(SkinFold(kMan, 20, {}).PercentFat_4(), 0);
    EXPECT_EQ(SkinFold(kMan, 20, {}).PercentFat_7(), 0);
    EXPECT_EQ(CHydroStat(kMan, 30, 100, 70, 90, 1000, 0).PercentFat(CHydroStat::cmSiri), 0);
    EXPECT_EQ(CHydroStat(kMan, 30, 150, 70, 90, 0, 1000).PercentFat(CHydroStat::cmSiri), 99);
    EXPECT_EQ(CTapeMsr(kMan, 30, 1, 60, 255, 1, 30).PercentFat(), 99);
    EXPECT_EQ(CTapeMsr(kMan, 30, 0, 60, 30, 7, 30).PercentFat(), 0) << "no weight";
    // Past the turning point of its parabola a larger waist must not lower a woman's result.
    EXPECT_EQ(CTapeMsr(kWoman, 30, 200, 64, 255, 6, 45).PercentFat(),
        CTapeMsr(kWoman, 30, 200, 64, 46, 6, 45).PercentFat());
}
