#include "reports/content/FitnessItem.h"

#include "reports/content/ReportTexts.h"
#include "store/fitness/Convert.h"

#include <algorithm>
#include <utility>

namespace
{

/// What a number must be to be one of that kind, as the forms take it.
struct CLimits
{
    double m_dLeast;
    double m_dMost;
};

constexpr CLimits kHeight = {1, 90};
constexpr CLimits kWeight = {1, 500};
constexpr CLimits kIndex = {10, 100}; // of body mass: beyond, height or weight is mistyped
constexpr CLimits kRate = {1, 200};
constexpr CLimits kPressure = {1, 300};
constexpr CLimits kFlexion = {0.01, 31};
constexpr CLimits kCount = {1, 99};
constexpr CLimits kRunSeconds = {300, 3659}; // nobody runs 1.5 miles in less
constexpr CLimits kCapacity = {1, 100};
constexpr CLimits kPercent = {0.01, 99};
constexpr CLimits kWaist = {1, 255};
constexpr CLimits kHip = {1, 155};
constexpr CLimits kWrist = {1, 100};
constexpr CLimits kRatio = {0.3, 3};
constexpr CLimits kFold = {0.01, 70};
constexpr CLimits kLift = {0.01, 9999};
constexpr CLimits kWater = {32, 212}; // as water can be
constexpr CLimits kWetWeight = {0.01, 2205}; // 1000 kg, as the form takes it

constexpr char const* kProfile = "Profile";
constexpr char const* kRange = "Training Range";
constexpr char const* kTests = "Fitness Tests";
constexpr char const* kComposition = "Body Composition";

using Better = CNorm::Better;

class CItems
{
public:
    /// Keeps a number that can be; 0 stays "not measured".
    double Add(CFitnessItem item, double value, CLimits const& limits)
    {
        item.m_bUsable = value == 0.0 || (value >= limits.m_dLeast && value <= limits.m_dMost);
        item.m_dValue = item.m_bUsable ? value : 0.0;
        if (item.m_norm) {
            item.m_better = NormOf(*item.m_norm).m_better;
        }
        m_items.push_back(std::move(item));
        return m_items.back().m_dValue;
    }
    void AddDerived(CFitnessItem item, double value, CLimits const& limits)
    {
        item.m_bDerived = true;
        Add(std::move(item), value, limits);
    }
    void AddIndex(double height, double weight)
    {
        double const metres = CConvert::InchesToCentimetres(height) / 100;
        AddDerived({kProfile, "Body mass index", "kg/m2", 1, {}, {}, Measure::bodyMassIndex},
            height == 0.0 ? 0.0 : CConvert::PoundsToKilograms(weight) / (metres * metres), kIndex);
    }

    std::vector<CFitnessItem> m_items;
};

} // namespace

std::string Fixed(double value, int decimals)
{
    auto text = NumberText(value, decimals);
    bool const isZero = text.find_first_not_of("-0.") == std::string::npos;
    return isZero && text.starts_with('-') ? text.substr(1) : text;
}

std::string Signed(double value, int decimals)
{
    auto text = Fixed(value, decimals);
    bool const isZero = text.find_first_not_of("0.") == std::string::npos;
    return isZero || text.front() == '-' ? text : "+" + text;
}

