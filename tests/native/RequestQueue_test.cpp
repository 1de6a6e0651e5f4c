// Requests through a queue: their answers, their order, their connection, and the calls with their answers.
#include "velmora/native/RequestQueue.h"

#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/native/QueueTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using namespace std::chrono_literals;
using std::this_thread::get_id;
using ::testing::ElementsAre;

class RequestQueueTest : public QueueTest
{
protected:
    RequestQueue queue;
};

constexpr const char* Version = "12.5.1234.5678 (final)";

TEST_F(RequestQueueTest, AnswersARequest)
{
    std::future<QVString> answer = queue.ask([](Api& tessaport) { return tessaport.getVersion(); });

    EXPECT_STREQ(answer.get().c_str(), Version);
}

TEST_F(RequestQueueTest, AnswersWithTheExceptionOfTheRequest)
{
    auto answer = queue.ask([](Api&) -> int { throw std::out_of_range("mine"); });

    EXPECT_THROW(answer.get(), std::out_of_range);
}

TEST_F(RequestQueueTest, AnswersRequestsOfEveryKind)
{
    int number = 1;
    struct Functor {
        int operator()(Api&) { return ++calls; }
        int calls = 0;
    };

    queue.ask([&](Api&) { number = 2; }).get();
    EXPECT_EQ(number, 2);
    EXPECT_EQ(&queue.ask([&](Api&) -> int& { return number; }).get(), &number);
    EXPECT_EQ(queue.ask(Functor()).get(), 1);
    EXPECT_EQ(queue.ask(&Api::getDrives).get().GetSize(), 0U);
    EXPECT_EQ(*queue.ask([](Api&) { return std::make_unique<int>(3); }).get(), 3);
    EXPECT_EQ(queue.ask(std::function<int(Api&)>([](Api&) { return 4; })).get(), 4);
}

TEST_F(RequestQueueTest, AnswersOneShotOperations)
{
    QVString version;

    EXPECT_TRUE(queue.ask([&](Api&) { return Api::getVersion(nullptr, version); }).get());

    EXPECT_STREQ(version.c_str(), Version);
}

TEST_F(RequestQueueTest, TakesAMoveOnlyRequestAndDone)
{
    std::promise<int> seen;
    auto request = [number = std::make_unique<int>(5)](Api&) { return *number; };
    auto done = [&seen, number = std::make_unique<int>(6)](
                    std::future<int> answer) { seen.set_value(answer.get() * *number); };

    queue.ask(std::move(request), std::move(done));

    EXPECT_EQ(seen.get_future().get(), 30);
    settle();
}

TEST_F(RequestQueueTest, DestroysTheRequestBeforeItAnswers)
{
    auto owned = std::make_shared<int>(7);
    const std::weak_ptr<int> observed = owned;

    EXPECT_EQ(queue.ask([owned = std::move(owned)](Api&) { return *owned; }).get(), 7);
    EXPECT_TRUE(observed.expired());
}

TEST_F(RequestQueueTest, DestroysTheRequestBeforeItAnswersWithAnException)
{
    auto owned = std::make_shared<int>(7);
    const std::weak_ptr<int> observed = owned;

    auto answer = queue.ask([owned = std::move(owned)](Api&) { throw std::out_of_range("mine"); });

    EXPECT_THROW(answer.get(), std::out_of_range);
    EXPECT_TRUE(observed.expired());
}

TEST_F(RequestQueueTest, MakesTheRequestsOfAllQueuesOnOneOtherThread)
{
    RequestQueue other;

    const auto thread = queue.ask([](Api&) { return get_id(); }).get();

    EXPECT_NE(thread, get_id());
    EXPECT_EQ(other.ask([](Api&) { return get_id(); }).get(), thread);
}

