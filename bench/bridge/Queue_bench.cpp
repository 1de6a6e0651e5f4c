// What a request costs more through a queue: alone, until its answer is there, and among many that wait.
#include <algorithm>
#include <chrono>
#include <cstdio>
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
using Clock = std::chrono::steady_clock;

constexpr int Rounds = 15;
constexpr int Alone = 2'000;
constexpr int AtOnce = 100'000;

// The time of one of `count` pieces of work, in microseconds, in the best of several rounds: other load can only make a
// round longer. It is the time that passes, because a queue's work is on two threads.
template <class Work>
double bestOf(int count, Work work)
{
    double best = 0;
    for (int round = 0; round < Rounds; ++round) {
        const auto begin = Clock::now();
        work();
        const std::chrono::duration<double, std::micro> took = Clock::now() - begin;
        const double one = took.count() / count;
        best = round == 0 ? one : std::min(best, one);
    }
    return best;
}

double direct()
{
    QvNativeTessaportAPI connection;
    return bestOf(Alone, [&] {
        for (int i = 0; i < Alone; ++i)
            connection.discover();
    });
}

double throughQueue()
{
    RequestQueue queue;
    return bestOf(Alone, [&] {
        for (int i = 0; i < Alone; ++i)
            queue.ask([](QvNativeTessaportAPI& tessaport) { tessaport.discover(); }).get();
    });
}

double queuedAtOnce()
{
    RequestQueue queue;
    std::vector<std::future<void>> answers(AtOnce);
    return bestOf(AtOnce, [&] {
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
    met &= Bench::report({"one of 100,000 requests that are queued at once, us", atOnce, Bench::Side::AtMost, 2});
    return met ? 0 : 2;
}
