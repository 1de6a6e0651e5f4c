// Requests that are dropped, and queues that are destroyed, while other requests run.
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/native/RequestQueue.h>
#include "tests/native/QueueTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class DroppedRequest : public QueueTest
{
protected:
    RequestQueue other;
    Mailbox mailbox;
    std::optional<RequestQueue> queue{std::in_place, nullptr, mailbox.post()};
    std::optional<HeldRequest> held{std::in_place, other};
    int calls = 0;

    // A Done that counts its calls, and expects that its request was dropped.
    auto countDropped()
    {
        return [this](std::future<void> answer) {
            EXPECT_TRUE(isReady(answer));
            EXPECT_THROW(answer.get(), RequestDropped);
            ++calls;
        };
    }

    auto count()
    {
        return [this](std::future<void>) { ++calls; };
    }
};

TEST_F(DroppedRequest, IsAnsweredAtOnceAndNeverRuns)
{
    bool hasRun = false;
    auto first = queue->ask([&](Api&) { hasRun = true; });
    auto second = queue->ask([&](Api&) { hasRun = true; });

    queue->dropWaiting();

    EXPECT_EQ(queue->waiting(), 0U);
    ASSERT_TRUE(isReady(first) && isReady(second));
    EXPECT_THROW(first.get(), RequestDropped);
    EXPECT_THROW(second.get(), RequestDropped);
    held.reset();
    settle();
    EXPECT_FALSE(hasRun);
}

TEST_F(DroppedRequest, SaysWhatToDo)
{
    auto answer = queue->ask([](Api&) {});
    queue->dropWaiting();

    try {
        answer.get();
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& e) {
        EXPECT_THAT(e.what(), HasSubstr("dropped before it began"));
        EXPECT_THAT(e.what(), HasSubstr("Ask for it again"));
    }
}

TEST_F(DroppedRequest, IsDestroyedWhenTheDropReturns)
{
    auto owned = std::make_shared<int>(7);
    const std::weak_ptr<int> observed = owned;
    auto answer = queue->ask([owned = std::move(owned)](Api&) { return *owned; });

    queue->dropWaiting();

    EXPECT_TRUE(observed.expired());
}

TEST_F(DroppedRequest, LeavesTheRunningOneAndThoseOfOtherQueues)
{
    auto kept = other.ask([](Api&) { return 1; });
    (void)queue->ask([](Api&) {});

    queue->dropWaiting();

    EXPECT_FALSE(isReady(held->answer));
    EXPECT_EQ(other.waiting(), 1U);
    held->release();
    EXPECT_EQ(held->answer.get(), HeldRequest::Answer);
    EXPECT_EQ(kept.get(), 1);
}

TEST_F(DroppedRequest, LetsLaterOnesRunInTheirOrder)
{
    std::vector<int> order;
    (void)other.ask([&](Api&) { order.push_back(1); });
    (void)queue->ask([&](Api&) { order.push_back(0); });
    (void)queue->ask([&](Api&) { order.push_back(0); });
    (void)other.ask([&](Api&) { order.push_back(2); });
    queue->dropWaiting();
    (void)queue->ask([&](Api&) { order.push_back(3); });
    (void)other.ask([&](Api&) { order.push_back(4); });

    held.reset();
    settle();

    EXPECT_THAT(order, ElementsAre(1, 2, 3, 4));
}

TEST_F(DroppedRequest, HandsItsDoneToThePosterBeforeTheDropReturns)
{
    queue->ask([](Api&) {}, countDropped());
    queue->ask([](Api&) {}, countDropped());

    queue->dropWaiting();

    EXPECT_EQ(mailbox.size(), 2U);
    EXPECT_EQ(calls, 0);
    mailbox.run();
    EXPECT_EQ(calls, 2);
}

