#include "bench/RatioReporter.h"

#include <algorithm>
#include <cstdio>

namespace
{

double Median(std::vector<double> values)
{
    if (values.empty()) {
        return 0.0;
    }
    auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

bool CRatioReporter::ReportContext(Context const&)
{
    return true;
}

void CRatioReporter::ReportRuns(std::vector<Run> const& runs)
{
    for (auto const& run : runs) {
        if (run.run_type == Run::RT_Aggregate) {
            continue;
        }
        if (run.error_occurred) {
            std::fprintf(
                stderr, "%s: %s\n", run.run_name.function_name.c_str(), run.error_message.c_str());
            m_bFailed = true;
            continue;
        }
        auto const& name = run.run_name.function_name;
        auto const bar = name.find('|');
        if (bar == std::string::npos) {
            auto const bytes = run.counters.find("bytes_per_second");
            m_speeds[name].push_back(bytes == run.counters.end() ? 0.0 : bytes->second.value / 1e6);
            continue;
        }
        auto const pair = name.substr(0, bar);
        if (!m_times.contains(pair)) {
            m_order.push_back(pair);
        }
        auto& times = m_times[pair][name.substr(bar + 1)];
        // What a program that the measurement runs takes is not in the measurement's own time.
        auto const children = run.counters.find("children");
        auto const more = children == run.counters.end() ? 0.0 : children->second.value;
        times.cpu.push_back(
            run.GetAdjustedCPUTime() + more * benchmark::GetTimeUnitMultiplier(run.time_unit));
        times.wall.push_back(run.GetAdjustedRealTime());
        times.unit = benchmark::GetTimeUnitString(run.time_unit);
    }
}

void CRatioReporter::Finalize()
{
    std::printf("| what | raw, CPU | store, CPU | ratio, CPU | raw, wall | store, wall | ratio, "
                "wall |\n|---|---:|---:|---:|---:|---:|---:|\n");
    for (auto const& pair : m_order) {
        auto const& raw = m_times[pair]["raw"];
        auto const& store = m_times[pair]["store"];
        auto const* const unit = raw.unit.c_str();
        std::printf("| %s | %.2f %s | %.2f %s | %.2f | %.2f %s | %.2f %s | %.2f |\n", pair.c_str(),
            Median(raw.cpu), unit, Median(store.cpu), unit, Median(store.cpu) / Median(raw.cpu),
            Median(raw.wall), unit, Median(store.wall), unit,
            Median(store.wall) / Median(raw.wall));
    }
    for (auto const& [what, speeds] : m_speeds) {
        std::printf("\n%s: %.0f MB/s of CPU time\n", what.c_str(), Median(speeds));
    }
}
