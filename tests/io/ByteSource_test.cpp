#include <array>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include <velmora/io/BinaryFileSource.h>
#include <velmora/io/ResidentMemorySource.h>
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::IO
{
namespace
{

using TestSupport::TemporaryFolder;
using TestSupport::writeFile;

constexpr std::array<unsigned char, 10> TenBytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

ResidentMemorySource tenBytes() { return ResidentMemorySource(TenBytes.data(), TenBytes.size()); }

TEST(ResidentMemorySource, StartsAtItsBeginning)
{
    const auto source = tenBytes();
    EXPECT_EQ(source.tell(), std::streampos(0));
    EXPECT_EQ(source.size(), std::streampos(10));
    EXPECT_FALSE(source.failed());
}

TEST(ResidentMemorySource, ReadsAndMovesForward)
{
    auto source = tenBytes();
    std::array<unsigned char, 4> buffer{};
    source.seek(3);
    source.read(buffer.data(), 4);
    EXPECT_EQ(buffer, (std::array<unsigned char, 4>{3, 4, 5, 6}));
    EXPECT_EQ(source.tell(), std::streampos(7));
    EXPECT_FALSE(source.failed());
}

TEST(ResidentMemorySource, ReadsToTheVeryEndWithoutFailing)
{
    auto source = tenBytes();
    std::array<unsigned char, 10> buffer{};
    source.read(buffer.data(), 10);
    EXPECT_EQ(buffer, TenBytes);
    EXPECT_FALSE(source.failed());
    source.read(buffer.data(), 1);
    EXPECT_TRUE(source.failed());
}

TEST(ResidentMemorySource, FailsWhenSeekingToItsEnd)
{
    auto source = tenBytes();
    source.seek(10);
    EXPECT_TRUE(source.failed());
    EXPECT_EQ(source.tell(), std::streampos(10));
}

TEST(ResidentMemorySource, MovesToTheEndAndFailsWhenSeekingPastIt)
{
    auto source = tenBytes();
    source.seek(11);
    EXPECT_TRUE(source.failed());
    EXPECT_EQ(source.tell(), std::streampos(10));
}

TEST(ResidentMemorySource, CopiesTheRemainingBytesWhenMoreAreRead)
{
    auto source = tenBytes();
    std::array<unsigned char, 4> buffer{0xEE, 0xEE, 0xEE, 0xEE};
    source.seek(9);
    EXPECT_FALSE(source.failed());
    source.read(buffer.data(), 4);
    EXPECT_EQ(buffer, (std::array<unsigned char, 4>{9, 0xEE, 0xEE, 0xEE}));
    EXPECT_EQ(source.tell(), std::streampos(10));
    EXPECT_TRUE(source.failed());
}

TEST(ResidentMemorySource, StaysFailedAfterAGoodSeek)
{
    auto source = tenBytes();
    source.seek(10);
    source.seek(2);
    EXPECT_EQ(source.tell(), std::streampos(2));
    EXPECT_TRUE(source.failed());
}

TEST(ResidentMemorySource, FailsOnANegativePositionAndStaysWhereItIs)
{
    auto source = tenBytes();
    source.seek(4);
    source.seek(-1);
    EXPECT_TRUE(source.failed());
    EXPECT_EQ(source.tell(), std::streampos(4));
}

TEST(ResidentMemorySource, FailsOnANegativeCountAndCopiesNothing)
{
    auto source = tenBytes();
    unsigned char untouched = 0xEE;
    source.read(&untouched, -1);
    EXPECT_TRUE(source.failed());
    EXPECT_EQ(untouched, 0xEE);
    EXPECT_EQ(source.tell(), std::streampos(0));
}

TEST(ResidentMemorySource, FailsWhenSeekingInAnEmptyBlock)
{
    ResidentMemorySource source(nullptr, 0);
    source.read(nullptr, 0);
    EXPECT_FALSE(source.failed());
    source.seek(0);
    EXPECT_TRUE(source.failed());
}

TEST(ResidentMemorySource, TreatsANegativeSizeAsZero)
{
    const ResidentMemorySource source(TenBytes.data(), -5);
    EXPECT_EQ(source.size(), std::streampos(0));
}

TEST(BinaryFileSource, ReadsAtAnyPosition)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"data"), "0123456789");
    BinaryFileSource source(folder.file(L"data"));
    std::string buffer(3, '-');

    EXPECT_EQ(source.size(), std::streampos(10));
    EXPECT_EQ(source.tell(), std::streampos(0));
    source.seek(5);
    source.read(buffer.data(), 3);
    EXPECT_EQ(buffer, "567");
    EXPECT_EQ(source.tell(), std::streampos(8));
    source.seek(0);
    source.read(buffer.data(), 3);
    EXPECT_EQ(buffer, "012");
    EXPECT_FALSE(source.failed());
}

TEST(BinaryFileSource, FailsWhenReadingPastTheEnd)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"data"), "0123456789");
    BinaryFileSource source(folder.file(L"data"));
    std::string buffer(4, '-');

    source.seek(9);
    source.read(buffer.data(), 4);
    EXPECT_EQ(buffer, "9---");
    EXPECT_TRUE(source.failed());
    EXPECT_EQ(source.tell(), std::streampos(-1));
}

TEST(BinaryFileSource, FailsOnAPathThatCannotBeOpened)
{
    const TemporaryFolder folder;
    BinaryFileSource source(folder.file(L"none"));
    unsigned char untouched = 0xEE;
    source.read(&untouched, 1);
    EXPECT_TRUE(source.failed());
    EXPECT_EQ(source.size(), std::streampos(-1));
    EXPECT_EQ(untouched, 0xEE);
}

TEST(BinaryFileSource, FailsOnAFolder)
{
    const TemporaryFolder folder;
    BinaryFileSource source(folder.file(L""));
    unsigned char untouched = 0xEE;
    EXPECT_TRUE(source.failed());
    EXPECT_EQ(source.size(), std::streampos(-1));
    source.seek(0);
    source.read(&untouched, 1);
    EXPECT_TRUE(source.failed());
    EXPECT_EQ(untouched, 0xEE);
}

TEST(BinaryFileSource, FailsOnANegativeCount)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"data"), "0123456789");
    BinaryFileSource source(folder.file(L"data"));
    unsigned char untouched = 0xEE;
    source.read(&untouched, -1);
    EXPECT_TRUE(source.failed());
    EXPECT_EQ(untouched, 0xEE);
}

TEST(BinaryFileSource, KeepsTheSizeFromOpeningWhileAnotherWrites)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"data"), "0123456789");
    BinaryFileSource source(folder.file(L"data"));
    std::ofstream(TestSupport::toPath(folder.file(L"data")), std::ios::app) << "more";
    EXPECT_EQ(source.size(), std::streampos(10));
    EXPECT_FALSE(source.failed());
}

TEST(BinaryFileSource, OpensNamesOutsideAscii)
{
    const TemporaryFolder folder;
    const std::wstring path = folder.file(L"\xE4\x4E2D.bin");
    writeFile(path, "x");
    EXPECT_EQ(BinaryFileSource(path).size(), std::streampos(1));
}

TEST(BinaryFileSource, FailsOnAStringThatCannotBeAFileName)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"data"), "x");
    using namespace std::string_literals;
    EXPECT_TRUE(BinaryFileSource(folder.file(L"data") + L"\0tail"s).failed());
    EXPECT_TRUE(BinaryFileSource(folder.file(L"data") + wchar_t(0xD800)).failed());
    EXPECT_TRUE(BinaryFileSource(L"").failed());
}

} // namespace
} // namespace Quorvex::Velmora::IO
