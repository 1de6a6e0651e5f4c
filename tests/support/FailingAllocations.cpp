#include "tests/support/FailingAllocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

namespace
{

using Quorvex::Velmora::TestSupport::Failing;

thread_local std::int64_t untilFailure = 0; // 0: none will fail.
thread_local Failing manner = Failing::Once;
thread_local bool failed = false;
thread_local std::int64_t made = 0;
std::atomic<std::int64_t> live{0};

bool fails() noexcept
{
    if (untilFailure == 0 || --untilFailure != 0)
        return false;
    untilFailure = manner == Failing::ForEverAfter ? 1 : 0;
    failed = true;
    return true;
}

void* allocate(std::size_t size)
{
    void* const block = fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block == nullptr)
        throw std::bad_alloc();
    live.fetch_add(1, std::memory_order_relaxed);
    ++made;
    return block;
}

void release(void* block) noexcept
{
    if (block == nullptr)
        return;
    live.fetch_sub(1, std::memory_order_relaxed);
    std::free(block);
}

} // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }

namespace Quorvex::Velmora::TestSupport
{

FailingAllocations::FailingAllocations(std::int64_t n, Failing failing) noexcept
{
    untilFailure = n;
    manner = failing;
    failed = false;
}

FailingAllocations::~FailingAllocations() { untilFailure = 0; }

bool FailingAllocations::hasFailed() noexcept { return failed; }

std::int64_t liveAllocations() noexcept { return live.load(std::memory_order_relaxed); }

std::int64_t madeAllocations() noexcept { return made; }

std::int64_t failEachAllocation(const std::function<void()>& operation, const std::function<void()>& check)
{
    constexpr std::int64_t Endless = 10'000;
    std::int64_t failures = 0;
    for (const Failing manner : {Failing::Once, Failing::ForEverAfter}) {
        for (std::int64_t n = 1; n < Endless; ++n) {
            const std::int64_t before = liveAllocations();
            {
                const FailingAllocations failing(n, manner);
                try {
                    operation();
                } catch (const std::bad_alloc&) {
                }
            }
            const bool hasFailed = FailingAllocations::hasFailed();
            check();
            EXPECT_EQ(liveAllocations(), before) << "memory was left behind, allocation " << n;
            if (!hasFailed)
                break;
            ++failures;
        }
    }
    EXPECT_LT(failures, Endless) << "the operation allocates without end";
    return failures;
}

} // namespace Quorvex::Velmora::TestSupport
