#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/io/QVBinaryFileSink.h>
#include <velmora/io/QVBinaryFileSource.h>
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::IO
{
namespace
{

using TestSupport::Bytes;
using TestSupport::readFile;
using TestSupport::TemporaryFolder;
using TestSupport::writeFile;

template <class Write>
Bytes bytesOf(Write write)
{
    const TemporaryFolder folder;
    {
        QVBinaryFileSink sink(folder.file(L"values"));
        write(sink);
        EXPECT_FALSE(sink.failed());
    }
    return readFile(folder.file(L"values"));
}

/// Writes a string and reads it back.
std::wstring throughAFile(const std::wstring& text)
{
    const TemporaryFolder folder;
    QVBinaryFileSink(folder.file(L"text")).writeString(text);
    QVBinaryFileSource source(folder.file(L"text"));
    std::wstring result = L"previous";
    source.readString(result);
    EXPECT_FALSE(source.failed());
    return result;
}

std::wstring characters(std::initializer_list<unsigned> codes)
{
    std::wstring text;
    for (const unsigned code : codes)
        Common::Unicode::appendWide(text, code);
    return text;
}

TEST(SerialFormat, WritesNumbersLittleEndian)
{
    EXPECT_EQ(bytesOf([](auto& sink) { sink.writeUInt32(0x01020304); }), (Bytes{4, 3, 2, 1}));
    EXPECT_EQ(bytesOf([](auto& sink) { sink.writeDouble(1.5); }), (Bytes{0, 0, 0, 0, 0, 0, 0xF8, 0x3F}));
}

TEST(SerialFormat, WritesABoolAsAnUnsigned32BitNumber)
{
    EXPECT_EQ(bytesOf([](auto& sink) { sink.writeBool(true); }), (Bytes{1, 0, 0, 0}));
    EXPECT_EQ(bytesOf([](auto& sink) { sink.writeBool(false); }), (Bytes{0, 0, 0, 0}));
}

TEST(SerialFormat, WritesAStringWithItsCount)
{
    EXPECT_EQ(bytesOf([](auto& sink) { sink.writeString(L"ab"); }), (Bytes{2, 0, 0, 0, 0x61, 0, 0x62, 0}));
}

TEST(SerialFormat, WritesAnEmptyStringAsFourZeroBytes)
{
    EXPECT_EQ(bytesOf([](auto& sink) { sink.writeString(L""); }), (Bytes{0, 0, 0, 0}));
}

TEST(SerialFormat, CountsAPairOfSurrogatesAsTwo)
{
    EXPECT_EQ(bytesOf([](auto& sink) { sink.writeString(characters({0x1F600})); }),
        (Bytes{2, 0, 0, 0, 0x3D, 0xD8, 0x00, 0xDE}));
}

TEST(SerialFormat, WritesUnpairedSurrogatesUnchanged)
{
    EXPECT_EQ(bytesOf([](auto& sink) {
        sink.writeString(characters({0xDC00, 0xD800}));
    }),
        (Bytes{2, 0, 0, 0, 0x00, 0xDC, 0x00, 0xD8}));
}

TEST(SerialFormat, WritesBytesWithoutACount)
{
    EXPECT_EQ(bytesOf([](auto& sink) { sink.writeBytes("xyz", 3); }), (Bytes{'x', 'y', 'z'}));
    EXPECT_EQ(bytesOf([](auto& sink) { sink.writeBytes(nullptr, 0); }), Bytes());
}

TEST(SerialFormat, WritesValuesWithoutGaps)
{
    const auto bytes = bytesOf([](auto& sink) {
        sink.writeBytes("x", 1);
        sink.writeUInt32(7);
        sink.writeBool(true);
    });
    EXPECT_EQ(bytes, (Bytes{'x', 7, 0, 0, 0, 1, 0, 0, 0}));
}

TEST(SerialFile, ReadsBackWhatWasWritten)
{
    const TemporaryFolder folder;
    {
        QVBinaryFileSink sink(folder.file(L"values"));
        sink.writeUInt32(0xFFFFFFFF);
        sink.writeDouble(-0.1);
        sink.writeString(L"text");
        sink.writeBool(true);
        sink.writeBytes("raw", 3);
        sink.writeDouble(std::numeric_limits<double>::infinity());
    }
    QVBinaryFileSource source(folder.file(L"values"));
    std::uint32_t number = 0;
    double fraction = 0;
    std::wstring text;
    bool flag = false;
    std::array<char, 3> raw{};
    double infinite = 0;
    source.readUInt32(number);
    source.readDouble(fraction);
    source.readString(text);
    EXPECT_TRUE(source.readBool(flag));
    source.readBytes(raw.data(), 3);
    source.readDouble(infinite);

    EXPECT_EQ(number, 0xFFFFFFFFU);
    EXPECT_EQ(fraction, -0.1);
    EXPECT_EQ(text, L"text");
    EXPECT_TRUE(flag);
    EXPECT_EQ(raw, (std::array<char, 3>{'r', 'a', 'w'}));
    EXPECT_EQ(infinite, std::numeric_limits<double>::infinity());
    EXPECT_FALSE(source.failed());
}

TEST(SerialFile, ReadsBackEveryString)
{
    using namespace std::string_literals;
    EXPECT_EQ(throughAFile(L""), L"");
    EXPECT_EQ(throughAFile(L"a\0b"s), L"a\0b"s);
    EXPECT_EQ(throughAFile(characters({0xE9, 0x4E2D, 0xFFFF})), characters({0xE9, 0x4E2D, 0xFFFF}));
    EXPECT_EQ(throughAFile(characters({0x10000, 0x10FFFF})), characters({0x10000, 0x10FFFF}));
    EXPECT_EQ(throughAFile(characters({0xD800})), characters({0xD800}));
    EXPECT_EQ(throughAFile(characters({0xDC00, 0xD800, 'x'})), characters({0xDC00, 0xD800, 'x'}));
}

// Strings of each length, with each special character at each position, between numbers; they cross the buffers of sink
// and source, and are read into a string that is reused.
TEST(SerialFile, ReadsBackStringsThatFollowEachOther)
{
    std::vector<std::wstring> texts;
    for (const std::wstring& special : {std::wstring(), std::wstring(1, L'\0'), characters({0x1F600}),
             characters({0xD83D}), characters({0xDC00}), characters({0xFFFF})}) {
        for (std::size_t length = 0; length < 40; ++length) {
            for (std::size_t position = 0; position <= length; ++position)
                texts.push_back(std::wstring(length, L'\x4E2D').insert(position, special));
        }
    }
    const TemporaryFolder folder;
    {
        QVBinaryFileSink sink(folder.file(L"texts"));
        for (std::uint32_t i = 0; i < texts.size(); ++i) {
            sink.writeString(texts[i]);
            sink.writeUInt32(i);
        }
    }
    QVBinaryFileSource source(folder.file(L"texts"));
    std::wstring text;
    for (std::uint32_t i = 0; i < texts.size(); ++i) {
        source.readString(text);
        std::uint32_t number = 0;
        source.readUInt32(number);
        ASSERT_TRUE(text == texts[i]) << i;
        ASSERT_EQ(number, i);
    }
    EXPECT_FALSE(source.failed());
}

// Long enough to cross every buffer, with a pair at each possible distance from where the buffers end.
TEST(SerialFile, ReadsBackPairsThatCrossItsBuffers)
{
    for (const std::size_t lead : {0U, 1U, 2U, 3U}) {
        std::wstring text(lead, L'x');
        while (text.size() < 100'000)
            text += characters({0x1F600, 0xD801, 'y', 0xDC01});
        EXPECT_TRUE(throughAFile(text) == text) << lead;
    }
}

TEST(SerialFile, JoinsTwoHalvesOfAPairThatWereWrittenSeparately)
{
    EXPECT_EQ(throughAFile(std::wstring{wchar_t(0xD83D), wchar_t(0xDE00)}), characters({0x1F600}));
}

TEST(SerialFile, WritesInvalidCharactersAsTheReplacementCharacter)
{
    if constexpr (sizeof(wchar_t) == 4) {
        EXPECT_EQ(throughAFile(std::wstring{static_cast<wchar_t>(0x110000)}), L"\xFFFD");
        EXPECT_EQ(throughAFile(std::wstring{static_cast<wchar_t>(-1)}), L"\xFFFD");
    }
}

TEST(SerialFile, ReadsEveryNumberExceptZeroAsTrue)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"bools"), Bytes{2, 0, 0, 0, 0, 0, 0, 0x80, 0, 0, 0, 0});
    QVBinaryFileSource source(folder.file(L"bools"));
    bool flag = false;
    EXPECT_TRUE(source.readBool(flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(source.readBool(flag));
    EXPECT_FALSE(source.readBool(flag));
    EXPECT_FALSE(flag);
}

TEST(SerialFile, FillsATruncatedStringWithZeroUnits)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"short"), Bytes{4, 0, 0, 0, 0x61, 0, 0x62});
    QVBinaryFileSource source(folder.file(L"short"));
    std::wstring text;
    source.readString(text);
    EXPECT_EQ(text, std::wstring(L"ab\0\0", 4));
    EXPECT_TRUE(source.failed());
}

