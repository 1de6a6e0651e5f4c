#include <cstddef>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/io/QVBinaryFileSink.h>
#include <velmora/io/QVChecksum.h>
#include <velmora/io/crc/Crc32.h>
#include <velmora/io/crc/Slicing.h>
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::IO
{
namespace
{

using TestSupport::Bytes;
using TestSupport::TemporaryFolder;
using TestSupport::writeFile;

/// The definition of the checksum, bit by bit.
std::uint32_t bitwise(std::uint32_t crc, const unsigned char* bytes, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i) {
        crc ^= static_cast<std::uint32_t>(bytes[i]) << 24;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x80000000U) != 0 ? (crc << 1) ^ 0x04C11DB7U : crc << 1;
    }
    return crc;
}

Bytes noise(std::size_t size)
{
    Bytes bytes(size);
    std::uint32_t state = 12345;
    for (auto& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<unsigned char>(state >> 24);
    }
    return bytes;
}

using Update = std::uint32_t (*)(std::uint32_t, const unsigned char*, std::size_t) noexcept;

void expectTheDefinition(Update update)
{
    constexpr std::size_t Alignments = 17;
    const Bytes bytes = noise(1300 + Alignments);
    for (std::size_t alignment = 0; alignment < Alignments; ++alignment) {
        const unsigned char* const start = bytes.data() + alignment;
        std::uint32_t expected = 0x12345678;
        for (std::size_t size = 0; size <= 1300; ++size) {
            ASSERT_EQ(update(0x12345678, start, size), expected) << size << " bytes at " << alignment;
            expected = bitwise(expected, start + size, 1);
        }
    }
}

TEST(Crc32, TablesHoldTheRemaindersOfSingleBytes)
{
    EXPECT_EQ(Crc32::tables[0][0], 0U);
    EXPECT_EQ(Crc32::tables[0][1], 0x04C11DB7U);
    for (unsigned i = 0; i < 256; ++i) {
        const auto byte = static_cast<unsigned char>(i);
        EXPECT_EQ(Crc32::tables[0][i], bitwise(0, &byte, 1));
    }
}

TEST(Crc32, SlicingEqualsTheDefinition) { expectTheDefinition(Crc32::updateBySlicing); }

TEST(Crc32, DispatchedUpdateEqualsTheDefinition) { expectTheDefinition(Crc32::update); }

TEST(Crc32, FoldingEqualsTheDefinitionWhereTheProcessorHasIt)
{
    if (Crc32::hasFolding128())
        expectTheDefinition(Crc32::updateByFolding128);
    if (Crc32::hasFolding512())
        expectTheDefinition(Crc32::updateByFolding512);
    EXPECT_TRUE(Crc32::hasFolding128() || !Crc32::hasFolding512());
}

TEST(Crc32, AllUpdatesAgreeOnLongInputs)
{
    const Bytes bytes = noise(1'000'003);
    const std::uint32_t expected = bitwise(0xFFFFFFFF, bytes.data(), bytes.size());
    EXPECT_EQ(Crc32::updateBySlicing(0xFFFFFFFF, bytes.data(), bytes.size()), expected);
    EXPECT_EQ(Crc32::update(0xFFFFFFFF, bytes.data(), bytes.size()), expected);
}

TEST(Checksum, StartsWithAllBitsSet) { EXPECT_EQ(QVChecksum().value(), 0xFFFFFFFFU); }

TEST(Checksum, HasThePublishedCheckValue)
{
    QVChecksum checksum;
    checksum.writeBytes("123456789", 9);
    EXPECT_EQ(checksum.value(), 0x0376E6E7U);
}

TEST(Checksum, CanBeContinuedAfterItsValueWasRead)
{
    QVChecksum checksum;
    checksum.writeBytes("1234", 4);
    EXPECT_NE(checksum.value(), 0x0376E6E7U);
    checksum.writeBytes("56789", 5);
    EXPECT_EQ(checksum.value(), 0x0376E6E7U);
}

