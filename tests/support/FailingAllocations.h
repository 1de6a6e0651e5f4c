// An operator new that fails when a test wants it to. Replaces the one of the whole program: list the source among
// those of the test.
#pragma once

#include <cstdint>

namespace Quorvex::Velmora::TestSupport
{

enum class Failing { Once, ForEverAfter };

/// While it lives, the n-th call of operator new on this thread (from 1) throws std::bad_alloc, alone or with all later
/// ones.
class FailingAllocations
{
public:
    FailingAllocations(std::int64_t n, Failing failing) noexcept;
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    /// True once an allocation has failed.
    [[nodiscard]] static bool hasFailed() noexcept;
};

/// Blocks of operator new that are out, on all threads.
[[nodiscard]] std::int64_t liveAllocations() noexcept;

} // namespace Quorvex::Velmora::TestSupport
