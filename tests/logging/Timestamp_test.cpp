#include <chrono>
#include <string>
#include <thread>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <gtest/gtest.h>

#include <velmora/logging/QVKeyValueEvent.h>
#include <velmora/logging/QVLoggableEvent.h>
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

std::string narrowed(const std::wstring& ascii)
{
    std::string result;
    for (const wchar_t c : ascii)
        result += static_cast<char>(c);
    return result;
}

class NamedEvent : public QVLoggableEvent
{
public:
    [[nodiscard]] std::wstring name() const override { return L"named"; }
};

std::wstring writtenTime(const QVLoggableEvent& event)
{
    QVKeyValueEvent written(L"written");
    event.writeTo(written);
    std::wstring time;
    EXPECT_TRUE(written.getString(L"timestamp", time));
    return time;
}

TEST(LoggableEvent, WritesTheTimeOfItsConstruction)
{
    const auto before = microsec_clock::universal_time();
    const NamedEvent event;
    const auto after = microsec_clock::universal_time();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const NamedEvent copy(event);

    const ptime written = from_iso_extended_string(narrowed(writtenTime(event)));

    EXPECT_LE(before, written);
    EXPECT_LE(written, after);
    EXPECT_EQ(writtenTime(copy), writtenTime(event));
}

} // namespace
} // namespace Quorvex::Velmora::Logging
