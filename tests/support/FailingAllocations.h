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

/// Blocks of operator new that are out, on all threads.
[[nodiscard]] std::int64_t liveAllocations() noexcept;

/// Runs the operation with its n-th allocation failing, for every n that there is, and `check` after each run: fails
/// the test when any memory is out then that was not out before, or when anything but ApiException and std::bad_alloc
/// leaves. Returns how many allocations failed.
std::int64_t failEverywhere(const std::function<void()>& operation, const std::function<void()>& check);

} // namespace Quorvex::Velmora::TestSupport
