// The text of a moment.
#pragma once

#include <string>

#include <boost/date_time/posix_time/posix_time_types.hpp>

namespace Quorvex::Velmora::Logging
{

/// ISO 8601 extended, with six digits of microseconds unless they are zero; "not-a-date-time", "-infinity" and
/// "+infinity" for the special values. Whatever locale the host has set.
std::wstring toIsoExtended(const boost::posix_time::ptime& moment);

/// The present moment, in UTC.
std::wstring utcTimestamp();

} // namespace Quorvex::Velmora::Logging
