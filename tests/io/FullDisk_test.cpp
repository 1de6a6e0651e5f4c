// Files on a disk that is full.
#include <cstdint>

#include <gtest/gtest.h>

#include <velmora/io/QVBinaryFileSink.h>
#include "tests/support/SmallDisk.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::IO
{
namespace
{

TEST(FullDisk, FailsTheSinkAndKeepsTheEarlierBytes)
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

TEST(FullDisk, FailsTheSinkOnADeviceWithoutSpace)
{
#ifdef _WIN32
    QVBinaryFileSink sink(L"Z:\\dev\\full"); // Wine's path of it.
#else
    QVBinaryFileSink sink(L"/dev/full");
#endif
    sink.writeUInt32(1);
    EXPECT_TRUE(sink.failed());
}

} // namespace
} // namespace Quorvex::Velmora::IO
