#include "store/fitness/HydroStat.h"
#include "store/fitness/TapeMsr.h"
#include "store/sets/DAOCirc.h"
#include "store/sets/DAOEvalBodyComp.h"
#include "store/sets/DAOLiftStn.h"
#include "tests/reports/ReportFixture.h"
#include "tests/reports/ReportLines.h"
#include "tests/store/ForeignProgram.h"

#include <algorithm>
#include <cmath>

namespace
{

CEFOleDateTime const kSpring(2026, 3, 1, 9, 30, 15);
CEFOleDateTime const kFall(2026, 11, 2, 17, 0, 1);
constexpr std::int32_t kJo = 7; // born 1/1/1990, a man

class FitnessReportTest : public CReportTest
{
protected:
    void SetUp() override
    {
        CReportTest::SetUp();
        AddJo();
    }

    static CDbStatus Try(CReportJob const& job) { return BuildReport(job, {}, s_report); }
    /// Builds it and gives its lines, or why there is none.
    static std::string Made(CReportJob const& job)
    {
        auto const status = Try(job);
        return status ? ReportLines::Of(s_report) : status.Text();
    }
    template <typename Block>
    static std::vector<Block> Blocks()
    {
        return ReportLines::Blocks<Block>(s_report);
    }
    static inline CReport s_report; ///< that was built last

    static void AddJo()
    {
        AddMember(kJo);
        Run(DataFile::center,
            "INSERT INTO lift_stations (name, least_lift, greatest_lift) VALUES "
            "('Leg Press', 1, 999), ('', 1, 999), ('Chest Press', 1, 999), ('Row', 1, 999)");
    }

    static void AddEval(int number, CEFOleDateTime const& when, std::string const& values,
        std::string const& lifts = "lift1 = 0", std::string const& folds = "percent_fat = 0")
    {
        auto const id = std::to_string(number);
        AddRecord<CDAOSmEval>(kJo, 0, when, id);
        AddRecord<CDAOEvalBodyComp>(kJo, 0, when, id);
        AddRecord<CDAOCirc>(kJo, 0, when, id);
        Run(DataFile::member, "UPDATE evaluations SET " + values + " WHERE eval_id = " + id);
        Run(DataFile::member, "UPDATE lifts SET " + lifts + " WHERE eval_id = " + id);
        Run(DataFile::member, "UPDATE skinfolds SET " + folds + " WHERE eval_id = " + id);
    }
    static void AddBodyComp(CEFOleDateTime const& when, std::string const& values)
    {
        AddRecord<CDAOBodyComp>(kJo, 0, when, "0");
        Run(DataFile::member,
            "UPDATE body_compositions SET " + values
                + " WHERE id = (SELECT max(id) FROM body_compositions)");
    }
    /// Two of each kind that differ in everything, and an evaluation between them.
    static void AddTwoOfEach()
    {
        AddEval(1, kSpring,
            "height = 70, weight = 180.5, activity_level = 2, resting_heart_rate = 72, "
            "systolic = 135, diastolic = 79, trunk_flexion = 12.5, sit_ups = 30, step_test = 110, "
            "run_seconds = 750, ergometer = 12",
            "lift1 = 100.5, lift2 = 50, lift3 = 90", "percent_fat = 20.5");
        AddEval(3, {2026, 6, 6}, "height = 70, weight = 190");
        AddEval(2, kFall,
            "height = 70.5, weight = 175.2, activity_level = 3, resting_heart_rate = 66, "
            "systolic = 125, diastolic = 81, trunk_flexion = 13, sit_ups = 29, step_test = 100, "
            "run_seconds = 701, ergometer = 14",
            "lift1 = 120.5, lift2 = 50, lift3 = 80", "percent_fat = 18.1");
        AddBodyComp(kSpring, "height = 70, weight = 180.5, percent_fat = 21, waist = 36, hip = 40");
        AddBodyComp(kFall, "height = 70, weight = 174, percent_fat = 19, waist = 35, hip = 41");
    }

