// Many threads that ask, drop and destroy queues at the same time.
#include <array>
#include <atomic>
#include <cstddef>
#include <future>
#include <memory>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/native/RequestQueue.h>
#include "tests/native/QueueTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;

template <class Work>
void onThreads(int count, Work work)
{
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        threads.emplace_back(work, i);
    for (std::thread& thread : threads)
        thread.join();
}

class RequestQueueThreads : public QueueTest
{
};

// Requests run one after the other, so what they write needs no lock.
struct Sequence {
    int next = 0;
    int outOfOrder = 0;

    void take(int number)
    {
        outOfOrder += number == next ? 0 : 1;
        next = number + 1;
    }
};

// The thread sanitizer makes each request take 20 times as long.
#ifdef __SANITIZE_THREAD__
constexpr int RequestsOfAThread = 10'000;
#else
constexpr int RequestsOfAThread = 100'000;
#endif

TEST_F(RequestQueueThreads, GetEachAnswerOnceInTheOrderTheyAskedIn)
{
    constexpr int Threads = 16;
    constexpr int Requests = RequestsOfAThread;
    constexpr int AtATime = 1'000;
    std::array<RequestQueue, 4> queues;
    std::array<Sequence, Threads> begun;
    std::array<Sequence, Threads> done;
    std::atomic<int> wrong{0};

    onThreads(Threads, [&](int thread) {
        std::minstd_rand random(static_cast<unsigned>(thread));
        Sequence& begunHere = begun[static_cast<std::size_t>(thread)];
        Sequence& doneHere = done[static_cast<std::size_t>(thread)];
        std::vector<std::pair<int, std::future<int>>> answers;
        const auto checkAnswers = [&] {
            for (auto& [number, answer] : answers)
                wrong += answer.get() == -number ? 0 : 1;
            answers.clear();
        };
        for (int i = 0; i < Requests; ++i) {
            RequestQueue& queue = queues[random() % queues.size()];
            const auto request = [&begunHere, i](Api&) {
                begunHere.take(i);
                return -i;
            };
            if (i % 2 == 0) {
                answers.emplace_back(i, queue.ask(request));
            } else {
                queue.ask(request, [&doneHere, &wrong, i](std::future<int> answer) {
                    doneHere.take(i / 2);
                    wrong += answer.get() == -i ? 0 : 1;
                });
            }
            if (answers.size() == AtATime)
                checkAnswers();
        }
        checkAnswers();
    });
    settle();

    EXPECT_EQ(wrong, 0);
    for (const Sequence& sequence : begun) {
        EXPECT_EQ(sequence.next, Requests);
        EXPECT_EQ(sequence.outOfOrder, 0);
    }
    for (const Sequence& sequence : done) {
        EXPECT_EQ(sequence.next, Requests / 2);
        EXPECT_EQ(sequence.outOfOrder, 0);
    }
}

// Counts what becomes of requests: each one is either answered or dropped.
struct Outcomes {
    std::atomic<int> asked{0};
    std::atomic<int> ran{0};
    std::atomic<int> answered{0};
    std::atomic<int> dropped{0};

    void take(std::future<void> answer)
    {
        try {
            answer.get();
            ++answered;
        } catch (const RequestDropped&) {
            ++dropped;
        }
    }
};

TEST_F(RequestQueueThreads, DropWhatOthersAskForWithEachRequestAnsweredOrDropped)
{
    RequestQueue queue;
    Outcomes outcomes;

    onThreads(8, [&](int thread) {
        std::vector<std::future<void>> answers;
        for (int i = 0; i < 3'000; ++i) {
            ++outcomes.asked;
            answers.push_back(queue.ask([&](Api&) { ++outcomes.ran; }));
            ++outcomes.asked;
            queue.ask(
                [&](Api&) { ++outcomes.ran; }, [&](std::future<void> answer) { outcomes.take(std::move(answer)); });
            if (i % 50 == thread)
                queue.dropWaiting();
        }
        for (std::future<void>& answer : answers)
            outcomes.take(std::move(answer));
    });
    settle();

    EXPECT_EQ(queue.waiting(), 0U);
    EXPECT_EQ(outcomes.answered + outcomes.dropped, outcomes.asked);
    EXPECT_EQ(outcomes.answered, outcomes.ran);
}

// One window: makes a queue, asks, and closes with requests in every state. Its Dones run on its own thread, so none
// may run once its queue is destroyed.
void openAndClose(Outcomes& outcomes, unsigned seed, std::atomic<int>& doneTooLate)
{
    std::minstd_rand random(seed);
    Mailbox mailbox;
    std::vector<std::future<void>> answers;
    bool isClosed = false;
    {
        RequestQueue queue(nullptr, mailbox.post());
        for (auto count = random() % 8; count > 0; --count) {
            ++outcomes.asked;
            answers.push_back(queue.ask([&](Api& tessaport) {
                (void)tessaport.getVersion();
                ++outcomes.ran;
            }));
            queue.ask([](Api&) {}, [&](std::future<void>) { doneTooLate += isClosed ? 1 : 0; });
        }
        if (random() % 3 == 0)
            queue.dropWaiting();
        if (random() % 2 == 0)
            std::this_thread::yield();
        mailbox.run();
    }
    isClosed = true;
    for (std::future<void>& answer : answers)
        outcomes.take(std::move(answer));
    // The poster may still run for the last request of the queue.
    RequestQueue().ask([](Api&) {}).get();
    mailbox.run();
}

TEST_F(RequestQueueThreads, MakeAndDestroyQueuesWhileRequestsRun)
{
    Outcomes outcomes;
    std::atomic<int> doneTooLate{0};

    onThreads(8, [&](int thread) {
        for (int i = 0; i < 300; ++i)
            openAndClose(outcomes, static_cast<unsigned>(thread * 1'000 + i), doneTooLate);
    });
    settle();

    EXPECT_EQ(outcomes.answered + outcomes.dropped, outcomes.asked);
    EXPECT_EQ(outcomes.answered, outcomes.ran);
    EXPECT_GT(outcomes.answered, 0);
    EXPECT_GT(outcomes.dropped, 0);
    EXPECT_EQ(doneTooLate, 0);
}

TEST_F(RequestQueueThreads, ShareAQueueWhoseConnectionFailsAndLaterSucceeds)
{
    RequestQueue queue;
    table.replyWith(message(u"not yet"));
    table.failWith(3);
    onThreads(8, [&](int) {
        for (int i = 0; i < 100; ++i)
            EXPECT_THROW(queue.ask([](Api&) {}).get(), TessaportNotRunningException);
    });

    table.replyWith(SampleReplies::nothing());

    onThreads(8, [&](int) {
        for (int i = 0; i < 100; ++i)
            EXPECT_EQ(queue.ask([i](Api&) { return i; }).get(), i);
    });
    EXPECT_EQ(table.liveHandles(), 1);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
