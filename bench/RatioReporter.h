#pragma once

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <vector>

/// Prints, for each pair of measurements named "WHAT|raw" and "WHAT|store", the medians over their
/// repetitions and the ratio of the two, as a table for a Markdown page. A measurement that counts
/// its bytes and has no pair gets a line of its own. The counter "children" holds seconds of
/// processor time that other programs took for the measurement.
class CRatioReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(Context const& context) override;
    void ReportRuns(std::vector<Run> const& runs) override;
    void Finalize() override;

    bool HasFailed() const { return m_bFailed; }

private:
    struct Times
    {
        std::vector<double> cpu;
        std::vector<double> wall;
        std::string unit;
    };

    std::vector<std::string> m_order;
    std::map<std::string, std::map<std::string, Times>> m_times; ///< by pair and side
    std::map<std::string, std::vector<double>> m_speeds; ///< MB/s, of those without a pair
    bool m_bFailed = false;
};