    static CReportJob One(CDAOReport::rpttype type, CEFOleDateTime const& when = kSpring)
    {
        return {type, kJo, when};
    }
    static CReportJob Two(CDAOReport::rpttype type) { return {type, kJo, kSpring, kFall}; }
    static std::vector<CReportJob> AllFour()
    {
        return {One(CDAOReport::rtEvalInterpretation), Two(CDAOReport::rtEvalComparison),
            One(CDAOReport::rtBodyCompInterpretation), Two(CDAOReport::rtBodyCompComparison)};
    }

    static void ExpectLines(std::string const& lines, std::vector<std::string> const& expected)
    {
        for (auto const& line : expected) {
            EXPECT_NE(lines.find(line), std::string::npos) << line << "\nis not in\n" << lines;
        }
    }
    static std::string Text(std::string const& sql)
    {
        CRowBlock rows;
        auto const status = Database(DataFile::member).Query(sql, {}, rows);
        EXPECT_TRUE(status) << status.Text();
        return status ? std::string(rows.Row(0).Text(rows.Row(0).Cell(0))) : "";
    }
    /// A row of a comparison, of a column of the tables.
    static std::string Compared(
        std::string const& title, std::string const& from, std::string const& value, int decimals)
    {
        auto const format = "%." + std::to_string(decimals) + "f";
        auto const a = "(SELECT 1.0 * " + value + " FROM " + from + " ORDER BY id LIMIT 1)";
        auto const b = "(SELECT 1.0 * " + value + " FROM " + from + " ORDER BY id DESC LIMIT 1)";
        auto const change = "printf('%+" + format.substr(1) + "', " + b + " - " + a + ")";
        return "|" + title + "|"
            + Text("SELECT printf('" + format + "', " + a + ") || '|' || printf('" + format + "', "
                + b + ") || '|' || " + change + " || '|' || printf('%+.1f %%', 100.0 * (" + b
                + " - " + a + ") / " + a + ")");
    }
};

} // namespace

TEST_F(FitnessReportTest, InterpretsTheTestsThatWereMade)
{
    AddTwoOfEach();
    auto const lines = Made(One(CDAOReport::rtEvalInterpretation));
    ExpectLines(lines,
        {"\nDoe, Jo, member ID 7\nEvaluation of 03/01/2026\nSex: Male\n", "\nAge on that day: 36\n",
            "\nActivity level: Moderately Active\n",
            // (220 - 36 - 72) * 60, 80 and 85 % + 72.
            "\nTraining range: 139 to 161 beats a minute\nSafe maximum: 167 beats a minute\n",
            "\n[Body mass index] 25.9 kg/m2: above the normal range <Norm for people from 20 ",
            "\n[Sit-ups] 30 in a minute: above average <Norm for men from 36 to 45 years: Golding",
            "135/79: In the range that the guideline calls stage 1 hypertension.",
            // 483 / 12.5 + 3.5.
            "] 42.1 ml/kg/min (1.5 miles in 12:30): good <Norm for men from 30 to 39 years: ",
            "\nErgometer pulse recovery: 12. There is no published norm for this test; ",
            "\n|Leg Press|100.5|40|50|70\n|Chest Press|90.0|36|45|63\nNot measured: Ab crunches.\n",
            "\nSystolic blood pressure: Whelton, Carey, Aronow and others (ACC/AHA), 2017, "});
    auto const bars = Blocks<CNormBar>();
    auto const sitUps = std::ranges::find(bars, "Sit-ups", &CNormBar::m_strTitle);
    ASSERT_NE(sitUps, bars.end());
    ASSERT_EQ(sitUps->m_lstMarks.size(), 1U);
    EXPECT_EQ(sitUps->m_lstMarks[0].m_dValue, 30);
    ASSERT_EQ(sitUps->m_lstBands.size(), 7U);
    EXPECT_EQ(sitUps->m_lstBands[4].m_dFrom, 30);

    AddEval(4, {2026, 7, 7}, "height = 0", "lift2 = 5");
    auto const bare = Made(One(CDAOReport::rtEvalInterpretation, {2026, 7, 7}));
    EXPECT_TRUE(Blocks<CNormBar>().empty());
    EXPECT_EQ(bare.find("# Fitness Tests"), std::string::npos);
    ExpectLines(bare,
        {"\nNo progressive lifts were made.\nNot measured: Height, Weight, Resting heart rate, "
         "Systolic blood pressure, Diastolic blood pressure, Trunk flexion, Sit-ups, Ab "
         "crunches, Three-minute step test, 1.5-mile run, Ergometer pulse recovery and Body fat."});
}

