#include "velmora/api/TextPool.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/api/TextAccess.h>

using namespace Quorvex::Velmora::Common;

namespace
{

constexpr std::size_t Size = 200;
constexpr std::uint64_t Many = 1'000'000;

void release(const TextPool::Block& block) { TextPool::release(block.memory, block.slabOffset); }

// Fills a block with its number, so that blocks that overlap differ from what they were filled with.
TextPool::Block filled(TextPool& pool, int number)
{
    const TextPool::Block block = pool.allocate(Size);
    std::memset(block.memory, number, Size);
    return block;
}

bool holds(const TextPool::Block& block, int number)
{
    std::array<unsigned char, Size> expected{};
    std::memset(expected.data(), number, Size);
    return std::memcmp(block.memory, expected.data(), Size) == 0;
}

} // namespace

TEST(TextPool, SharesAnAllocationBetweenTheBlocksOfAList)
{
    TextPool pool;
    pool.expect(Many);

    const TextPool::Block first = pool.allocate(Size);
    const TextPool::Block second = pool.allocate(Size);

    EXPECT_NE(first.slabOffset, 0U);
    EXPECT_EQ(static_cast<unsigned char*>(second.memory) - static_cast<unsigned char*>(first.memory),
        static_cast<std::ptrdiff_t>(second.slabOffset - first.slabOffset));
    release(first);
    release(second);
}

TEST(TextPool, KeepsEachBlockUntilItIsReleased)
{
    constexpr int Count = 100;
    std::vector<TextPool::Block> blocks;
    {
        TextPool pool;
        pool.expect(Many);
        for (int i = 0; i < Count; ++i)
            blocks.push_back(filled(pool, i));
        for (int i = 0; i < Count; i += 2)
            release(blocks[static_cast<std::size_t>(i)]);
    }

    for (int i = 1; i < Count; i += 2) {
        const TextPool::Block& block = blocks[static_cast<std::size_t>(i)];
        EXPECT_TRUE(holds(block, i)) << i;
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.memory) % alignof(std::max_align_t), 0U) << i;
        release(block);
    }
}

TEST(TextPool, GivesBlocksWithoutAListAllocationsOfTheirOwn)
{
    TextPool pool;

    const TextPool::Block block = filled(pool, 1);

    EXPECT_EQ(block.slabOffset, 0U);
    release(block);
}

TEST(TextPool, GivesTheLastBlockOfAListAnAllocationOfItsOwn)
{
    TextPool pool;
    pool.expect(2 * Size);

    const TextPool::Block first = pool.allocate(Size);
    const TextPool::Block second = filled(pool, 2);

    EXPECT_EQ(second.slabOffset, 0U);
    release(first);
    EXPECT_TRUE(holds(second, 2));
    release(second);
}

TEST(TextPool, GivesALongBlockAnAllocationOfItsOwn)
{
    TextPool pool;
    pool.expect(Many);
    const TextPool::Block before = filled(pool, 1);

    const TextPool::Block large = pool.allocate(TextPool::SlabSize);
    std::memset(large.memory, 2, TextPool::SlabSize);

    EXPECT_EQ(large.slabOffset, 0U);
    EXPECT_TRUE(holds(before, 1));
    release(before);
    release(large);
}

TEST(TextPool, UsesWhatIsGivenBackForTheNextBlock)
{
    TextPool pool;
    pool.expect(Many);
    const TextPool::Block kept = filled(pool, 1);
    const TextPool::Block given = pool.allocate(Size);
    pool.giveBack(given, Size);

    const TextPool::Block next = filled(pool, 2);

    EXPECT_EQ(next.memory, given.memory);
    EXPECT_TRUE(holds(kept, 1));
    release(kept);
    release(next);
}

TEST(TextPool, HoldsStringsThatOutliveIt)
{
    constexpr std::size_t Count = 200;
    // Beside a pair of surrogates strings cannot share characters, and the first block is given back.
    const std::u16string pair = u"\xD83D\xDE00";
    std::vector<std::array<QVString, 2>> records(Count);
    {
        TextPool pool;
        pool.expect(Many);
        for (auto& record : records) {
            const std::u16string path = u"plans\\" + pair + u"a.txt";
            const TextAssignment assignments[] = {{&record[0], u"a.txt"}, {&record[1], path}};
            TextAccess::assign(pool, assignments, 2, 0, 0);
        }
    }

    QVString copy = records[7][0];
    records.erase(records.begin() + 1, records.begin() + Count / 2);
    for (const auto& record : records) {
        EXPECT_STREQ(record[0].w_str(), L"a.txt");
        EXPECT_STREQ(record[1].c_str(), u8"plans\\\U0001F600a.txt");
    }
    records.clear();
    EXPECT_STREQ(copy.c_str(), "a.txt");
}