std::string MinutesAndSeconds(double seconds)
{
    auto const whole = static_cast<std::int64_t>(seconds);
    auto const rest = std::to_string(whole % 60);
    return std::to_string(whole / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

std::string InSentence(std::vector<std::string> const& texts)
{
    std::string joined;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        joined += (i == 0 ? "" : i + 1 == texts.size() ? " and " : ", ") + texts[i];
    }
    return joined;
}

std::string CFitnessItem::Text(int decimals) const
{
    return m_bTime ? MinutesAndSeconds(m_dValue) : Fixed(m_dValue, decimals);
}

std::string CFitnessItem::WithUnit(int decimals) const
{
    return Text(decimals) + (*m_unit == '\0' ? "" : " ") + m_unit;
}

std::vector<CFitnessItem> ItemsOf(CDAOEval const& eval)
{
    CItems items;
    double const height = items.Add({kProfile, "Height", "in", 1}, eval.m_dHeight, kHeight);
    double const weight = items.Add({kProfile, "Weight", "lb", 1}, eval.m_dWeight, kWeight);
    items.AddIndex(height, weight);
    items.Add(
        {kRange, "Resting heart rate", "beats a minute", 0, {}, {}, Measure::restingHeartRate},
        eval.m_nRestingHR, kRate);
    items.Add({kRange, "Systolic blood pressure", "mmHg", 0, {}, {}, Measure::systolic},
        eval.m_nSystolic, kPressure);
    items.Add({kRange, "Diastolic blood pressure", "mmHg", 0, {}, {}, Measure::diastolic},
        eval.m_nDiastolic, kPressure);
    items.Add({kTests, "Trunk flexion", "in", 1, {}, {}, Measure::trunkFlexion},
        eval.m_dTrunkFlexion, kFlexion);
    items.Add(
        {kTests, "Sit-ups", "in a minute", 0, {}, {}, Measure::sitUps}, eval.m_nSitUps, kCount);
    items.Add({kTests, "Ab crunches", "in a minute", 0, {}, {}, Measure::abCrunches},
        eval.m_nAbCrunches, kCount);
    items.Add({kTests, "Three-minute step test", "beats in the minute after it", 0, {}, {},
                  Measure::stepTest},
        eval.m_nStepTest, kRate);
    double const run
        = items.Add({kTests, "1.5-mile run", "minutes", 0, true, {}, {}, Better::lower},
            eval.m_nRunSeconds, kRunSeconds);
    // American College of Sports Medicine, from the minutes for 1.5 miles.
    items.AddDerived({kTests, "Aerobic capacity (estimated VO2max)", "ml/kg/min", 1, {}, {},
                         Measure::aerobicCapacity},
        run == 0.0 ? 0.0 : 483 * 60 / run + 3.5, kCapacity);
    items.m_items.back().m_strNote = "1.5 miles in " + MinutesAndSeconds(run);
    items.Add({kTests, "Ergometer pulse recovery", "", 0, {}, {}, Measure::ergometer},
        eval.m_nErgometer, kCount);
    items.Add({kComposition, "Body fat", "%", 1, {}, {}, Measure::percentFat}, eval.m_dPercentFat,
        kPercent);
    return items.m_items;
}

CWaterFigures WaterFiguresOf(CDAOBodyComp const& bodyComp)
{
    auto const pounds = [&](double weight, std::uint32_t bit) {
        return (bodyComp.m_dwUnits & bit) != 0 ? CConvert::KilogramsToPounds(weight) : weight;
    };
    double const degrees = bodyComp.m_dWaterTemp;
    bool const isCelsius = (bodyComp.m_dwUnits & kCelsius) != 0 && degrees != 0.0;
    return {isCelsius ? CConvert::CelsiusToFahrenheit(degrees) : degrees,
        pounds(bodyComp.m_dWetWeight, kWetKilograms),
        pounds(bodyComp.m_dTareWeight, kTareKilograms)};
}

std::vector<CFitnessItem> ItemsOf(CDAOBodyComp const& bodyComp)
{
    auto const section
        = [](CDAOBodyComp::method method) { return CDAOBodyComp::GetMethodStr(method); };
    CItems items;
    double const height = items.Add({kProfile, "Height", "in", 1}, bodyComp.m_dHeight, kHeight);
    double const weight = items.Add({kProfile, "Weight", "lb", 1}, bodyComp.m_dWeight, kWeight);
    items.AddIndex(height, weight);
    double const fat = items.Add({kComposition, "Body fat", "%", 1, {}, {}, Measure::percentFat},
        bodyComp.m_dPercentFat, kPercent);
    double const fatWeight = weight * fat / 100;
    CLimits const anyWeight = {0, kWeight.m_dMost};
    items.AddDerived({kComposition, "Fat weight", "lb", 1}, fatWeight, anyWeight);
    items.AddDerived(
        {kComposition, "Lean weight", "lb", 1}, fat == 0.0 ? 0.0 : weight - fatWeight, anyWeight);

    auto const* const tape = section(CDAOBodyComp::mBodyMeasurements);
    double const waist = items.Add({tape, "Waist", "in", 1}, bodyComp.m_dWaist, kWaist);
    items.Add({tape, "Wrist", "in", 1}, bodyComp.m_dWrist, kWrist);
    double const hip = items.Add({tape, "Hip", "in", 1}, bodyComp.m_dHip, kHip);
    items.AddDerived({tape, "Waist-to-hip ratio", "", 2, {}, {}, Measure::waistHipRatio},
        hip == 0.0 ? 0.0 : waist / hip, kRatio);
    for (auto const& [title, value] : {std::pair{"Thigh", bodyComp.m_dThigh},
             {"Chest", bodyComp.m_dChest}, {"Abdomen", bodyComp.m_dAbdomen},
             {"Triceps", bodyComp.m_dTriceps}, {"Suprailiac", bodyComp.m_dSuprailiac},
             {"Midaxillary", bodyComp.m_dMidaxillary}, {"Subscapular", bodyComp.m_dSubscapular}}) {
        items.Add({section(CDAOBodyComp::mSkinfolds), title, "mm", 1}, value, kFold);
    }
    auto const* const water = section(CDAOBodyComp::mHydrostatic);
    auto const figures = WaterFiguresOf(bodyComp);
    items.Add({water, "Water temperature", "\u00B0F", 1}, figures.m_dWaterTemp, kWater);
    items.Add({water, "Wet weight", "lb", 1}, figures.m_dWetWeight, kWetWeight);
    items.Add({water, "Tare weight", "lb", 1}, figures.m_dTareWeight, kWetWeight);
    return items.m_items;
}

std::vector<CFitnessItem> LiftsOf(CDAOEval const& eval, CCircuit const& circuit)
{
    CItems items;
    for (int i = 0; i < circuit.m_nNumStations; ++i) {
        items.Add({"Progressive Lifts", circuit.m_arrStnName[static_cast<std::size_t>(i)], "lb", 1,
                      {}, {}, {}, Better::higher},
            eval.GetStnVal(i), kLift);
    }
    return items.m_items;
}

CFitnessItem const& ItemFor(std::vector<CFitnessItem> const& items, Measure measure)
{
    auto const found = std::ranges::find(items, measure, &CFitnessItem::m_norm);
    static CFitnessItem const s_none = {"", "", ""};
    return found == items.end() ? s_none : *found;
}
