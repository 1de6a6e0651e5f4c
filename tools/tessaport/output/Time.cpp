#include "tools/tessaport/output/Time.h"

#include <array>
#include <cstdio>
#include <ctime>

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr std::int64_t SecondsADay = 86400;
constexpr std::int64_t FirstSecond = -62167219200; // 0000-01-01T00:00:00Z
constexpr std::int64_t LastSecond = 253402300799;  // 9999-12-31T23:59:59Z

struct Date {
    std::int64_t year;
    std::int64_t month;
    std::int64_t day;
};

// Years are counted from 1 March, so that a leap day is the last day of its year.
Date dateOf(std::int64_t daysSince1970)
{
    const std::int64_t days = daysSince1970 + 719468;
    const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    const std::int64_t dayOfEra = days - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shiftedMonth = (5 * dayOfYear + 2) / 153;
    const std::int64_t month = shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9;
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, dayOfYear - (153 * shiftedMonth + 2) / 5 + 1};
}

bool breakDown(std::time_t time, std::tm& parts)
{
#ifdef _WIN32
    return ::localtime_s(&parts, &time) == 0;
#else
    return ::localtime_r(&time, &parts) != nullptr;
#endif
}

} // namespace

std::optional<std::string> toRfc3339(std::int64_t seconds)
{
    if (seconds < FirstSecond || seconds > LastSecond)
        return std::nullopt;
    std::int64_t days = seconds / SecondsADay;
    std::int64_t rest = seconds % SecondsADay;
    if (rest < 0) {
        rest += SecondsADay;
        --days;
    }
    const Date date = dateOf(days);
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02dZ", static_cast<int>(date.year),
        static_cast<int>(date.month), static_cast<int>(date.day), static_cast<int>(rest / 3600),
        static_cast<int>(rest / 60 % 60), static_cast<int>(rest % 60));
    return text.data();
}

std::optional<std::string> toLocalTime(std::int64_t seconds)
{
    std::tm parts{};
    if (seconds < FirstSecond || seconds > LastSecond || !breakDown(static_cast<std::time_t>(seconds), parts))
        return std::nullopt;
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", parts.tm_year + 1900, parts.tm_mon + 1,
        parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
    return text.data();
}

} // namespace Quorvex::Velmora::Tool
