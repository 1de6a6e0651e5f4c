// The first connection of a process: the median of twenty fresh processes. Run with "--one" it makes the connection and
// prints how many milliseconds that took.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <tests/support/ScriptedRuntime.h>
#include <velmora/native/QvNativeTessaportAPI.h>

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

double connectInFreshProcess(const std::string& program)
{
    FILE* const output = popen(("'" + program + "' --one").c_str(), "r");
    char line[64] = "";
    const bool read = output != nullptr && std::fgets(line, sizeof line, output) != nullptr;
    const bool succeeded = output != nullptr && pclose(output) == 0;
    return read && succeeded ? std::strtod(line, nullptr) : -1;
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
    const bool met = median <= MostMilliseconds;
    std::printf("fastest %.1f ms, slowest %.1f ms\n\nRatios of this run:\n", times.front(), times.back());
    std::printf("%-6s %8.2f  (goal: at most %.2f)  first connection, ms, median of %d processes\n",
        met ? "met" : "MISSED", median, MostMilliseconds, Processes);
    return met ? 0 : 2;
}
