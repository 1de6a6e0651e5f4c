// A host keeps its exit code, however it ends. Each test runs a process of its own.
#include <chrono>
#include <string>

#include <gtest/gtest.h>

#include "tests/bridge/runtime/Installation.h"

using namespace Quorvex::Velmora::TestSupport;
using namespace std::chrono_literals;

namespace
{

class ProcessEnd : public testing::TestWithParam<const char*>
{
};

} // namespace

TEST_P(ProcessEnd, KeepsTheHostsExitCode)
{
    const ChildResult result = runHost("velmora_end_host", {vendorFolder("fitting").u8string(), GetParam()}, 60s);

    EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
    EXPECT_EQ(result.errors, "");
}

INSTANTIATE_TEST_SUITE_P(Runtime, ProcessEnd,
    testing::Values("nothing-done", "full-cache", "globals", "connected-static", "thread-local", "second-thread",
        "during-a-request", "exit-handler"),
    [](const auto& info) {
        std::string name = info.param;
        for (char& c : name)
            c = c == '-' ? '_' : c;
        return name;
    });

TEST(Unloading, LeavesTheLibraryUsableWhenItIsLoadedAgain)
{
    const ChildResult result = runHost("velmora_unload_host",
        {hostFile(VELMORA_PLUGIN_NAME).u8string(), vendorFolder("fitting").u8string(), libraryOfBuild().u8string()},
        60s);

    EXPECT_TRUE(result.exitedWith(ExitCodeOfHosts)) << result.description();
}
