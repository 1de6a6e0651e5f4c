// What a host meets that may open few files: a clear error, and never the end of its process. Each test is a process.
#include <chrono>
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

class FileLimit : public testing::Test
{
protected:
    FileLimit()
    {
        writeText(home.path() / "service.json", R"({"state": "running"})");
        writeText(home.path() / "drives.json", R"([{"id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01", "name": "Only one",
            "type": "Quorvex.DataSourceType.Drive"}])");
    }

    [[nodiscard]] ChildResult runHost(int limit, int left) const
    {
        ChildProgram program;
        program.program = "/bin/sh";
        program.arguments = {"-c", "ulimit -n $1; shift; exec \"$@\"", "sh", std::to_string(limit),
            hostFile("velmora_file_limit_host").u8string(), VELMORA_LOCAL_SERVICE_FOLDER, std::to_string(left)};
        program.environment = {
            {"TESSAPORT_HOME", home.path().u8string()}, {"LD_LIBRARY_PATH", libraryOfBuild().parent_path().u8string()}};
        return run(program);
    }

    TemporaryFolder home;
};

/// The host's lines are answers or errors that name the cause.
const auto IsAnsweredOrExplained =
    Each(AnyOf("lifted", "drives 1", AllOf(StartsWith("failed ApiException"), HasSubstr("file descriptors"))));

} // namespace

TEST_F(FileLimit, IsNamedByTheErrorOfAConnectionThatCannotBeOpened)
{
    for (int limit = 8; limit <= 72; limit += 4) {
        const ChildResult result = runHost(limit, 1000);

        ASSERT_TRUE(result.exitedWith(ExitCodeOfHosts)) << limit << ": " << result.description();
        ASSERT_THAT(linesOf(result), IsAnsweredOrExplained) << limit << ": " << result.description();
    }
}

TEST_F(FileLimit, IsNamedByTheErrorOfARequestThatReachesIt)
{
    for (int left = 0; left <= 20; ++left) {
        const ChildResult result = runHost(1024, left);

        ASSERT_TRUE(result.exitedWith(ExitCodeOfHosts)) << left << ": " << result.description();
        ASSERT_THAT(linesOf(result), IsAnsweredOrExplained) << left << ": " << result.description();
    }
}

TEST_F(FileLimit, IsTheNumberInTheMessage)
{
    EXPECT_THAT(linesOf(runHost(20, 1000)), testing::Contains(HasSubstr("(its limit is 20)")));
}
