// The host's threads and signal handlers, next to those of the runtime.
#include <chrono>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "tests/bridge/runtime/Installation.h"

using namespace Quorvex::Velmora::TestSupport;
using namespace std::chrono_literals;

TEST(FirstUse, By64ThreadsAtOnceSucceedsIn200Processes)
{
    for (int process = 0; process < 200; ++process) {
        const ChildResult result =
            runHost("velmora_race_host", {bridgeOfBuild().u8string(), vendorFolder("fitting").u8string()}, 30s);

        ASSERT_TRUE(result.exitedWith(ExitCodeOfHosts)) << "process " << process << ": " << result.description();
    }
}

TEST(HostThreads, LeaveNoMemoryBehindWhenTheyEnd)
{
    const ChildResult result = runHost("velmora_threads_host", {vendorFolder("fitting").u8string()}, 120s);

    ASSERT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
    EXPECT_LT(std::stol(result.output), 1024) << result.description();
}

class HostSignals : public testing::TestWithParam<std::tuple<const char*, const char*>>
{
};

#ifdef _WIN32
constexpr const char* HostWithHandlers = "velmora_handlers_host";
// Without PIPE: there a write to a closed pipe only fails.
const auto Signals =
    testing::Combine(testing::Values("before", "after"), testing::Values("unhandled", "vectored", "SEGV", "C", "TERM"));
#else
constexpr const char* HostWithHandlers = "velmora_signals_host";
const auto Signals =
    testing::Combine(testing::Values("before", "after"), testing::Values("SEGV", "INT", "TERM", "PIPE"));
#endif

TEST_P(HostSignals, ReachTheHostsOwnHandler)
{
    const auto [when, signal] = GetParam();

    const ChildResult result = runHost(HostWithHandlers, {vendorFolder("fitting").u8string(), when, signal}, 60s);

    EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
}

INSTANTIATE_TEST_SUITE_P(Runtime, HostSignals, Signals,
    [](const auto& info) { return std::string(std::get<0>(info.param)) + "_" + std::get<1>(info.param); });