TEST_F(FitnessReportTest, NamesTheEquationOfTheBodyFat)
{
    // Density 1.10938 - 0.0008267 * 60 + 0.0000016 * 3600 - 0.0002574 * 36 = 1.0562716.
    AddEval(1, kSpring, "weight = 180", "lift1 = 0",
        "percent_fat = 18.63, chest = 15, abdomen = 25, thigh = 20");
    ExpectLines(Made(One(CDAOReport::rtEvalInterpretation)),
        {"\nBody fat: 18.6 % (skinfolds: Jackson and Pollock, three sites)\n",
            "[Body fat] 18.6 % (skinfolds: Jackson and Pollock, three sites): healthy range"});
    AddBodyComp(kSpring,
        "method = 2, height = 70, weight = 180, percent_fat = 19.99, wet_weight = 10, "
        "tare_weight = 2, water_temperature = 30, units = 0x70");
    ExpectLines(Made(One(CDAOReport::rtBodyCompInterpretation)),
        {"\nMethod: Hydrostatic Weighing\n", "\nBody fat: 20.0 % (as recorded)\n",
            "[Body fat] 19.99 % (as recorded): healthy range", "\nFat weight: 36.0 lb\n",
            "\n|Hydrostatic Weighing\n|Water temperature|86.0 \u00B0F\n",
            "\n|Wet weight|22.0 lb\n|Tare weight|4.4 lb\n"});
}

TEST_F(FitnessReportTest, NamesTheEquationOfEachMethod)
{
    CBodyComp::sex const man = CBodyComp::sMale;
    // As the console stores it, of 30 degrees Celsius and 6 and 3 kg.
    CHydroStat const water(man, 36, 180, 70, 86, 13.227736, 6.613868);
    CTapeMsr const tape(man, 36, 180, 70, 36, 7, 0);
    auto const add = [](std::string const& values, double fat) {
        Run(DataFile::member, "DELETE FROM body_compositions");
        AddBodyComp(kSpring,
            "height = 70, weight = 180, percent_fat = " + std::to_string(fat) + ", " + values);
        return Made(One(CDAOReport::rtBodyCompInterpretation));
    };
    ExpectLines(add("method = 0, waist = 36, wrist = 7", tape.PercentFat()),
        {"% (body measurements: Penrose, Nelson and Fisher)\n"});
    std::string const weighed
        = "method = 2, wet_weight = 6, tare_weight = 3, water_temperature = 30, units = ";
    ExpectLines(add(weighed + "0x70", water.PercentFat(CHydroStat::cmSiri)),
        {"% (hydrostatic weighing: Siri)\n"});
    ExpectLines(add(weighed + "0xF0", water.PercentFat(CHydroStat::cmBrozek)),
        {"% (hydrostatic weighing: Brozek)\n"});
    ExpectLines(add("method = 3, waist = 36, wrist = 7", tape.PercentFat()), {"% (as recorded)\n"});
}

