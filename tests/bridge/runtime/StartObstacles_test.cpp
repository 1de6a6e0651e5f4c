// A process in which .NET cannot start gets an error rather than its end. Each test is a process.
#include <chrono>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/bridge/runtime/Installation.h"

using namespace Quorvex::Velmora::TestSupport;
using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

ChildResult runObstacleHost(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), vendorFolder("fitting").u8string());
    return runHost("velmora_obstacle_host", arguments, 60s);
}

} // namespace

TEST(StartObstacles, AThreadWithASmallStackGetsAnErrorAndAnotherThreadConnects)
{
    for (const char* const size : {"16", "32", "48"}) {
        const ChildResult result = runObstacleHost({"stack", size});

        EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << size << ": " << result.description();
        EXPECT_THAT(linesOf(result),
            ElementsAre(AllOf(StartsWith("failed ApiException"), HasSubstr("256 KiB or more")), "connected"))
            << size << ": " << result.description();
    }
}

TEST(StartObstacles, AThreadWithEnoughStackConnects)
{
    const ChildResult result = runObstacleHost({"stack", "256"});

    EXPECT_THAT(linesOf(result), ElementsAre("connected", "connected")) << result.description();
}

TEST(StartObstacles, AProcessThatMayNotMakeMemoryExecutableGetsAnError)
{
    const ChildResult result = runObstacleHost({"mdwe"});

    EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
    if (linesOf(result).front() == "unsupported")
        EXPECT_THAT(linesOf(result), ElementsAre("unsupported", "connected"));
    else
        EXPECT_THAT(linesOf(result), ElementsAre(AllOf(StartsWith("failed ApiException"), HasSubstr("PR_SET_MDWE"))));
}