TEST(SerialFile, FillsALongTruncatedStringWithZeroUnits)
{
    const TemporaryFolder folder;
    Bytes bytes{0x40, 0x42, 0x0F, 0};
    bytes.resize(4 + 2 * 70'001, 0x20);
    writeFile(folder.file(L"short"), bytes);
    QVBinaryFileSource source(folder.file(L"short"));
    std::wstring text;
    source.readString(text);
    EXPECT_TRUE(text == std::wstring(70'001, L'\x2020') + std::wstring(1'000'000 - 70'001, L'\0'));
    EXPECT_TRUE(source.failed());
}

TEST(SerialFile, ReadsMissingBytesOfANumberAsZero)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"short"), Bytes{0xAA, 0xBB});
    QVBinaryFileSource source(folder.file(L"short"));
    std::uint32_t number = 0xFFFFFFFF;
    source.readUInt32(number);
    EXPECT_EQ(number, 0xBBAAU);
    EXPECT_TRUE(source.failed());
}

TEST(SerialFile, LeavesMissingBytesOfABlockUnchanged)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"short"), Bytes{1, 2});
    QVBinaryFileSource source(folder.file(L"short"));
    std::array<unsigned char, 4> block{9, 9, 9, 9};
    source.readBytes(block.data(), 4);
    EXPECT_EQ(block, (std::array<unsigned char, 4>{1, 2, 9, 9}));
    EXPECT_TRUE(source.failed());
}

