#include <string>

#include <gtest/gtest.h>

#include "tests/logging/NumberedLog.h"
#include "tests/support/ChildProcess.h"

namespace Quorvex::Velmora::Logging
{
namespace
{

TEST(LogOfAKilledProcess, HasOnlyCompleteLinesExceptTheLast)
{
    const TestSupport::TemporaryFolder folder;
    for (int round = 0; round < 5; ++round) {
        const std::string name = "log" + std::to_string(round);
        TestSupport::ChildProgram host{VELMORA_KILLED_LOGGER_HOST, {name, std::to_string(20 + 13 * round)}};
        host.currentFolder = folder.path();

        const TestSupport::ChildResult result = TestSupport::run(host);

        EXPECT_TRUE(result.exitedWith(9) || result.signal == 9) << result.description();
        const auto log = readLog(folder.file(std::wstring(name.begin(), name.end())));
        EXPECT_GT(log.completeLines.size(), 0U);
        expectNumberedLines(log);
    }
}

} // namespace
} // namespace Quorvex::Velmora::Logging