TEST_F(FitnessReportTest, ComparesWhatTheTablesHold)
{
    AddTwoOfEach();
    auto const evals = Made(Two(CDAOReport::rtEvalComparison));
    std::string const both = "evaluations WHERE eval_id <> 3";
    std::string const lifts = "lifts WHERE eval_id <> 3";
    ExpectLines(evals,
        {"\n|Measure|03/01/2026|11/02/2026|Change|In percent\n",
            Compared("Height, in", both, "height", 1), Compared("Weight, lb", both, "weight", 1),
            Compared("Body mass index, kg/m2", both,
                "weight * 0.45359237 / (height * 0.0254 * height * 0.0254)", 1),
            Compared("Resting heart rate, beats a minute", both, "resting_heart_rate", 0),
            Compared("Systolic blood pressure, mmHg", both, "systolic", 0),
            Compared("Trunk flexion, in", both, "trunk_flexion", 1),
            Compared("Sit-ups, in a minute", both, "sit_ups", 0),
            "\n|1.5-mile run, minutes|12:30|11:41|-0:49|-6.5 %\n",
            Compared("Aerobic capacity (estimated VO2max), ml/kg/min", both,
                "(483 * 60.0 / run_seconds + 3.5)", 1),
            Compared("Body fat, %", "skinfolds WHERE eval_id <> 3", "percent_fat", 1),
            Compared("Leg Press, lb", lifts, "lift1", 1),
            Compared("All that were lifted both times, lb", lifts, "(lift1 + lift3)", 1),
            "\nNot measured either time: ab crunches.\n",
            "\nNot as good as the first time: sit-ups (30 to 29 in a minute) and Chest Press",
            "\nThe same as the first time: class of the blood pressure (stage 1).\n",
            "neither better nor worse: height (70.0 to 70.5 in), weight (180.5 to 175.2 lb) and",
            "\nBetter than the first time: body mass index (25.9 to 24.8 kg/m2), ",
            "\n[Sit-ups] 30 in a minute on 03/01/2026: above average; 29 in a minute on "
            "11/02/2026: average <"});
    EXPECT_EQ(evals.find("Row"), std::string::npos);
    // In either order.
    EXPECT_EQ(Made({CDAOReport::rtEvalComparison, kJo, kFall, kSpring}), evals);

    ExpectLines(Made(Two(CDAOReport::rtBodyCompComparison)),
        {Compared("Body fat, %", "body_compositions", "percent_fat", 1),
            Compared("Fat weight, lb", "body_compositions", "(weight * percent_fat / 100)", 1),
            Compared(
                "Lean weight, lb", "body_compositions", "(weight - weight * percent_fat / 100)", 1),
            Compared("Waist-to-hip ratio", "body_compositions", "(waist / hip)", 2),
            "\nNot measured either time: wrist.\n", "\n[Body fat] 21.0 % (as recorded) on 03",
            "\n(Fat and Lean Weight) Fat weight: 2 values, first 37.9 lb on 03/01/2026, last "});
}

TEST_F(FitnessReportTest, DrawsAllRecordsUpToTheLaterOne)
{
    AddTwoOfEach();
    AddEval(9, {2026, 11, 10}, "height = 70, weight = 333", "lift1 = 400");
    Made(Two(CDAOReport::rtEvalComparison));
    auto const charts = Blocks<CReportChart>();
    ASSERT_EQ(charts.size(), 2U);
    ASSERT_EQ(charts[0].m_lstSeries.size(), 2U);
    auto const& weight = charts[0].m_lstSeries[0];
    ASSERT_EQ(std::int64_t(weight.m_lstPoints.size()),
        Count("evaluations WHERE weight > 0 AND eval_date <= " + std::to_string(kFall.Seconds())));
    EXPECT_EQ(weight.m_lstPoints[0].m_strLabel, "03/01/2026 (first)");
    EXPECT_EQ(weight.m_lstPoints[1].m_strLabel, "06/06/2026");
    EXPECT_EQ(weight.m_lstPoints[1].m_dY, 190);
    EXPECT_EQ(weight.m_lstPoints[2].m_nX, kFall.Seconds());
    ExpectLines(charts[0].m_strInWords,
        {"Weight: 3 values, first 180.5 lb on 03/01/2026, last 175.2 lb on 11/02/2026, lowest "
         "175.2 lb on 11/02/2026, highest 190.0 lb on 06/06/2026. Compared here: 180.5 lb on "
         "03/01/2026 and 175.2 lb on 11/02/2026."});
    ASSERT_EQ(charts[1].m_lstSeries.size(), 2U);
    EXPECT_EQ(charts[1].m_lstSeries[0].m_strName, "Leg Press, lb"); // 20 %, the other 11 %
}

