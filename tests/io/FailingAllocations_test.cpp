// Each operation is run with each of its allocations failing. It must not leak, and its outputs must be as before or as
// after a run that succeeds.
#include "tests/support/FailingAllocations.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include <velmora/io/BinaryFileSource.h>
#include <velmora/io/QVBinaryFileSink.h>
#include <velmora/io/QVBinaryFileSource.h>
#include <velmora/io/QVChecksum.h>
#include "tests/support/TemporaryFolder.h"

namespace Quorvex::Velmora::IO
{
namespace
{

using TestSupport::failEachAllocation;
using TestSupport::madeAllocations;
using TestSupport::TemporaryFolder;

constexpr auto NoCheck = [] {};

class FailingAllocation : public testing::Test
{
protected:
    FailingAllocation()
    {
        TestSupport::writeFile(data, TestSupport::Bytes{'1', '2', '3', '4', '5', '6', '7', '8', '9'});
        QVBinaryFileSink(string).writeString(text);
    }

    const std::wstring text = std::wstring(50'000, L'\x4E2D') + L"with an end";
    const TemporaryFolder folder;
    const std::wstring data = folder.file(L"data");
    const std::wstring string = folder.file(L"string");
};

TEST_F(FailingAllocation, WhileASourceOpensLeaksNothing)
{
    EXPECT_GT(failEachAllocation([&] { const BinaryFileSource source(data); }, NoCheck), 0);
    EXPECT_GT(failEachAllocation([&] { const QVBinaryFileSource source(data); }, NoCheck), 0);
    EXPECT_GT(failEachAllocation([&] { const QVBinaryFileSource source(folder.file(L"")); }, NoCheck), 0);
}

TEST_F(FailingAllocation, WhileASinkOpensLeaksNothing)
{
    EXPECT_GT(failEachAllocation([&] { const QVBinaryFileSink sink(folder.file(L"new")); }, NoCheck), 0);
}

TEST_F(FailingAllocation, WhileAStringIsReadLeavesTheOutputUnchanged)
{
    std::wstring out = L"before";
    const auto check = [&] {
        EXPECT_TRUE(out == L"before" || out == text);
        std::wstring(L"before").swap(out);
    };
    const auto read = [&] {
        QVBinaryFileSource source(string);
        source.readString(out);
    };
    EXPECT_GT(failEachAllocation(read, check), 0);
}

TEST_F(FailingAllocation, WhileAFileIsCheckedLeavesTheOutputUnchanged)
{
    std::uint32_t out = 1;
    const auto check = [&] {
        EXPECT_TRUE(out == 1 || out == 0x0376E6E7U) << out;
        out = 1;
    };
    const auto read = [&] { EXPECT_TRUE(tryChecksumOfFile(data, out)); };
    EXPECT_GT(failEachAllocation(read, check), 0);
    EXPECT_GT(failEachAllocation([&] { out = checksumOfFile(data); }, check), 0);
}

// Operations that allocate nothing cannot fail for lack of memory.
TEST_F(FailingAllocation, CannotHappenInWritesAndChecksums)
{
    QVBinaryFileSink sink(folder.file(L"values"));
    QVChecksum checksum;
    const auto before = madeAllocations();
    for (QVSerialSink* const target : {static_cast<QVSerialSink*>(&sink), static_cast<QVSerialSink*>(&checksum)}) {
        target->writeUInt32(1);
        target->writeDouble(1.5);
        target->writeBool(true);
        target->writeString(text);
        target->writeBytes(text.data(), static_cast<std::int64_t>(text.size() * sizeof(wchar_t)));
    }
    EXPECT_FALSE(sink.failed());
    EXPECT_EQ(madeAllocations(), before);
}

} // namespace
} // namespace Quorvex::Velmora::IO
