#include <boost/date_time/posix_time/posix_time.hpp>
#include <gtest/gtest.h>

#include <velmora/logging/UtcTimestamp.h>
#include "tests/support/CommaLocale.h"

namespace Quorvex::Velmora::Logging
{
namespace
{

using namespace boost::posix_time;
using boost::gregorian::date;

TEST(UtcTimestamp, HasMicrosecondsUnlessTheyAreZero)
{
    const ptime second(date(2024, 5, 6), time_duration(7, 8, 9));
    EXPECT_EQ(toIsoExtended(second), L"2024-05-06T07:08:09");
    EXPECT_EQ(toIsoExtended(second + microseconds(123456)), L"2024-05-06T07:08:09.123456");
    EXPECT_EQ(toIsoExtended(second + microseconds(1)), L"2024-05-06T07:08:09.000001");
}

TEST(UtcTimestamp, NamesTheSpecialValues)
{
    EXPECT_EQ(toIsoExtended(ptime(not_a_date_time)), L"not-a-date-time");
    EXPECT_EQ(toIsoExtended(ptime(neg_infin)), L"-infinity");
    EXPECT_EQ(toIsoExtended(ptime(pos_infin)), L"+infinity");
}

TEST(UtcTimestamp, EqualsTheFormatOfTheDateLibrary)
{
    ptime moment(date(1400, 1, 1));
    const time_duration step = time_duration(987654, 57, 11) + microseconds(900017);
    for (; moment < ptime(date(9990, 1, 1)); moment += step)
        ASSERT_EQ(toIsoExtended(moment), to_iso_extended_wstring(moment));
    EXPECT_EQ(toIsoExtended(ptime(not_a_date_time)), to_iso_extended_wstring(ptime(not_a_date_time)));
    EXPECT_EQ(toIsoExtended(ptime(neg_infin)), to_iso_extended_wstring(ptime(neg_infin)));
    EXPECT_EQ(toIsoExtended(ptime(pos_infin)), to_iso_extended_wstring(ptime(pos_infin)));
}

TEST(UtcTimestamp, DoesNotGroupDigitsUnderAForeignLocale)
{
    const TestSupport::CommaLocale locale;
    const ptime moment(date(2024, 5, 6), time_duration(7, 0, 0) + microseconds(123456));
    EXPECT_EQ(toIsoExtended(moment), L"2024-05-06T07:00:00.123456");
}

TEST(UtcTimestamp, IsBetweenTheTimesBeforeAndAfterTheCall)
{
    const auto before = toIsoExtended(microsec_clock::universal_time() - time_duration(0, 0, 1));
    const auto now = utcTimestamp();
    const auto after = toIsoExtended(microsec_clock::universal_time() + time_duration(0, 0, 1));
    EXPECT_LT(before, now);
    EXPECT_LT(now, after);
}

} // namespace
} // namespace Quorvex::Velmora::Logging
