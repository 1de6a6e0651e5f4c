// What keeps .NET from starting in this process, as far as it can be known in advance.
#pragma once

#include <string>

namespace Quorvex::Velmora::Tessaport
{

/// Checks for what would otherwise end the process, or make the start fail halfway, after which .NET cannot be started
/// again in this process.
///
/// @return empty if nothing is in the way or .NET runs in this process already; otherwise what is and what to do.
[[nodiscard]] std::wstring describeObstacleToStart();

} // namespace Quorvex::Velmora::Tessaport