TEST_F(FitnessReportTest, GoesByTheAgeOfEachDay)
{
    auto const born = [](CEFOleDateTime const& day) {
        Run(DataFile::member, "UPDATE profiles SET birthday = ?", {day.Seconds()});
    };
    AddTwoOfEach();
    Made(Two(CDAOReport::rtEvalComparison));
    auto const bars = Blocks<CNormBar>().size();
    EXPECT_EQ(Blocks<CNormBar>().front().m_lstMarks.size(), 2U);
    born({1980, 6, 1}); // 45 and 46: another row of the YMCA's three tests
    ExpectLines(Made(Two(CDAOReport::rtEvalComparison)),
        {"\nAge on those days: 45 and 46\n",
            "[Sit-ups] 30 in a minute on 03/01/2026: above average <Norm for men from 36 to 45",
            "[Sit-ups] 29 in a minute on 11/02/2026: good <Norm for men from 46 to 55"});
    EXPECT_EQ(Blocks<CNormBar>().size(), bars + 3);
    born({2012, 1, 1});
    ExpectLines(Made(Two(CDAOReport::rtEvalComparison)),
        {"\nSit-ups: 30 in a minute on 03/01/2026 and 29 in a minute on 11/02/2026. There is no "
         "norm for this age (14).\n",
            "[Aerobic capacity (estimated VO2max)] 42.1 ml/kg/min"});
    for (auto const& unknown : {CEFOleDateTime(), CEFOleDateTime(2026, 12, 1),
             CEFOleDateTime(1850, 1, 1), CEFOleDateTime::Invalid()}) {
        born(unknown);
        auto const lines = Made(Two(CDAOReport::rtEvalComparison));
        EXPECT_TRUE(Blocks<CNormBar>().empty());
        ExpectLines(lines,
            {"\nAge on those days: \n", "\nThe member's sex or age is not known",
                "11/02/2026. Without the member's sex and age it cannot be compared"});
    }
    Run(DataFile::member, "DELETE FROM profiles");
    ExpectLines(Made(One(CDAOReport::rtEvalInterpretation)), {"\nSex: \n", "\nTraining range: \n"});
}

TEST_F(FitnessReportTest, SendsVeryHighPressureToAPhysicianWhateverTheAge)
{
    auto const remark = [](std::string const& pressure) {
        Run(DataFile::member, "UPDATE evaluations SET " + pressure);
        return Made(One(CDAOReport::rtEvalInterpretation));
    };
    AddEval(1, kSpring, "weight = 180");
    ExpectLines(remark("systolic = 135, diastolic = 90"), {"135/90: ", "stage 2 hypertension. A "});
    ExpectLines(remark("systolic = 180, diastolic = 120"), {"180/120: ", "stage 2 hypertension"});
    ExpectLines(remark("systolic = 118, diastolic = 0"), {"Only one of the two pressures"});
    for (auto const* const day : {"1990-01-01", "2015-01-01"}) {
        Run(DataFile::member,
            "UPDATE profiles SET birthday = unixepoch('" + std::string(day)
                + "') - unixepoch('1899-12-30')");
        ExpectLines(remark("systolic = 181, diastolic = 0"), {"see a physician promptly and not"});
        ExpectLines(remark("systolic = 120, diastolic = 121"), {"120/121: Higher than 180/120"});
        EXPECT_EQ(remark("systolic = 180, diastolic = 120").find("promptly"), std::string::npos);
    }
}

