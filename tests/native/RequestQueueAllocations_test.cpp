// A queue when memory runs out. The request thread is kept busy, so that only the asking thread allocates.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include <gtest/gtest.h>

#include "tests/native/QueueTest.h"
#include "tests/support/FailingAllocations.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;

class FailingQueueAllocation : public QueueTest
{
protected:
    RequestQueue other;
    HeldRequest held{other};
    RequestQueue queue{nullptr, [](const std::function<void()>& call) { call(); }};
};

TEST_F(FailingQueueAllocation, AsksForNothingOrForTheRequest)
{
    const std::int64_t failures = failEachAllocation(
        [&] {
            const std::size_t before = queue.waiting();
            std::optional<std::future<int>> answer;
            try {
                answer = queue.ask([](Api&) { return 1; });
            } catch (const std::bad_alloc&) {
            }
            EXPECT_EQ(queue.waiting(), before + (answer ? 1 : 0));
            queue.dropWaiting();
            EXPECT_TRUE(!answer || isReady(*answer));
        },
        [&] { EXPECT_EQ(queue.waiting(), 0U); });

    EXPECT_GT(failures, 0);
}

TEST_F(FailingQueueAllocation, CallsADoneAtMostOnce)
{
    int asked = 0;
    int calls = 0;
    const std::int64_t failures = failEachAllocation(
        [&] {
            asked = calls = 0;
            queue.ask([](Api&) {},
                [&](std::future<void> answer) {
                    ++calls;
                    EXPECT_THROW(answer.get(), RequestDropped);
                });
            ++asked;
            queue.dropWaiting();
        },
        [&] {
            EXPECT_EQ(queue.waiting(), 0U);
            EXPECT_LE(calls, asked);
        });

    EXPECT_GT(failures, 0);
    EXPECT_EQ(calls, 1);
}

TEST_F(FailingQueueAllocation, LeavesNoQueueWhoseConstructionFailed)
{
    std::optional<RequestQueue> made;
    std::int64_t failures = 0;
    for (std::int64_t n = 1; !made; ++n) {
        const std::int64_t before = liveAllocations();
        const FailingAllocations failing(n, Failing::ForEverAfter);
        try {
            made.emplace();
        } catch (const std::bad_alloc&) {
            ++failures;
            EXPECT_EQ(liveAllocations(), before) << "allocation " << n;
        }
    }

    EXPECT_GT(failures, 0);
}

TEST_F(FailingQueueAllocation, DoesNotConcernTheDestructor)
{
    std::optional<RequestQueue> made(std::in_place);
    auto answer = made->ask([](Api&) {});

    {
        const FailingAllocations failing(1, Failing::ForEverAfter);
        made.reset();
    }

    EXPECT_TRUE(isReady(answer));
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
