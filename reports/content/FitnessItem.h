#pragma once

#include "reports/norms/Norms.h"
#include "store/fitness/Circuit.h"
#include "store/sets/DAOBodyComp.h"
#include "store/sets/DAOEval.h"

#include <optional>
#include <string>
#include <vector>

/// One result of an evaluation or a body composition.
struct CFitnessItem
{
    char const* m_section; ///< of the report
    std::string m_strTitle; ///< "Sit-ups"; empty for a station without a name
    char const* m_unit; ///< empty for none
    int m_nDecimals = 0;
    bool m_bTime = false; ///< seconds, shown as minutes and seconds
    bool m_bDerived = false; ///< follows from others and is not stored
    std::optional<Measure> m_norm = {};
    CNorm::Better m_better = CNorm::Better::neither;
    double m_dValue = 0.0; ///< 0 when it was not measured, or is not usable
    bool m_bUsable = true; ///< false: the record holds a number that cannot be
    std::string m_strNote = {}; ///< how it came about

    bool IsLift() const { return m_better == CNorm::Better::higher && !m_norm; }
    bool IsMeasured() const { return m_bUsable && m_dValue != 0.0; }
    std::string Text() const { return Text(m_nDecimals); } ///< without its unit
    std::string Text(int decimals) const;
    std::string WithUnit() const { return WithUnit(m_nDecimals); }
    std::string WithUnit(int decimals) const;
};

/// The results in the order of the pages, always the same ones.
std::vector<CFitnessItem> ItemsOf(CDAOEval const& eval);
/// The section of the measurements of a method is called as the method.
std::vector<CFitnessItem> ItemsOf(CDAOBodyComp const& bodyComp);
/// The methods that measurements belong to.
inline constexpr auto kMeasuringMethods
    = {CDAOBodyComp::mBodyMeasurements, CDAOBodyComp::mSkinfolds, CDAOBodyComp::mHydrostatic};
/// The progressive lifts, one item for each station.
std::vector<CFitnessItem> LiftsOf(CDAOEval const& eval, CCircuit const& circuit);
/// The one that a norm is for; one that was not measured when there is none.
CFitnessItem const& ItemFor(std::vector<CFitnessItem> const& items, Measure measure);

/// Bits of CDAOBodyComp::m_dwUnits.
inline constexpr std::uint32_t kCelsius = 0x10;
inline constexpr std::uint32_t kWetKilograms = 0x20;
inline constexpr std::uint32_t kTareKilograms = 0x40;
inline constexpr std::uint32_t kBrozek = 0x80;
/// The weighing under water in degrees Fahrenheit and pounds; 0 stays "not measured".
struct CWaterFigures
{
    double m_dWaterTemp;
    double m_dWetWeight;
    double m_dTareWeight;
};
CWaterFigures WaterFiguresOf(CDAOBodyComp const& bodyComp);

/// With so many decimals, never "-0.0".
std::string Fixed(double value, int decimals);
/// The same with a sign, but for nothing.
std::string Signed(double value, int decimals);
/// "12:05".
std::string MinutesAndSeconds(double seconds);
/// A list in a sentence: "one, two and three".
std::string InSentence(std::vector<std::string> const& texts);
