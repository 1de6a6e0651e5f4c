// What tests of the request queue share: a C++ table in place of the managed one, requests that run until they are
// released, and a thread that runs what is posted to it when it is told to.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <list>
#include <mutex>
#include <utility>

#include <gtest/gtest.h>

#include <velmora/native/RequestQueue.h>
#include "tests/support/FakeEntryPoints.h"
#include "tests/support/SampleReplies.h"

namespace Quorvex::Velmora::TestSupport
{

using Api = TessaportAPI::QvNativeTessaportAPI;

template <class T>
[[nodiscard]] bool isReady(const std::future<T>& future)
{
    return future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

/// A request that runs until it is released.
class HeldRequest
{
public:
    static constexpr int Answer = 42;

    /// Returns when the request has begun.
    explicit HeldRequest(TessaportAPI::RequestQueue& queue)
    {
        answer = queue.ask([this](Api&) {
            begun.set_value();
            released.get_future().wait();
            return Answer;
        });
        begun.get_future().wait();
    }
    ~HeldRequest()
    {
        if (!isReleased)
            released.set_value();
        if (answer.valid())
            answer.wait();
    }
    HeldRequest(const HeldRequest&) = delete;
    HeldRequest& operator=(const HeldRequest&) = delete;

    void release()
    {
        released.set_value();
        isReleased = true;
    }

    std::future<int> answer;

private:
    std::promise<void> begun;
    std::promise<void> released;
    bool isReleased = false;
};

/// Keeps what is posted until a thread of the test runs it.
class Mailbox
{
public:
    using Call = std::function<void()>;

    [[nodiscard]] TessaportAPI::RequestQueue::Post post()
    {
        return [this](Call call) {
            const std::lock_guard lock(mutex);
            calls.push_back(std::move(call));
        };
    }

    [[nodiscard]] std::list<Call> take()
    {
        const std::lock_guard lock(mutex);
        return std::exchange(calls, {});
    }

    void run()
    {
        for (const Call& call : take())
            call();
    }

    [[nodiscard]] std::size_t size()
    {
        const std::lock_guard lock(mutex);
        return calls.size();
    }

private:
    std::mutex mutex;
    std::list<Call> calls;
};

/// Checks at the end that every connection of a queue was closed.
class QueueTest : public ::testing::Test
{
protected:
    QueueTest()
    {
        table.replyWith(SampleReplies::nothing());
        table.replyTo(Tessaport::VelmoraRequest::GetVersion, SampleReplies::version());
    }
    ~QueueTest() override
    {
        // Makes no connection that could still be open when the table is gone.
        table.failWith(1);
        EXPECT_THROW(settle(), TessaportAPI::ApiException);
        EXPECT_EQ(table.liveHandles(), 0);
        EXPECT_EQ(table.liveReplies(), 0);
        EXPECT_EQ(table.wrongReleases(), 0);
    }

    /// Returns when the request thread has done all that it was told to do before.
    static void settle()
    {
        TessaportAPI::RequestQueue last;
        last.ask([](Api&) {}).get();
    }

    FakeEntryPoints table;
};

} // namespace Quorvex::Velmora::TestSupport