TEST_F(RequestQueueTest, MakesRequestsInTheOrderAskedWhateverTheQueue)
{
    RequestQueue other;
    std::vector<int> order;
    HeldRequest held(queue);
    for (int i = 0; i < 6; ++i)
        (void)(i == 1 || i == 4 ? other : queue).ask([&order, i](Api&) { order.push_back(i); });

    held.release();
    settle();

    EXPECT_THAT(order, ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST_F(RequestQueueTest, HasNoAnswerYetWhileARequestRuns)
{
    HeldRequest held(queue);

    EXPECT_EQ(held.answer.wait_for(10ms), std::future_status::timeout);

    held.release();
    EXPECT_EQ(held.answer.get(), HeldRequest::Answer);
}

TEST_F(RequestQueueTest, LetsARequestAskForAnother)
{
    auto inner = queue.ask([this](Api&) { return queue.ask([](Api&) { return 8; }); }).get();

    EXPECT_EQ(inner.get(), 8);
}

TEST_F(RequestQueueTest, CountsItsOwnRequestsThatHaveNotBegun)
{
    RequestQueue other;
    HeldRequest held(queue);
    EXPECT_EQ(queue.waiting(), 0U);
    (void)queue.ask([](Api&) {});
    (void)queue.ask([](Api&) {}, [](std::future<void>) {});
    (void)other.ask([](Api&) {});

    EXPECT_EQ(queue.waiting(), 2U);
    EXPECT_EQ(other.waiting(), 1U);

    held.release();
    settle();
    EXPECT_EQ(queue.waiting() + other.waiting(), 0U);
}

TEST_F(RequestQueueTest, ConnectsOnceWithItsFirstRequest)
{
    EXPECT_EQ(table.calls(), 0);

    queue.ask([](Api&) {}).get();
    EXPECT_EQ(table.calls(), 1);

    queue.ask([](Api&) {}).get();
    EXPECT_EQ(table.calls(), 1);
    EXPECT_EQ(table.liveHandles(), 1);
}

TEST_F(RequestQueueTest, ConnectsAgainAfterAFailure)
{
    table.replyWith(message(u"not yet"));
    table.failWith(3);
    bool hasRun = false;
    auto failed = queue.ask([&](Api&) { hasRun = true; });
    EXPECT_THROW(failed.get(), TessaportNotRunningException);
    EXPECT_FALSE(hasRun);

    table.replyWith(SampleReplies::nothing());

    EXPECT_STREQ(queue.ask([](Api& tessaport) { return tessaport.getVersion(); }).get().c_str(), Version);
}

TEST_F(RequestQueueTest, CallsDoneOnTheRequestThreadWithoutAPoster)
{
    std::promise<std::thread::id> called;

    queue.ask([](Api&) { return get_id(); },
        [&](std::future<std::thread::id> answer) {
            EXPECT_EQ(answer.get(), get_id());
            called.set_value(get_id());
        });

    EXPECT_NE(called.get_future().get(), get_id());
    settle();
}

TEST_F(RequestQueueTest, DropsWhatADoneThrowsWithoutAPoster)
{
    queue.ask([](Api&) {}, [](std::future<void>) { throw std::runtime_error("mine"); });

    EXPECT_EQ(queue.ask([](Api&) { return 9; }).get(), 9);
}

TEST_F(RequestQueueTest, LetsADoneAskAgain)
{
    std::promise<int> second;

    queue.ask([](Api&) { return 1; },
        [&](std::future<int> first) {
            queue.ask([sum = first.get()](Api&) { return sum + 1; },
                [&](std::future<int> answer) { second.set_value(answer.get()); });
        });

    EXPECT_EQ(second.get_future().get(), 2);
    settle();
}

class PostedDone : public QueueTest
{
protected:
    Mailbox mailbox;
    RequestQueue queue{nullptr, mailbox.post()};
    int calls = 0;
};

TEST_F(PostedDone, RunsWhereThePosterRunsIt)
{
    queue.ask([](Api&) { return 1; },
        [&](std::future<int> answer) {
            EXPECT_TRUE(isReady(answer));
            calls += answer.get();
        });
    settle();
    EXPECT_EQ(calls, 0);

    mailbox.run();

    EXPECT_EQ(calls, 1);
}

TEST_F(PostedDone, GetsTheExceptionOfTheRequest)
{
    queue.ask([](Api&) { throw std::out_of_range("mine"); },
        [&](std::future<void> answer) {
            EXPECT_THROW(answer.get(), std::out_of_range);
            ++calls;
        });
    settle();

    mailbox.run();

    EXPECT_EQ(calls, 1);
}

TEST_F(PostedDone, GetsTheExceptionOfTheConnection)
{
    table.replyWith(message(u"not yet"));
    table.failWith(3);
    queue.ask([](Api&) {},
        [&](std::future<void> answer) {
            EXPECT_THROW(answer.get(), TessaportNotRunningException);
            ++calls;
        });
    EXPECT_THROW(settle(), TessaportNotRunningException);

    mailbox.run();

    EXPECT_EQ(calls, 1);
}

TEST_F(PostedDone, ThrowsOutOfThePostedFunction)
{
    queue.ask([](Api&) {}, [](std::future<void>) { throw std::out_of_range("mine"); });
    settle();

    EXPECT_THROW(mailbox.run(), std::out_of_range);
    EXPECT_EQ(queue.ask([](Api&) { return 9; }).get(), 9);
}

TEST_F(PostedDone, IsCalledOnceWhenThePostedFunctionRunsTwice)
{
    queue.ask([](Api&) {}, [&](std::future<void>) { ++calls; });
    settle();
    const auto posted = mailbox.take();
    ASSERT_EQ(posted.size(), 1U);

    posted.front()();
    posted.front()();

    EXPECT_EQ(calls, 1);
}

TEST_F(PostedDone, MayAskAgain)
{
    queue.ask([](Api&) {}, [&](std::future<void>) { queue.ask([](Api&) {}, [&](std::future<void>) { ++calls; }); });
    settle();
    mailbox.run();
    settle();

    mailbox.run();

    EXPECT_EQ(calls, 1);
}

TEST_F(PostedDone, GoesWithAPostedFunctionThatNeverRuns)
{
    auto owned = std::make_shared<int>(7);
    const std::weak_ptr<int> observed = owned;
    queue.ask([](Api&) {}, [&, owned = std::move(owned)](std::future<void>) { ++calls; });
    settle();
    EXPECT_FALSE(observed.expired());

    (void)mailbox.take();

    EXPECT_TRUE(observed.expired());
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(queue.ask([](Api&) { return 9; }).get(), 9);
}

TEST_F(PostedDone, IsDestroyedOnceItHasRun)
{
    auto owned = std::make_shared<int>(7);
    const std::weak_ptr<int> observed = owned;
    queue.ask([](Api&) {}, [owned = std::move(owned)](std::future<void>) {});
    settle();
    const auto posted = mailbox.take();

    posted.front()();

    EXPECT_TRUE(observed.expired());
}

TEST_F(PostedDone, IsNotCalledWhenThePosterThrows)
{
    RequestQueue throwing(nullptr, [](std::function<void()>) { throw std::runtime_error("closed"); });
    auto owned = std::make_shared<int>(7);
    const std::weak_ptr<int> observed = owned;

    throwing.ask([](Api&) {}, [&, owned = std::move(owned)](std::future<void>) { ++calls; });
    settle();

    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(observed.expired());
    EXPECT_EQ(throwing.ask([](Api&) { return 9; }).get(), 9);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
