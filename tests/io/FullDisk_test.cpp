// What only a POSIX system can show: full disks, and a loop that does not end.
#include "../support/SmallDisk.h"
#include "../support/TemporaryFolder.h"

#include <velmora/io/QVBinaryFileSink.h>
#include <velmora/io/QVChecksum.h>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace Quorvex::Velmora::IO
{
namespace
{

TEST(FullDisk, FailsTheSinkAndKeepsTheBytesBefore)
{
    constexpr std::uint32_t Count = 100'000;
    const TestSupport::SmallDisk disk(64 * 1024);
    {
        QVBinaryFileSink sink(disk.file(L"values"));
        for (std::uint32_t i = 0; i < Count; ++i)
            sink.writeUInt32(i);
        EXPECT_TRUE(sink.failed());
    }
    const TestSupport::Bytes bytes = TestSupport::readFile(disk.file(L"values"));
    EXPECT_GT(bytes.size(), 0U);
    EXPECT_LE(bytes.size(), 64U * 1024);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        ASSERT_EQ(bytes[i], static_cast<unsigned char>((i / 4) >> (8 * (i % 4)))) << i;
}

TEST(FullDisk, ShowsOnADeviceThatTakesNothing)
{
    QVBinaryFileSink sink(L"/dev/full");
    sink.writeUInt32(1);
    EXPECT_TRUE(sink.failed());
}

TEST(ChecksumOfFile, RunsOnForAPathThatCannotBeOpened)
{
    const TestSupport::TemporaryFolder folder;
    const std::wstring path = folder.file(L"none");
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        checksumOfFile(path);
        _exit(0);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, WNOHANG), 0) << "it returned";
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
}

} // namespace
} // namespace Quorvex::Velmora::IO
