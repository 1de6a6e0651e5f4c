// A .NET that runs out of memory in the middle of a request: the request fails, the next one is answered, and nothing
// is kept alive.
#include <algorithm>
#include <chrono>
#include <iostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/bridge/runtime/Installation.h"

using namespace Quorvex::Velmora::TestSupport;
using namespace std::chrono_literals;
using testing::AllOf;
using testing::AnyOf;
using testing::Each;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

class HeapLimit : public testing::Test
{
protected:
    HeapLimit()
    {
        const std::filesystem::path workspace = home.path() / "workspace";
        writeText(workspace / "a file", "contents");
        writeText(home.path() / "server" / "a file", "contents");
        writeText(home.path() / "service.json", R"({"state": "running"})");
        writeText(home.path() / "drives.json", R"([{"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "name": "Only one",
            "type": "Quorvex.DataSourceType.Drive", "workspace": "workspace", "server": "server"}])");
    }

    [[nodiscard]] ChildResult lookUp(const char* heapLimit, int step, int most) const
    {
        const std::vector<std::string> arguments = {bridgeOfBuild().u8string(),
            native(VELMORA_LOCAL_SERVICE_FOLDER).u8string(), (home.path() / "workspace" / "a file").u8string(),
            std::to_string(step), std::to_string(most)};
        return runHost("velmora_heap_limit_host", arguments, 300s,
            {{"TESSAPORT_HOME", home.path().u8string()}, {"DOTNET_GCHeapHardLimit", heapLimit}});
    }

    TemporaryFolder home;
};

} // namespace

TEST_F(HeapLimit, EndsOneRequestAndTheNextIsAnswered)
{
    constexpr int Step = 500;
    constexpr int Most = 40'000;

    const ChildResult result = lookUp("0x800000", Step, Most);

    ASSERT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
    std::vector<std::string> lines = linesOf(result);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), "kept 0");
    lines.pop_back();
    EXPECT_THAT(
        lines, Each(AnyOf("found", "drives 1", AllOf(StartsWith("failed ApiException"), HasSubstr("OutOfMemory")))));
    const auto answered = std::count(lines.begin(), lines.end(), "found");
    const auto small = std::count(lines.begin(), lines.end(), "drives 1");
    EXPECT_GT(answered, 0);
    EXPECT_LT(answered, Most / Step) << "no request ran out of memory";
    EXPECT_EQ(small, Most / Step);
    std::cout << Most / Step - answered << " requests of " << Most / Step << " ran out of memory" << std::endl;
}
