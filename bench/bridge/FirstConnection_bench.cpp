// The first connection of a process: the median of twenty fresh processes. Run with "--one" it makes the connection and
// prints how many milliseconds that took.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <velmora/native/QvNativeTessaportAPI.h>
#include "bench/support/Goals.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScriptedRuntime.h"

namespace
{

using namespace Quorvex::Velmora;

constexpr int Processes = 20;
constexpr double MostMilliseconds = 60;

int connectOnce()
{
    TestSupport::useScriptedService();
    const auto begin = std::chrono::steady_clock::now();
    const TessaportAPI::QvNativeTessaportAPI connection;
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    std::printf("%.3f\n", took.count());
    return 0;
}

double connectInFreshProcess(const char* program)
{
    const auto result = TestSupport::run({program, {"--one"}});
    return result.exitedWith(0) ? std::strtod(result.output.c_str(), nullptr) : -1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && std::string_view(argv[1]) == "--one")
        return connectOnce();
    std::vector<double> times;
    for (int i = 0; i < Processes; ++i)
        times.push_back(connectInFreshProcess(argv[0]));
    std::sort(times.begin(), times.end());
    if (times.front() < 0) {
        std::printf("a process failed\n");
        return 1;
    }
    const double median = times[times.size() / 2];
    std::printf("fastest %.1f ms, slowest %.1f ms\n\nRatios of this run:\n", times.front(), times.back());
    const std::string what = "first connection, ms, median of " + std::to_string(Processes) + " processes";
    return Bench::report({what, median, Bench::Side::AtMost, MostMilliseconds}) ? 0 : 2;
}