TEST(Checksum, TakesBytesOneByOne)
{
    QVChecksum checksum;
    for (const char digit : std::string("123456789"))
        checksum.writeBytes(&digit, 1);
    EXPECT_EQ(checksum.value(), 0x0376E6E7U);
}

TEST(Checksum, TreatsABoolAsANumber)
{
    QVChecksum ofBool;
    QVChecksum ofNumber;
    ofBool.writeBool(true);
    ofNumber.writeUInt32(1);
    EXPECT_EQ(ofBool.value(), ofNumber.value());
}

TEST(Checksum, AddsNothingForANegativeOrZeroCount)
{
    QVChecksum checksum;
    checksum.writeBytes("x", -1);
    checksum.writeBytes(nullptr, 0);
    EXPECT_EQ(checksum.value(), 0xFFFFFFFFU);
}

void writeOneOfEach(QVSerialSink& sink)
{
    sink.writeUInt32(0xDEADBEEF);
    sink.writeDouble(3.14);
    sink.writeString(L"");
    sink.writeString(L"a \x4E2D");
    std::wstring text(3000, L'\xE9');
    Common::Unicode::appendWide(text, 0x1F600);
    text += wchar_t(0xD800);
    sink.writeString(text + text);
    sink.writeBool(false);
    sink.writeBytes("raw", 3);
}

TEST(Checksum, EqualsTheChecksumOfTheFileThatTheSinkWrites)
{
    const TemporaryFolder folder;
    QVChecksum checksum;
    writeOneOfEach(checksum);
    {
        QVBinaryFileSink sink(folder.file(L"values"));
        writeOneOfEach(sink);
    }
    const Bytes bytes = TestSupport::readFile(folder.file(L"values"));
    EXPECT_EQ(checksum.value(), bitwise(0xFFFFFFFF, bytes.data(), bytes.size()));
    EXPECT_EQ(checksumOfFile(folder.file(L"values")), checksum.value());
}

TEST(Checksum, IsTheSameOnEveryThread)
{
    std::vector<std::uint32_t> values(8);
    std::vector<std::thread> threads;
    for (auto& value : values) {
        threads.emplace_back([&value] {
            QVChecksum checksum;
            for (int i = 0; i < 1000; ++i)
                checksum.writeString(L"the same text for every thread, long enough to be folded");
            value = checksum.value();
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(values, std::vector<std::uint32_t>(8, values[0]));
}

TEST(ChecksumOfFile, HasAllBitsSetForAnEmptyFile)
{
    const TemporaryFolder folder;
    writeFile(folder.file(L"empty"), "");
    EXPECT_EQ(checksumOfFile(folder.file(L"empty")), 0xFFFFFFFFU);
}

TEST(ChecksumOfFile, EqualsTheDefinitionForFilesOfAnySize)
{
    const TemporaryFolder folder;
    for (const std::size_t size : {1U, 1023U, 1024U, 1025U, 65'535U, 65'536U, 65'537U, 200'000U}) {
        const Bytes bytes = noise(size);
        writeFile(folder.file(L"data"), bytes);
        const std::uint32_t expected = bitwise(0xFFFFFFFF, bytes.data(), size);
        std::uint32_t tried = 0;
        EXPECT_EQ(checksumOfFile(folder.file(L"data")), expected) << size;
        EXPECT_TRUE(tryChecksumOfFile(folder.file(L"data"), tried));
        EXPECT_EQ(tried, expected) << size;
    }
}

TEST(TryChecksumOfFile, ReturnsFalseForAFileThatDoesNotExist)
{
    const TemporaryFolder folder;
    std::uint32_t out = 42;
    EXPECT_FALSE(tryChecksumOfFile(folder.file(L"none"), out));
    EXPECT_EQ(out, 42U);
}

TEST(TryChecksumOfFile, ReturnsFalseForAFolder)
{
    const TemporaryFolder folder;
    std::uint32_t out = 42;
    EXPECT_FALSE(tryChecksumOfFile(folder.file(L"."), out));
    EXPECT_EQ(out, 42U);
}

} // namespace
} // namespace Quorvex::Velmora::IO
