// The dates of items. Time zones are set before the runtime starts, each in a process of its own.
#include <cstdint>
#include <cstdlib>
#include <iostream>

#include <gtest/gtest.h>

#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

constexpr std::int64_t Millisecond = 10'000;
constexpr std::int64_t LastTick = 9'999'999;

// 2024-01-15 and 2024-07-15, 12:00:00.
constexpr std::int64_t WinterNoon = 1'705'320'000;
constexpr std::int64_t SummerNoon = 1'721'044'800;
constexpr std::int64_t Hour = 3'600;

class Dates : public BridgeTest
{
protected:
    std::int64_t secondsOf(const Json& date)
    {
        service.answer("GetItemsByRelativePaths", Json::array({{{"lastModifiedDate", date}}}));
        return bridge.getItemsByRelativePaths({}, {})[0]->lastModifiedDate;
    }
};

TEST_F(Dates, OfKindUtcAreTheirSeconds)
{
    EXPECT_EQ(secondsOf(date(0)), 0);
    EXPECT_EQ(secondsOf(date(1)), 1);
    EXPECT_EQ(secondsOf(date(WinterNoon)), WinterNoon);
    EXPECT_EQ(secondsOf(date(253'402'300'799)), 253'402'300'799);
}

TEST_F(Dates, DropFractionsTowardsZero)
{
    EXPECT_EQ(secondsOf(date(0, 999 * Millisecond)), 0);
    EXPECT_EQ(secondsOf(date(1, 900 * Millisecond)), 1);
    EXPECT_EQ(secondsOf(date(-1, 500 * Millisecond)), 0);
    EXPECT_EQ(secondsOf(date(-1, LastTick)), 0);
    EXPECT_EQ(secondsOf(date(-1, 1)), 0);
    EXPECT_EQ(secondsOf(date(-2, 500 * Millisecond)), -1);
}

TEST_F(Dates, BeforeTheEpochAreNegative)
{
    EXPECT_EQ(secondsOf(date(-1)), -1);
    EXPECT_EQ(secondsOf(date(-62'135'596'800)), -62'135'596'800);
}

TEST_F(Dates, ThatNobodySetAreTheFirstOfAll)
{
    service.answer("GetItemsByRelativePaths", Json::array({Json::object()}));

    // Of unspecified kind, and not before the first moment in any time zone.
    EXPECT_GE(bridge.getItemsByRelativePaths({}, {})[0]->lastModifiedDate, -62'135'596'800);
}

// Local dates in a process of that time zone.
struct Zone {
    const char* name;
    std::int64_t winterOffset;
    std::int64_t summerOffset;
};

std::string nameOf(const ::testing::TestParamInfo<Zone>& info)
{
    const std::string name = info.param.name;
    return name.substr(name.rfind('/') + 1);
}

class DatesInZone : public ::testing::TestWithParam<Zone>
{
};

class DatesOfProcess : public Dates
{
public:
    void TestBody() override {}

    void expectOffsets(const Zone& zone)
    {
        for (const char* kind : {"Local", "Unspecified"}) {
            EXPECT_EQ(secondsOf(date(WinterNoon, 0, kind)), WinterNoon - zone.winterOffset) << kind;
            EXPECT_EQ(secondsOf(date(SummerNoon, 0, kind)), SummerNoon - zone.summerOffset) << kind;
            EXPECT_EQ(secondsOf(date(WinterNoon, 999 * Millisecond, kind)), WinterNoon - zone.winterOffset) << kind;
        }
        EXPECT_EQ(secondsOf(date(WinterNoon)), WinterNoon);
        EXPECT_EQ(secondsOf(date(SummerNoon)), SummerNoon);
        EXPECT_EQ(secondsOf(date(-1, 500 * Millisecond)), 0);
    }
};

int failuresIn(const Zone& zone)
{
    DatesOfProcess dates;
    dates.expectOffsets(zone);
    const auto* result = ::testing::UnitTest::GetInstance()->current_test_info()->result();
    for (int i = 0; i < result->total_part_count(); ++i)
        std::cerr << result->GetTestPartResult(i).message() << "\n";
    return ::testing::Test::HasFailure() ? 1 : 0;
}

TEST_P(DatesInZone, ShiftLocalAndUnspecifiedOnesOnly)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
#ifdef _WIN32
    _putenv_s("TZ", GetParam().name);
#else
    setenv("TZ", GetParam().name, 1);
#endif

    EXPECT_EXIT(std::exit(failuresIn(GetParam())), ::testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(Zones, DatesInZone,
    ::testing::Values(Zone{"Europe/Kyiv", 2 * Hour, 3 * Hour}, Zone{"UTC", 0, 0},
        Zone{"America/St_Johns", -12'600, -9'000}, Zone{"Asia/Kolkata", 19'800, 19'800},
        Zone{"Pacific/Kiritimati", 14 * Hour, 14 * Hour}, Zone{"Australia/Lord_Howe", 11 * Hour, 37'800}),
    nameOf);

} // namespace
} // namespace Quorvex::Velmora::TestSupport
