#include "bench/support/Ratios.h"

#include <cstdio>
#include <map>
#include <optional>

#include <benchmark/benchmark.h>

#include "bench/support/Goals.h"

namespace Quorvex::Velmora::Bench
{
namespace
{

/// Prints the runs and keeps the shortest time of each benchmark: other load can only make a run longer.
class TimeKeeper : public benchmark::ConsoleReporter
{
public:
    // Without colours, because the output also goes to a file.
    TimeKeeper() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                keep(run.run_name.function_name, run.GetAdjustedCPUTime());
        }
        ConsoleReporter::ReportRuns(runs);
    }

    [[nodiscard]] std::optional<double> timeOf(const std::string& name) const
    {
        const auto found = times.find(name);
        return found == times.end() ? std::nullopt : std::optional(found->second);
    }

private:
    void keep(const std::string& name, double time)
    {
        const auto [entry, added] = times.try_emplace(name, time);
        if (!added && time < entry->second)
            entry->second = time;
    }

    std::map<std::string, double> times;
};

double valueOf(Goal goal, double measured, double peer)
{
    switch (goal) {
    case Goal::AtLeast:
        return peer / measured;
    case Goal::AtMost:
        return measured / peer;
    case Goal::AtMostAbove:
        break;
    }
    return measured - peer;
}

/// @return whether the goal is met, or nothing if one of the two benchmarks did not run.
std::optional<bool> print(const Ratio& ratio, const TimeKeeper& times)
{
    const auto measured = times.timeOf(ratio.measured);
    const auto peer = times.timeOf(ratio.peer);
    if (!measured || !peer)
        return std::nullopt;
    return report({ratio.what, valueOf(ratio.goal, *measured, *peer),
        ratio.goal == Goal::AtLeast ? Side::AtLeast : Side::AtMost, ratio.bound, ratio.boundOnWindows});
}

} // namespace

int runWithRatios(int argc, char** argv, const std::vector<Ratio>& ratios)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    TimeKeeper times;
    benchmark::RunSpecifiedBenchmarks(&times);
    std::printf("\nRatios of this run:\n");
    bool allMet = true;
    for (const Ratio& ratio : ratios)
        allMet &= print(ratio, times).value_or(true);
    return allMet ? 0 : 2;
}

} // namespace Quorvex::Velmora::Bench
