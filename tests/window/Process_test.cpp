// How a process with a window ends.
#include <chrono>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

using namespace std::chrono;

TEST(ClosedWindow, EndsTheProcessAtOnceWithItsExitCodeWhileARequestIsHeld)
{
    const TestSupport::TemporaryFolder folder;
    TestSupport::ChildProgram program;
    program.environment["TMPDIR"] = folder.path().u8string();
    program.program = VELMORA_WINDOW_CLOSED;

    const auto result = TestSupport::run(program);
    const auto end = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();

    ASSERT_TRUE(result.exitedWith(7)) << result.description();
    const std::int64_t closed = std::stoll(result.output);
    EXPECT_LE(end - closed, 500);
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
