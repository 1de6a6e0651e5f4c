// Ratios between the benchmarks of one run, with the goals that they are held to.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Quorvex::Velmora::Bench
{

enum class Goal { AtLeast, AtMost, AtMostAbove };

/// How often `measured` goes into `peer`: the speed of the one divided by the speed of the other, or their times for
/// Goal::AtMost. Goal::AtMostAbove is the difference of the times, in the benchmarks' unit.
struct Ratio {
    std::string what;
    std::string measured;
    std::string peer;
    Goal goal;
    double bound;
    /// The bound on Windows. Without one the ratio is only shown there.
    std::optional<double> boundOnWindows{};
};

/// Runs the program's benchmarks and prints the ratios after them.
/// @return the process's exit code: 0 when every goal was met, 2 when one was missed.
int runWithRatios(int argc, char** argv, const std::vector<Ratio>& ratios);

} // namespace Quorvex::Velmora::Bench