TEST_F(FitnessReportTest, SaysWhenThereIsNothingToReportOn)
{
    AddTwoOfEach();
    for (auto job : AllFour()) {
        auto const what = CDAOReport::GetTypeStr(job.m_nType);
        EXPECT_TRUE(Try(job)) << what;
        EXPECT_EQ(BuildReport(
                      job, [](double) { return false; }, s_report)
                      .Error(),
            DbError::stopped);
        job.m_dtTo = job.m_dtTo.IsZero() ? job.m_dtTo : kSpring;
        ExpectLines(Made(job), {job.m_dtTo.IsZero() ? "" : "it is compared with itself.\n"});
        auto other = job;
        other.m_dtFrom = CEFOleDateTime(2026, 3, 1, 9, 30, 16);
        EXPECT_EQ(Try(other).Error(), DbError::gone) << what;
        other.m_dtFrom = CEFOleDateTime();
        EXPECT_EQ(Try(other).Error(), DbError::failed) << what;
        other = job;
        other.m_nParam = 8;
        EXPECT_EQ(Try(other).Error(), DbError::gone) << what;
        EXPECT_EQ(Try(other).Text().find("Doe"), std::string::npos);
    }
    // What cannot be read is a failure.
    Run(DataFile::center, "DROP TABLE lift_stations");
    EXPECT_FALSE(Try(One(CDAOReport::rtEvalInterpretation)));
    Run(DataFile::member, "DROP TABLE skinfolds");
    EXPECT_FALSE(Try(Two(CDAOReport::rtEvalComparison)));
}

TEST_F(FitnessReportTest, CopesWithWhateverTheRowsHold)
{
    CForeignProgram(DataFile::member).LoosenTables(); // which empties them
    CForeignProgram(DataFile::center).LoosenTables();
    AddCenter();
    AddJo();
    AddTwoOfEach();
    auto const tryAll = [&](CDAOEFSet& set) {
        for (auto const& column : set.Columns()) {
            for (auto const* const value : {"NULL", "x'00FF00'", "'text'", "7", "-1", "0.5", "300",
                     "2147483647", "-9223372036854775808", "9e999", "-9e999", "1e308", "5e-324",
                     "CAST(x'6100620A' AS TEXT)", "CAST(x'FFFEC0AF' AS TEXT)"}) {
                auto const file = set.GetClass()->file;
                auto const table = std::string(set.GetClass()->table);
                auto const what = table + "." + column.name + " = " + value;
                Run(file, "CREATE TEMP TABLE saved AS SELECT * FROM " + table);
                Run(file, "UPDATE " + table + " SET " + column.name + " = " + value);
                for (auto const& job : AllFour()) {
                    auto const lines = Made(job);
                    for (auto const* const wrong :
                        {"nan", "inf ", "inf|", "e+", "-0.0|", "-0.0 "}) {
                        EXPECT_EQ(lines.find(wrong), std::string::npos) << what << lines;
                    }
                    for (auto const& bar : Blocks<CNormBar>()) {
                        EXPECT_TRUE(std::isfinite(bar.m_lstMarks.front().m_dValue)) << what;
                    }
                }
                Run(file, "DELETE FROM " + table);
                Run(file, "INSERT INTO " + table + " SELECT * FROM saved");
                Run(file, "DROP TABLE saved");
            }
        }
    };
    for (auto const& job : AllFour()) {
        ASSERT_TRUE(Try(job)) << Try(job).Text();
    }
    CDAOSmEval evals;
    CDAOEvalBodyComp folds;
    CDAOCirc lifts;
    CDAOBodyComp bodyComps;
    CDAOProf profiles;
    CDAOSmMem members;
    CDAOLiftStn stations;
    for (CDAOEFSet* const set : std::initializer_list<CDAOEFSet*>{
             &evals, &folds, &lifts, &bodyComps, &profiles, &members, &stations}) {
        tryAll(*set);
    }
    Run(DataFile::member, "UPDATE evaluations SET weight = 9000, height = -3");
    ExpectLines(Made(One(CDAOReport::rtEvalInterpretation)),
        {"\nWeight: \nBody mass index: \n",
            "\nLeft out, since the record holds a number that cannot be: Height and Weight.\n"});
}
