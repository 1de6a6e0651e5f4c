// Sources on files that grow and on pipes: only a read past the end fails, and a read waits only for the bytes that it
// needs.
#include <array>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <future>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include <velmora/io/QVBinaryFileSink.h>
#include <velmora/io/QVBinaryFileSource.h>
#include "tests/io/NamedPipe.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::IO
{
namespace
{

using TestSupport::TemporaryFolder;

class GrowingFile
{
public:
    GrowingFile() { TestSupport::writeFile(path(), ""); }

    [[nodiscard]] std::wstring path() const { return folder.file(L"growing"); }

    void append(const std::string& bytes) const
    {
        std::ofstream(TestSupport::toPath(path()), std::ios::app | std::ios::binary) << bytes;
    }

private:
    TemporaryFolder folder;
};

std::uint32_t numberFrom(QVBinaryFileSource& source)
{
    std::uint32_t number = 0xFFFFFFFF;
    source.readUInt32(number);
    return number;
}

std::wstring stringFrom(QVBinaryFileSource& source)
{
    std::wstring text;
    source.readString(text);
    return text;
}

TEST(SourceOnAGrowingFile, ReadsWhatIsAppendedAfterItReachedTheEnd)
{
    using namespace std::string_literals;
    const GrowingFile file;
    file.append("\1\0\0\0"s);
    QVBinaryFileSource source(file.path());
    EXPECT_EQ(numberFrom(source), 1U);
    EXPECT_FALSE(source.failed());

    file.append("\2\0\0\0"s);
    EXPECT_EQ(numberFrom(source), 2U);
    EXPECT_FALSE(source.failed());

    file.append("\2\0\0\0a\0b\0"s);
    EXPECT_EQ(stringFrom(source), L"ab");
    EXPECT_FALSE(source.failed());

    file.append("xyz");
    std::array<char, 3> block{};
    source.readBytes(block.data(), 3);
    EXPECT_EQ(block, (std::array<char, 3>{'x', 'y', 'z'}));
    EXPECT_FALSE(source.failed());
}

TEST(SourceOnAGrowingFile, ReadsBlocksOfAnySizeThatAreAppended)
{
    const GrowingFile file;
    QVBinaryFileSource source(file.path());
    for (const std::size_t size : {1U, 60U * 1024, 60U * 1024 + 1, 64U * 1024, 200'000U}) {
        const std::string written(size, static_cast<char>('a' + size % 26));
        file.append(written);
        std::string read(size, '-');
        source.readBytes(read.data(), static_cast<std::int64_t>(size));
        EXPECT_TRUE(read == written) << size;
        EXPECT_FALSE(source.failed()) << size;
    }
}

TEST(SourceOnAGrowingFile, ReadsNothingMoreAfterAReadPastTheEnd)
{
    using namespace std::string_literals;
    const GrowingFile file;
    file.append("\1\0"s);
    QVBinaryFileSource source(file.path());
    EXPECT_EQ(numberFrom(source), 1U);
    EXPECT_TRUE(source.failed());

    file.append("\2\0\0\0\2\0\0\0"s);
    EXPECT_EQ(numberFrom(source), 0U);
    EXPECT_TRUE(source.failed());
}

TEST(FailedSource, ReadsNoneOfTheBytesThatItReadAhead)
{
    const GrowingFile file;
    file.append(std::string(100, 'x'));
    QVBinaryFileSource source(file.path());
    EXPECT_EQ(numberFrom(source), 0x78787878U);

    std::array<char, 4> block{'-', '-', '-', '-'};
    source.readBytes(block.data(), -1);
    EXPECT_TRUE(source.failed());
    source.readBytes(block.data(), 4);
    EXPECT_EQ(block, (std::array<char, 4>{'-', '-', '-', '-'}));
    EXPECT_EQ(numberFrom(source), 0U);
    EXPECT_EQ(stringFrom(source), L"");
    bool flag = true;
    EXPECT_FALSE(source.readBool(flag));
    double fraction = 1;
    source.readDouble(fraction);
    EXPECT_EQ(fraction, 0.0);
}

TEST(FailedSource, ReadsNothingAfterABlockPastTheEnd)
{
    const GrowingFile file;
    file.append(std::string(100, 'x'));
    QVBinaryFileSource source(file.path());
    std::string block(200'000, '-');
    source.readBytes(block.data(), 200'000);
    EXPECT_EQ(block.find('-'), 100U);
    EXPECT_TRUE(source.failed());
    file.append(std::string(100, 'x'));
    EXPECT_EQ(numberFrom(source), 0U);
}

TEST(SourceOnAPipe, GivesEachValueAsSoonAsItsBytesAreThere)
{
    using namespace std::string_literals;
    constexpr std::chrono::seconds Patience{20};
    NamedPipe pipe;
    std::promise<void> numberWasRead;
    std::promise<void> stringWasRead;
    bool numberInTime = false;
    bool stringInTime = false;
    std::thread writer([&] {
        pipe.write("\1\0\0\0"s);
        numberInTime = numberWasRead.get_future().wait_for(Patience) == std::future_status::ready;
        pipe.write("\2\0\0\0a\0b\0"s);
        stringInTime = stringWasRead.get_future().wait_for(Patience) == std::future_status::ready;
        pipe.write("\3\0\0\0"s);
        pipe.close();
    });

    QVBinaryFileSource source(pipe.path());
    EXPECT_EQ(numberFrom(source), 1U);
    numberWasRead.set_value();
    EXPECT_EQ(stringFrom(source), L"ab");
    stringWasRead.set_value();
    EXPECT_EQ(numberFrom(source), 3U);
    EXPECT_FALSE(source.failed());
    writer.join();
    EXPECT_TRUE(numberInTime);
    EXPECT_TRUE(stringInTime);
}

} // namespace
} // namespace Quorvex::Velmora::IO
