#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The stations of the progressive lifts and the work weights that follow from a lift.
class CCircuit
{
public:
    static constexpr std::int32_t kMostStations = 24;

    /// Reads the stations of the centre's file; those beyond the 24th are left out. None when they
    /// cannot be read.
    void Load();

    /// The share of a tested lift that a station of the circuit is loaded with: lift * percentage
    /// / 100, in the unit of the lift, neither rounded nor limited; 0 for a station that is none.
    double GetWorkWeight(int station, double lift, int percentage) const;

    std::int32_t m_nNumStations = 0;
    std::vector<std::string> m_arrStnName;
    std::vector<double> m_arrStnMinLift; ///< pounds, inclusive
    std::vector<double> m_arrStnMaxLift; ///< pounds, inclusive
};
