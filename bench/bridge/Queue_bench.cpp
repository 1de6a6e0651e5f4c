// What a request costs more through a queue: alone, until its answer is there, and among many that wait.
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <ctime>
#include <future>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RequestQueue.h>
#include "bench/support/Goals.h"
#include "tests/support/ScriptedService.h"

namespace
{

using namespace Quorvex::Velmora;
using TessaportAPI::QvNativeTessaportAPI;
using TessaportAPI::RequestQueue;

constexpr int Rounds = 15;
constexpr int Alone = 2'000;
constexpr int AtOnce = 100'000;

// The time of one of `count` pieces of work, in microseconds, in the best of several rounds: other load can only make a
// round longer.
template <class Now, class Work>
double bestOf(int count, Now now, Work work)
{
    double best = 0;
    for (int round = 0; round < Rounds; ++round) {
        const double begin = now();
        work();
        const double one = (now() - begin) * 1e6 / count;
        best = round == 0 ? one : std::min(best, one);
    }
    return best;
}

// The time that passes, in seconds: a thread that waits for an answer uses no processor.
double passedTime()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The processor time of both threads, which work at the same time.
double processorTime() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

double direct()
{
    QvNativeTessaportAPI connection;
    return bestOf(Alone, passedTime, [&] {
        for (int i = 0; i < Alone; ++i)
            connection.discover();
    });
}

double throughQueue()
{
    RequestQueue queue;
    return bestOf(Alone, passedTime, [&] {
        for (int i = 0; i < Alone; ++i)
            queue.ask([](QvNativeTessaportAPI& tessaport) { tessaport.discover(); }).get();
    });
}

// What the system needs to wake one thread and then the other: a call that is passed to a thread by a lock and answered
// by a future, with nothing else in it.
double handedOver()
{
    std::mutex mutex;
    std::condition_variable changed;
    std::promise<void>* asked = nullptr;
    bool ends = false;
    std::thread other([&] {
        std::unique_lock<std::mutex> lock(mutex);
        for (;;) {
            changed.wait(lock, [&] { return ends || asked != nullptr; });
            if (ends)
                return;
            std::exchange(asked, nullptr)->set_value();
        }
    });
    const double one = bestOf(Alone, passedTime, [&] {
        for (int i = 0; i < Alone; ++i) {
            std::promise<void> call;
            {
                const std::lock_guard<std::mutex> lock(mutex);
                asked = &call;
            }
            changed.notify_one();
            call.get_future().get();
        }
    });
    {
        const std::lock_guard<std::mutex> lock(mutex);
        ends = true;
    }
    changed.notify_one();
    other.join();
    return one;
}

double queuedAtOnce()
{
    RequestQueue queue;
    std::vector<std::future<void>> answers(AtOnce);
    return bestOf(AtOnce, processorTime, [&] {
        for (std::future<void>& answer : answers)
            answer = queue.ask([](QvNativeTessaportAPI& tessaport) { tessaport.discover(); });
        for (std::future<void>& answer : answers)
            answer.get();
    });
}

} // namespace

int main()
{
    TestSupport::ScriptedService scripted;
    scripted.record(false);
    const double alone = direct();
    const double queued = throughQueue();
    const double bare = handedOver();
    const double atOnce = queuedAtOnce();
    std::printf(
        "direct %.3f us, through a queue %.3f us, a bare call of another thread %.3f us\n", alone, queued, bare);
    std::printf("\nRatios of this run:\n");
    bool met =
        Bench::report({"request through a queue above the direct one, us", queued - alone, Bench::Side::AtMost, 15});
    met &= Bench::report({"for comparison: the same to a bare call of another thread", (queued - alone) / bare,
        Bench::Side::AtLeast, 0});
    met &= Bench::report(
        {"one of 100,000 requests that are queued at once, us of processor time", atOnce, Bench::Side::AtMost, 2});
    return met ? 0 : 2;
}
