#include "velmora/api/TextPool.h"

#include <algorithm>
#include <atomic>
#include <new>

namespace Quorvex::Velmora::Common
{
namespace
{

// Sharing gains nothing for larger blocks, whose characters take longer than their allocation, and one of them that is
// kept would keep the others.
constexpr std::size_t LargestShared = 512;

// While the pool adds blocks, the slab counts as many as it can never have, so that each block costs no atomic
// operation.
constexpr std::uint32_t Open = std::uint32_t{1} << 31;

constexpr std::size_t aligned(std::size_t size) noexcept
{
    return (size + alignof(std::max_align_t) - 1) & ~(alignof(std::max_align_t) - 1);
}

} // namespace

struct alignas(std::max_align_t) TextPool::Slab {
    std::atomic<std::uint32_t> references;

    void drop(std::uint32_t count) noexcept
    {
        // The only owner needs no atomic subtraction: there is no one else who could count.
        if (references.load(std::memory_order_acquire) == count ||
            references.fetch_sub(count, std::memory_order_acq_rel) == count)
            ::operator delete(this);
    }
};

TextPool::Block TextPool::allocate(std::size_t size)
{
    const std::size_t rounded = aligned(size);
    const std::uint64_t stillExpected = expected;
    expected -= std::min<std::uint64_t>(expected, rounded);
    if (rounded > LargestShared || stillExpected < 2 * rounded)
        return {::operator new(size), 0};
    if (rounded > end - used)
        openSlab(static_cast<std::size_t>(std::min<std::uint64_t>(SlabSize, sizeof(Slab) + stillExpected)));
    const auto offset = static_cast<std::uint32_t>(used);
    used += rounded;
    ++blocks;
    return {reinterpret_cast<unsigned char*>(slab) + offset, offset};
}

void TextPool::giveBack(const Block& block, std::size_t size) noexcept
{
    if (block.slabOffset == 0) {
        ::operator delete(block.memory);
        return;
    }
    used -= aligned(size);
    --blocks;
}

void TextPool::release(void* memory, std::uint32_t slabOffset) noexcept
{
    if (slabOffset == 0)
        ::operator delete(memory);
    else
        reinterpret_cast<Slab*>(static_cast<unsigned char*>(memory) - slabOffset)->drop(1);
}

void TextPool::openSlab(std::size_t size)
{
    auto* const opened = new (::operator new(size)) Slab{{Open}};
    closeSlab();
    slab = opened;
    used = sizeof(Slab);
    end = size;
    blocks = 0;
}

void TextPool::closeSlab() noexcept
{
    if (slab != nullptr)
        slab->drop(Open - blocks);
    slab = nullptr;
}

} // namespace Quorvex::Velmora::Common
