#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Quorvex::Velmora::Tool
{

/// Writes a time as RFC 3339, for example "2024-05-01T10:15:30Z".
///
/// @param seconds  since 1970-01-01 00:00:00 UTC.
/// @return nothing outside the years 0 to 9999.
std::optional<std::string> toRfc3339(std::int64_t seconds);

/// Writes a time in the zone of the user, for example "2024-05-01 12:15:30".
///
/// @param seconds  since 1970-01-01 00:00:00 UTC.
/// @return nothing outside the years 0 to 9999, and if the system cannot tell.
std::optional<std::string> toLocalTime(std::int64_t seconds);

} // namespace Quorvex::Velmora::Tool
