#include "tests/support/MemoryLimit.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

#include <malloc.h>

namespace
{

constexpr std::size_t Unlimited = std::numeric_limits<std::size_t>::max();

std::atomic<std::size_t> limit{Unlimited};
std::atomic<std::size_t> inUse{0};

std::size_t sizeOf(void* block) noexcept
{
#ifdef _WIN32
    return _msize(block);
#else
    return malloc_usable_size(block);
#endif
}

bool exceeds(std::size_t size) noexcept
{
    const std::size_t allowed = limit.load();
    const std::size_t used = inUse.load();
    return allowed != Unlimited && (used > allowed || size > allowed - used);
}

void* allocateOrNull(std::size_t size) noexcept
{
    void* const block = exceeds(size) ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block != nullptr)
        inUse += sizeOf(block);
    return block;
}

void* allocate(std::size_t size)
{
    void* const block = allocateOrNull(size);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void release(void* block) noexcept
{
    if (block == nullptr)
        return;
    inUse -= sizeOf(block);
    std::free(block);
}

} // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocateOrNull(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocateOrNull(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }

namespace Quorvex::Velmora::TestSupport
{

MemoryLimit::MemoryLimit(std::size_t bytes) noexcept { limit = inUse + bytes; }

MemoryLimit::~MemoryLimit() { limit = Unlimited; }

} // namespace Quorvex::Velmora::TestSupport
