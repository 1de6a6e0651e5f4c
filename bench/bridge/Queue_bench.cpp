// What a request costs more through a queue: alone, until its answer is there, and among many that wait.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <future>
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
    const double atOnce = queuedAtOnce();
    std::printf("direct %.3f us, through a queue %.3f us\n", alone, queued);
    std::printf("\nRatios of this run:\n");
    bool met =
        Bench::report({"request through a queue above the direct one, us", queued - alone, Bench::Side::AtMost, 15});
    met &= Bench::report(
        {"one of 100,000 requests that are queued at once, us of processor time", atOnce, Bench::Side::AtMost, 2});
    return met ? 0 : 2;
}
