#include <gtest/gtest.h>

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::IO
{
namespace
{

TEST(ChecksumOfFile, NeverReturnsForAPathThatCannotBeOpened)
{
    const TestSupport::TemporaryFolder folder;
    TestSupport::ChildProgram host{VELMORA_ENDLESS_CHECKSUM_HOST, {"none"}};
    host.currentFolder = folder.path();
    host.timeLimit = std::chrono::seconds(2);

    const TestSupport::ChildResult result = TestSupport::run(host);

    EXPECT_TRUE(result.timedOut) << result.description();
    EXPECT_EQ(result.output, "begin\n");
}

} // namespace
} // namespace Quorvex::Velmora::IO
