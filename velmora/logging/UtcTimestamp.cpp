#include "velmora/logging/UtcTimestamp.h"

#include <array>

namespace Quorvex::Velmora::Logging
{
namespace
{

void appendDigits(std::wstring& text, std::int64_t value, int count)
{
    text.append(static_cast<std::size_t>(count), L'0');
    for (auto digit = text.rbegin(); value != 0 && count > 0; value /= 10, --count, ++digit)
        *digit = static_cast<wchar_t>(L'0' + value % 10);
}

std::wstring specialText(const boost::posix_time::ptime& moment)
{
    if (moment.is_neg_infinity())
        return L"-infinity";
    return moment.is_pos_infinity() ? L"+infinity" : L"not-a-date-time";
}

} // namespace

// The date library's own formatter groups the digits of the microseconds as the global locale says.
std::wstring toIsoExtended(const boost::posix_time::ptime& moment)
{
    if (moment.is_special())
        return specialText(moment);
    const auto date = moment.date().year_month_day();
    const auto time = moment.time_of_day();
    std::wstring text;
    text.reserve(26);
    appendDigits(text, date.year, 4);
    text += L'-';
    appendDigits(text, date.month.as_number(), 2);
    text += L'-';
    appendDigits(text, date.day, 2);
    text += L'T';
    appendDigits(text, time.hours(), 2);
    text += L':';
    appendDigits(text, time.minutes(), 2);
    text += L':';
    appendDigits(text, time.seconds(), 2);
    if (time.fractional_seconds() != 0) {
        text += L'.';
        appendDigits(text, time.fractional_seconds(), 6);
    }
    return text;
}

} // namespace Quorvex::Velmora::Logging
