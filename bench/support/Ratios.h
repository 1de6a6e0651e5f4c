#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Quorvex::Velmora::Bench
{

enum class Goal { AtLeast, AtMost, AtMostAbove };

/// Compares two benchmarks of one run with a goal.
///
/// The figure is the speed of `measured` divided by that of `peer` for Goal::AtLeast, the time of `measured` divided by
/// that of `peer` for Goal::AtMost, and the difference of the times, in the unit of the benchmarks, for
/// Goal::AtMostAbove.
struct Ratio {
    std::string what;
    std::string measured;
    std::string peer;
    Goal goal;
    double bound;
    /// The bound on Windows. Without one, the ratio is only shown there.
    std::optional<double> boundOnWindows{};
};

/// Runs the program's benchmarks, then prints the ratios.
///
/// @return the exit code of the process: 0 if every goal is met, 2 if one is missed, 1 for an unknown argument.
int runWithRatios(int argc, char** argv, const std::vector<Ratio>& ratios);

} // namespace Quorvex::Velmora::Bench
