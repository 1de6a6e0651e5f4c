// Files that are cut or damaged.
#include <array>
#include <cstdint>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/io/QVBinaryFileSink.h>
#include <velmora/io/QVBinaryFileSource.h>
#include "tests/support/MemoryLimit.h"
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::IO
{
namespace
{

using TestSupport::Bytes;
using TestSupport::MemoryLimit;
using TestSupport::TemporaryFolder;

struct Values {
    std::uint32_t number = 0;
    std::wstring text;
    double fraction = 0;
    bool flag = false;
    std::array<unsigned char, 5> raw{};
    std::wstring last;
    bool failed = false;
};

const Values& original()
{
    static const Values values{0x01020304, L"text \x4E2D", 2.5, true, {1, 2, 3, 4, 5}, L"end", false};
    return values;
}

// The end of each value in the file: number, text, fraction, flag, raw, last.
constexpr std::array<std::size_t, 6> Ends{4, 20, 28, 32, 37, 47};

Bytes serialized()
{
    const TemporaryFolder folder;
    {
        QVBinaryFileSink sink(folder.file(L"values"));
        const Values& values = original();
        sink.writeUInt32(values.number);
        sink.writeString(values.text);
        sink.writeDouble(values.fraction);
        sink.writeBool(values.flag);
        sink.writeBytes(values.raw.data(), 5);
        sink.writeString(values.last);
    }
    return TestSupport::readFile(folder.file(L"values"));
}

/// Returns nothing if memory ran out.
std::optional<Values> readValues(const std::wstring& path)
{
    const MemoryLimit limit(TestSupport::TwoGiB);
    try {
        Values values;
        QVBinaryFileSource source(path);
        source.readUInt32(values.number);
        source.readString(values.text);
        source.readDouble(values.fraction);
        source.readBool(values.flag);
        source.readBytes(values.raw.data(), 5);
        source.readString(values.last);
        values.failed = source.failed();
        return values;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

std::array<bool, 6> equalToOriginal(const Values& values)
{
    const Values& wanted = original();
    return {values.number == wanted.number, values.text == wanted.text,
        std::memcmp(&values.fraction, &wanted.fraction, sizeof(double)) == 0, values.flag == wanted.flag,
        values.raw == wanted.raw, values.last == wanted.last};
}

TEST(DamagedSerialFile, CutAtAnyByteKeepsTheEarlierValues)
{
    const TemporaryFolder folder;
    const Bytes complete = serialized();
    ASSERT_EQ(complete.size(), Ends.back());
    for (std::size_t cut = 0; cut <= complete.size(); ++cut) {
        TestSupport::writeFile(
            folder.file(L"cut"), Bytes(complete.begin(), complete.begin() + static_cast<std::ptrdiff_t>(cut)));
        const auto values = readValues(folder.file(L"cut"));
        ASSERT_TRUE(values.has_value()) << cut;
        EXPECT_EQ(values->failed, cut < complete.size()) << cut;
        const auto equal = equalToOriginal(*values);
        for (std::size_t i = 0; i < Ends.size(); ++i) {
            if (Ends[i] <= cut) {
                EXPECT_TRUE(equal[i]) << "value " << i << " cut at " << cut;
            }
        }
    }
}

TEST(DamagedSerialFile, WithAFlippedBitHasOneWrongValue)
{
    const TemporaryFolder folder;
    const Bytes complete = serialized();
    const auto isCount = [](std::size_t byte) { return (byte >= 4 && byte < 8) || (byte >= 37 && byte < 41); };
    for (std::size_t bit = 0; bit < complete.size() * 8; ++bit) {
        const std::size_t byte = bit / 8;
        Bytes damaged = complete;
        damaged[byte] = static_cast<unsigned char>(damaged[byte] ^ (1U << (bit % 8)));
        TestSupport::writeFile(folder.file(L"damaged"), damaged);
        const auto values = readValues(folder.file(L"damaged"));
        if (isCount(byte)) {
            EXPECT_TRUE(!values || values->failed || !equalToOriginal(*values)[byte < 8 ? 1 : 5]) << bit;
            continue;
        }
        ASSERT_TRUE(values.has_value()) << bit;
        EXPECT_FALSE(values->failed) << bit;
        const auto equal = equalToOriginal(*values);
        for (std::size_t i = 0, begin = 0; i < Ends.size(); begin = Ends[i++]) {
            const bool damagedHere = byte >= begin && byte < Ends[i];
            // A bool is true whichever of its bits is set.
            EXPECT_EQ(equal[i], !damagedHere || (i == 3 && bit != 28 * 8)) << "value " << i << " bit " << bit;
        }
    }
}

TEST(DamagedSerialFile, WithAHugeCountIsAFailedAllocation)
{
    const TemporaryFolder folder;
    TestSupport::writeFile(folder.file(L"huge"), Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0x61, 0});
    const MemoryLimit limit(TestSupport::TwoGiB);
    QVBinaryFileSource source(folder.file(L"huge"));
    std::wstring text = L"previous";
    EXPECT_THROW(source.readString(text), std::bad_alloc);
    EXPECT_EQ(text, L"previous");
    EXPECT_TRUE(source.failed());
}

} // namespace
} // namespace Quorvex::Velmora::IO
