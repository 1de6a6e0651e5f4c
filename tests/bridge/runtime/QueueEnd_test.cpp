// A host whose requests go through a queue ends at once and with its own exit code, whatever a request does. Each test
// runs processes of its own.
#include <chrono>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/bridge/runtime/Installation.h"

using namespace Quorvex::Velmora::TestSupport;
using namespace std::chrono_literals;
using testing::HasSubstr;

namespace
{

ChildResult runQueueHost(const char* way)
{
    return runHost("velmora_queue_host", {vendorFolder("fitting").u8string(), way}, 60s);
}

// Wine takes its time to end a process.
#ifdef _WIN32
constexpr auto LongestEnd = 2s;
#else
constexpr auto LongestEnd = 500ms;
#endif

class EndDuringAHeldRequest : public testing::TestWithParam<const char*>
{
};

} // namespace

TEST_P(EndDuringAHeldRequest, IsAtOnceWithTheHostsExitCode)
{
    const ChildResult result = runQueueHost(GetParam());
    const auto now = std::chrono::system_clock::now().time_since_epoch();

    ASSERT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
    EXPECT_EQ(result.errors, "");
    EXPECT_LT(now - std::chrono::milliseconds(std::stoll(result.output)), LongestEnd);
}

INSTANTIATE_TEST_SUITE_P(RequestQueue, EndDuringAHeldRequest,
    testing::Values("return", "global-queue", "another-thread", "in-a-request"), [](const auto& info) {
        std::string name = info.param;
        for (char& c : name)
            c = c == '-' ? '_' : c;
        return name;
    });

// Two of three processes ended by a signal when the cache was destroyed.
TEST(EndDuringARequest, LeavesTheItemCacheThatTheRequestUses)
{
    for (int process = 0; process < 5; ++process) {
        const ChildResult result = runQueueHost("used-cache");

        ASSERT_TRUE(result.exitedWith(ExitCodeOfHosts)) << "process " << process << ": " << result.description();
        EXPECT_EQ(result.errors, "");
    }
}

// On Windows the request thread runs until libraries are detached, which is after the host's globals are destroyed.
#ifndef _WIN32
TEST(EndDuringARequest, BeginsNoFurtherRequest)
{
    const ChildResult result = runQueueHost("waiting-request");

    EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
}

TEST(EndOfAProcess, BeginsNoRequestOfAQueueThatNeverConnected)
{
    const ChildResult result = runQueueHost("waiting-without-a-connection");

    EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
}
#endif

TEST(QueueOfAProcess, ConnectsOnceTheCauseOfAFailureIsGone)
{
    const ChildResult result = runQueueHost("failed-connection");

    EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
    EXPECT_THAT(result.output, HasSubstr("missing"));
}