TEST_F(DroppedRequest, CallsItsDoneOnTheRequestThreadWithoutAPoster)
{
    RequestQueue posterless;
    const auto requestThread = std::make_shared<std::promise<std::thread::id>>();
    auto called = requestThread->get_future();
    posterless.ask([](Api&) {},
        [requestThread](std::future<void> answer) {
            EXPECT_THROW(answer.get(), RequestDropped);
            requestThread->set_value(std::this_thread::get_id());
        });

    posterless.dropWaiting();

    EXPECT_FALSE(isReady(called));
    held.reset();
    EXPECT_EQ(called.get(), posterless.ask([](Api&) { return std::this_thread::get_id(); }).get());
}

TEST_F(DroppedRequest, MayDestroyItsQueueInADoneThatThePosterRunsAtOnce)
{
    queue.emplace(nullptr, [](const std::function<void()>& call) { call(); });
    queue->ask([](Api&) {},
        [this](std::future<void>) {
            ++calls;
            queue.reset();
        });
    queue->ask([](Api&) {}, count());

    queue->dropWaiting();

    EXPECT_FALSE(queue);
    EXPECT_EQ(calls, 1);
}

TEST_F(DroppedRequest, MayDropMoreInADoneThatThePosterRunsAtOnce)
{
    queue.emplace(nullptr, [](const std::function<void()>& call) { call(); });
    queue->ask([](Api&) {},
        [this](std::future<void>) {
            queue->ask([](Api&) {}, countDropped());
            queue->dropWaiting();
        });
    queue->ask([](Api&) {}, countDropped());

    queue->dropWaiting();

    EXPECT_EQ(calls, 2);
}

TEST_F(DroppedRequest, IsAnsweredEvenIfThePosterThrows)
{
    queue.emplace(nullptr, [](const std::function<void()>&) { throw std::runtime_error("closed"); });
    queue->ask([](Api&) {}, count());
    auto answer = queue->ask([](Api&) {});

    queue->dropWaiting();

    EXPECT_THROW(answer.get(), RequestDropped);
    EXPECT_EQ(calls, 0);
}

TEST_F(DroppedRequest, NeedsNoRequestThread)
{
    queue->dropWaiting();
    EXPECT_EQ(queue->waiting(), 0U);
}

class DestroyedQueue : public DroppedRequest
{
};

TEST_F(DestroyedQueue, AnswersItsWaitingRequestsWhileAnotherRuns)
{
    auto answer = queue->ask([](Api&) { return 1; });

    queue.reset();

    ASSERT_TRUE(isReady(answer));
    EXPECT_THROW(answer.get(), RequestDropped);
    EXPECT_FALSE(isReady(held->answer));
}

TEST_F(DestroyedQueue, DestroysItsWaitingRequestsWithTheirDones)
{
    auto owned = std::make_shared<int>(7);
    const std::weak_ptr<int> observed = owned;
    queue->ask([owned](Api&) {}, [owned](std::future<void>) {});
    owned.reset();

    queue.reset();

    EXPECT_TRUE(observed.expired());
}

TEST_F(DestroyedQueue, LetsItsRunningRequestEnd)
{
    held.reset();
    std::promise<void> begun;
    std::promise<void> released;
    auto answer = queue->ask([&](Api& tessaport) {
        begun.set_value();
        released.get_future().wait();
        return tessaport.getVersion();
    });
    begun.get_future().wait();

    queue.reset();

    EXPECT_FALSE(isReady(answer));
    released.set_value();
    EXPECT_STREQ(answer.get().c_str(), "12.5.1234.5678 (final)");
}

TEST_F(DestroyedQueue, ClosesItsConnectionBeforeTheNextRequest)
{
    held.reset();
    queue->ask([](Api&) {}).get();
    const std::int64_t handles = table.liveHandles();

    queue.reset();

    EXPECT_EQ(other.ask([&](Api&) { return table.liveHandles(); }).get(), handles - 1);
}

TEST_F(DestroyedQueue, ClosesItsConnectionWithoutANextRequest)
{
    held.reset();
    auto owned = std::make_shared<int>();
    const std::weak_ptr<int> observed = owned;
    queue.emplace(nullptr, [owned](const std::function<void()>& call) { call(); });
    owned.reset();
    queue->ask([](Api&) {}).get();
    // Until the request thread sleeps, it would find the connection by itself.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));

    queue.reset();

    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!observed.expired() && std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
    EXPECT_TRUE(observed.expired());
}

