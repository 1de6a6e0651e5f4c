// The goals that figures are held to, and how a figure is shown beside its goal.
#pragma once

#include <optional>
#include <string>

namespace Quorvex::Velmora::Bench
{

enum class Side { AtLeast, AtMost };

/// A figure that was measured, and the bound that it is held to.
struct Figure {
    std::string what;
    double value;
    Side side;
    double bound;
    /// The bound for Windows, which is measured under Wine. Without one the figure is only shown there.
    std::optional<double> boundOnWindows{};
};

/// Prints the figure with its goal.
/// @return false when the figure has a goal here and misses it.
[[nodiscard]] bool report(const Figure& figure);

} // namespace Quorvex::Velmora::Bench
