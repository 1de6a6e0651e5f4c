#include "bench/support/Goals.h"

#include <cstdio>

namespace Quorvex::Velmora::Bench
{
namespace
{

#ifdef _WIN32
std::optional<double> boundHere(const Figure& figure) { return figure.boundOnWindows; }
#else
std::optional<double> boundHere(const Figure& figure) { return figure.bound; }
#endif

} // namespace

bool report(const Figure& figure)
{
    const auto bound = boundHere(figure);
    const char* const side = figure.side == Side::AtLeast ? "at least" : "at most";
    if (!bound) {
        std::printf("%-6s %8.2f  (goal on Linux: %s %.2f)  %s\n", "shown", figure.value, side, figure.bound,
            figure.what.c_str());
        return true;
    }
    const bool met = figure.side == Side::AtLeast ? figure.value >= *bound : figure.value <= *bound;
    std::printf(
        "%-6s %8.2f  (goal: %s %.2f)  %s\n", met ? "met" : "MISSED", figure.value, side, *bound, figure.what.c_str());
    return met;
}

} // namespace Quorvex::Velmora::Bench
