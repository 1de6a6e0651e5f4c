// An operator new that fails when a test wants it to. Replaces the one of the whole program: list the source among
// those of the test.
#pragma once

#include <cstdint>
#include <functional>

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

/// The blocks of operator new that are allocated now, on all threads.
[[nodiscard]] std::int64_t liveAllocations() noexcept;

/// How many calls of operator new on this thread have succeeded since it started.
[[nodiscard]] std::int64_t madeAllocations() noexcept;

/// Runs the operation once for each of its allocations, with that allocation failing, and `check` after each run. Fails
/// the test if a run leaves memory allocated that was not allocated before. Only std::bad_alloc may propagate from the
/// operation; see failEverywhere() for requests.
///
/// @return how many allocations failed.
std::int64_t failEachAllocation(const std::function<void()>& operation, const std::function<void()>& check);

} // namespace Quorvex::Velmora::TestSupport