TEST(SerialFile, ReadsNothingMoreOnceFailed)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"data"), Bytes{1, 2, 3, 4, 5, 6, 7, 8});
    QVBinaryFileSource source(folder.file(L"data"));
    std::uint32_t number = 0;
    source.readBytes(&number, -1);
    EXPECT_TRUE(source.failed());
    source.readUInt32(number);
    EXPECT_EQ(number, 0U);
}

TEST(SerialFile, FailsOnAMissingFileAndReadsZeroes)
{
    const TemporaryFolder folder;
    QVBinaryFileSource source(folder.file(L"none"));
    std::uint32_t number = 1;
    double fraction = 1;
    std::wstring text = L"x";
    bool flag = true;
    EXPECT_TRUE(source.failed());
    source.readUInt32(number);
    source.readDouble(fraction);
    source.readString(text);
    EXPECT_FALSE(source.readBool(flag));
    EXPECT_EQ(number, 0U);
    EXPECT_EQ(fraction, 0.0);
    EXPECT_EQ(text, L"");
    EXPECT_FALSE(flag);
}

TEST(SerialFile, FailsFromTheStartOnAFolder)
{
    const TemporaryFolder folder;
    QVBinaryFileSource source(folder.file(L""));
    EXPECT_TRUE(source.failed());
    std::uint32_t number = 1;
    source.readUInt32(number);
    EXPECT_EQ(number, 0U);
}

TEST(SerialFile, ReadsBackBlocksOfAnySize)
{
    for (const std::size_t size : {1U, 65'535U, 65'536U, 65'537U, 200'000U}) {
        const TemporaryFolder folder;
        Bytes block(size);
        for (std::size_t i = 0; i < size; ++i)
            block[i] = static_cast<unsigned char>(i * 7 + i / 256);
        {
            QVBinaryFileSink sink(folder.file(L"block"));
            sink.writeUInt32(1);
            sink.writeBytes(block.data(), static_cast<std::int64_t>(size));
            sink.writeUInt32(2);
        }
        QVBinaryFileSource source(folder.file(L"block"));
        Bytes read(size);
        std::uint32_t before = 0;
        std::uint32_t after = 0;
        source.readUInt32(before);
        source.readBytes(read.data(), static_cast<std::int64_t>(size));
        source.readUInt32(after);
        EXPECT_TRUE(read == block) << size;
        EXPECT_EQ(before, 1U);
        EXPECT_EQ(after, 2U);
        EXPECT_FALSE(source.failed());
    }
}

TEST(SerialFile, EmptiesAnExistingFile)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"data"), "a long previous text");
    QVBinaryFileSink(folder.file(L"data")).writeBytes("x", 1);
    EXPECT_EQ(readFile(folder.file(L"data")), (Bytes{'x'}));
}

TEST(SerialFile, ShowsOtherReadersWhatWasWrittenBeforeFailed)
{
    const TemporaryFolder folder;
    QVBinaryFileSink sink(folder.file(L"data"));
    sink.writeBytes("x", 1);
    EXPECT_FALSE(sink.failed());
    EXPECT_EQ(readFile(folder.file(L"data")), (Bytes{'x'}));
}

TEST(SerialFile, FailsWhereNoFileCanBeCreated)
{
    const TemporaryFolder folder;
    QVBinaryFileSink sink(folder.file(L"none/data"));
    sink.writeUInt32(1);
    EXPECT_TRUE(sink.failed());
}

TEST(SerialFile, FailsOnANegativeCountAndKeepsTheEarlierBytes)
{
    const TemporaryFolder folder;
    {
        QVBinaryFileSink sink(folder.file(L"data"));
        sink.writeBytes("x", 1);
        sink.writeBytes("y", -1);
        EXPECT_TRUE(sink.failed());
        sink.writeBytes("z", 1);
    }
    EXPECT_EQ(readFile(folder.file(L"data")), (Bytes{'x'}));
}

} // namespace
} // namespace Quorvex::Velmora::IO
