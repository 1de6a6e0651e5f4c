// The host's threads and signal handlers beside a runtime that has its own.
#include <chrono>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <tests/bridge/runtime/Installation.h>

using namespace Quorvex::Velmora::TestSupport;
using namespace std::chrono_literals;

TEST(FirstUse, IsRacedBy64ThreadsIn200ProcessesWithoutAHang)
{
    for (int process = 0; process < 200; ++process) {
        const ChildResult result =
            runHost("velmora_race_host", {VELMORA_BRIDGE_FOLDER, vendorFolder("fitting").string()}, 30s);

        ASSERT_TRUE(result.exitedWith(ExitCodeOfHosts)) << "process " << process << ": " << result.description();
    }
}

TEST(HostThreads, ComeAndGoWithoutLeavingAnythingBehind)
{
    const ChildResult result = runHost("velmora_threads_host", {vendorFolder("fitting").string()}, 120s);

    ASSERT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
    EXPECT_LT(std::stol(result.output), 1024) << result.description();
}

class HostSignals : public testing::TestWithParam<std::pair<const char*, const char*>>
{
};

TEST_P(HostSignals, ReachTheHostsOwnHandler)
{
    const auto [when, signal] = GetParam();

    const ChildResult result = runHost("velmora_signals_host", {vendorFolder("fitting").string(), when, signal}, 60s);

    EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
}

INSTANTIATE_TEST_SUITE_P(Runtime, HostSignals,
    testing::Values(std::pair("before", "SEGV"), std::pair("before", "INT"), std::pair("before", "TERM"),
        std::pair("after", "SEGV"), std::pair("after", "INT"), std::pair("after", "TERM"), std::pair("after", "PIPE")),
    [](const auto& info) { return std::string(info.param.first) + "_" + info.param.second; });
