#pragma once

#include <string>

#include <boost/date_time/posix_time/posix_time_types.hpp>

namespace Quorvex::Velmora::Logging
{

/// Formats a time as ISO 8601 extended, whatever locale the host has set.
///
/// @return the time with six digits of microseconds, or without a fraction if they are zero; "not-a-date-time",
///     "-infinity" or "+infinity" for special values.
std::wstring toIsoExtended(const boost::posix_time::ptime& moment);

} // namespace Quorvex::Velmora::Logging
