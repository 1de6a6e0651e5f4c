#pragma once

#include <optional>
#include <string>

namespace Quorvex::Velmora::Bench
{

enum class Side { AtLeast, AtMost };

/// A measured figure and its goal.
struct Figure {
    std::string what;
    double value;
    Side side;
    double bound;
    /// The bound on Windows, measured under Wine. Without one, the figure is only shown there.
    std::optional<double> boundOnWindows{};
};

/// Prints a figure and its goal.
///
/// @return false if the figure has a goal on this platform and misses it.
[[nodiscard]] bool report(const Figure& figure);

} // namespace Quorvex::Velmora::Bench