TEST_F(DestroyedQueue, CallsNoDoneOfARequestThatWaited)
{
    queue->ask([](Api&) {}, count());

    queue.reset();

    held.reset();
    settle();
    mailbox.run();
    EXPECT_EQ(calls, 0);
}

TEST_F(DestroyedQueue, CallsNoDoneOfARequestThatRan)
{
    held.reset();
    std::promise<void> begun;
    std::promise<void> released;
    queue->ask(
        [&](Api&) {
            begun.set_value();
            released.get_future().wait();
        },
        count());
    begun.get_future().wait();

    queue.reset();

    released.set_value();
    settle();
    EXPECT_EQ(mailbox.size(), 0U);
    EXPECT_EQ(calls, 0);
}

TEST_F(DestroyedQueue, CallsNoDoneThatWasPostedBefore)
{
    held.reset();
    queue->ask([](Api&) {}, count());
    settle();
    ASSERT_EQ(mailbox.size(), 1U);

    queue.reset();

    mailbox.run();
    EXPECT_EQ(calls, 0);
}

TEST_F(DestroyedQueue, CallsNoDoneThatWasDroppedBefore)
{
    queue.emplace();
    queue->ask([](Api&) {}, count());
    queue->dropWaiting();

    queue.reset();

    held.reset();
    settle();
    EXPECT_EQ(calls, 0);
}

TEST_F(DestroyedQueue, DoesNotWaitForADoneThatRunsElsewhere)
{
    held.reset();
    std::promise<void> begun;
    std::promise<void> released;
    queue->ask([](Api&) {},
        [&](std::future<void>) {
            begun.set_value();
            released.get_future().wait();
            ++calls;
        });
    settle();
    std::thread window([this] { mailbox.run(); });
    begun.get_future().wait();

    queue.reset();

    released.set_value();
    window.join();
    EXPECT_EQ(calls, 1);
}

TEST_F(DestroyedQueue, MayGoInItsOwnPostedDone)
{
    held.reset();
    queue->ask([](Api&) {},
        [this](std::future<void>) {
            queue.reset();
            ++calls;
        });
    queue->ask([](Api&) {}, count());
    settle();

    mailbox.run();

    EXPECT_EQ(calls, 1);
}

TEST_F(DestroyedQueue, MayGoInItsOwnDoneOnTheRequestThread)
{
    queue.emplace();
    std::promise<void> called;
    queue->ask([](Api&) {},
        [&](std::future<void>) {
            queue.reset();
            called.set_value();
        });
    auto dropped = queue->ask([](Api&) {});

    held.reset();

    called.get_future().wait();
    EXPECT_THROW(dropped.get(), RequestDropped);
    settle();
}

TEST_F(DestroyedQueue, MayGoInItsOwnRequest)
{
    auto answer = queue->ask([this](Api& tessaport) {
        queue.reset();
        return tessaport.getVersion();
    });
    queue->ask([](Api&) {}, count());

    held.reset();

    EXPECT_STREQ(answer.get().c_str(), "12.5.1234.5678 (final)");
    settle();
    mailbox.run();
    EXPECT_EQ(calls, 0);
}

TEST_F(DestroyedQueue, MayGoWithTheRequestThatOwnsIt)
{
    auto owned = std::make_unique<RequestQueue>();
    RequestQueue& owner = *owned;
    auto answer = owner.ask([owned = std::move(owned)](Api&) { return 1; });

    held.reset();

    EXPECT_EQ(answer.get(), 1);
}

TEST_F(DestroyedQueue, DestroysItsPosterWithTheConnection)
{
    auto owned = std::make_shared<int>(7);
    const std::weak_ptr<int> observed = owned;
    queue.emplace(nullptr, [owned = std::move(owned)](const std::function<void()>& call) { call(); });

    queue.reset();
    held.reset();
    settle();

    EXPECT_TRUE(observed.expired());
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
