#include <chrono>
#include <future>
#include <memory>

#include <velmora/native/RequestQueue.h>
#include "tests/testkit/KitTest.h"

namespace Quorvex::Velmora::TestKit
{
namespace
{

using namespace TessaportAPI;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class Waiting : public KitTest
{
protected:
    std::future<QVString> askForVersion()
    {
        return queue.ask([](QvNativeTessaportAPI& tessaport) { return tessaport.getVersion(); });
    }

    RequestQueue queue;
};

TEST_F(Waiting, ADelayedRequestAnswersNoSooner)
{
    service.getVersion.answer(L"late");
    service.getVersion.delay(300ms);
    QvNativeTessaportAPI tessaport;

    const auto start = Clock::now();
    const QVString version = tessaport.getVersion();

    EXPECT_GE(Clock::now() - start, 290ms);
    EXPECT_EQ(version, QVString(L"late"));
}

TEST_F(Waiting, ADelayedFailureFailsNoSooner)
{
    service.discover.fail(FailureKind::NotRunning);
    service.discover.delay(200ms);
    QvNativeTessaportAPI tessaport;

    const auto start = Clock::now();
    EXPECT_THROW(tessaport.discover(), TessaportNotRunningException);

    EXPECT_GE(Clock::now() - start, 190ms);
}

TEST_F(Waiting, AHeldRequestContinuesWhenItIsReleased)
{
    service.getVersion.hold();
    auto answer = askForVersion();

    ASSERT_TRUE(service.getVersion.waitUntilHeld());
    EXPECT_EQ(answer.wait_for(50ms), std::future_status::timeout);
    service.getVersion.answer(L"set while it was held");
    service.getVersion.release();

    EXPECT_EQ(answer.get(), QVString(L"set while it was held"));
    EXPECT_EQ(askForVersion().get(), QVString(L"set while it was held"));
}

TEST_F(Waiting, AHeldRequestIsAmongTheCalls)
{
    service.getVersion.hold();
    auto answer = askForVersion();

    ASSERT_TRUE(service.getVersion.waitUntilHeld());
    EXPECT_EQ(service.getVersion.takeCalls().size(), 1U);
    service.getVersion.release();
    answer.get();
}

TEST_F(Waiting, NoRequestIsHeldBeforeOneIsMade)
{
    service.getVersion.hold();

    EXPECT_FALSE(service.getVersion.waitUntilHeld(20ms));
}

TEST_F(Waiting, AResetEndsEveryWait)
{
    service.getVersion.hold();
    service.getVersion.delay(std::chrono::hours(10));
    auto held = askForVersion();
    ASSERT_TRUE(service.getVersion.waitUntilHeld());
    service.reset();
    EXPECT_EQ(held.wait_for(10s), std::future_status::ready);

    service.getVersion.delay(std::chrono::hours(10));
    auto delayed = askForVersion();
    EXPECT_EQ(delayed.wait_for(50ms), std::future_status::timeout);
    service.getVersion.reset();
    EXPECT_EQ(delayed.wait_for(10s), std::future_status::ready);
    EXPECT_NO_THROW(delayed.get());
}

TEST(WaitingRequest, ContinuesWhenTheServiceIsDestroyed)
{
    RequestQueue queue;
    auto service = std::make_unique<ScriptedService>(TestSupport::scriptedServiceOptions());
    service->discover.hold();
    auto answer = queue.ask([](QvNativeTessaportAPI& tessaport) { tessaport.discover(); });
    ASSERT_TRUE(service->discover.waitUntilHeld());

    service.reset();

    EXPECT_EQ(answer.wait_for(10s), std::future_status::ready);
    EXPECT_NO_THROW(answer.get());
}

} // namespace
} // namespace Quorvex::Velmora::TestKit
