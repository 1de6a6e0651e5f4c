#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace Quorvex::Velmora::Tool
{

/// Reads a whole number with its unit, one of ms, s and min: "250ms", "5 s". Nothing if it is anything else or longer
/// than a day.
std::optional<std::chrono::milliseconds> parseDuration(std::string_view text);

/// Writes a duration with the largest unit that leaves a whole number: "250ms", "5s", "2min".
std::string toText(std::chrono::milliseconds duration);

} // namespace Quorvex::Velmora::Tool
