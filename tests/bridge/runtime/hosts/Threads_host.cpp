// Sends requests from rounds of 10,000 threads, a few at a time, and writes by how many KiB the process grew in the
// round in which it grew least. Ends at the first round below the limit.
//   Threads_host API_FOLDER
#include <algorithm>
#include <climits>
#include <filesystem>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RuntimeOptions.h>
#include "tests/bridge/runtime/hosts/HostArguments.h"
#include "tests/bridge/runtime/hosts/ProcessMemory.h"

using namespace Quorvex::Velmora;
using namespace Quorvex::Velmora::TessaportAPI;

namespace
{

constexpr int AtATime = 4;
constexpr long Limit = 1024;

void useThreads(QvNativeTessaportAPI& connection, int count)
{
    for (int i = 0; i < count; i += AtATime) {
        std::vector<std::thread> threads;
        threads.reserve(AtATime);
        for (int k = 0; k < AtATime; ++k)
            threads.emplace_back([&] { (void)connection.getDrives(); });
        for (std::thread& thread : threads)
            thread.join();
    }
    connection.discover(); // Collects the managed garbage.
    TestHosts::giveBackFreeMemory();
}

} // namespace

int main(int count, char** values)
{
    const std::vector<std::string> arguments = TestHosts::argumentsOf(count, values);
    if (arguments.size() != 1)
        return 2;
    setRuntimeOptions({std::filesystem::u8path(arguments[0]), {}});
    QvNativeTessaportAPI connection;
    // The runtime itself grows once, some time after its start; a leak of threads grows with every round.
    long least = LONG_MAX;
    for (int round = 0; round < 4 && least >= Limit; ++round) {
        const long before = TestHosts::usedMemory();
        useThreads(connection, 10'000);
        const long after = TestHosts::usedMemory();
        std::cerr << before << " KiB before, " << after << " KiB after" << std::endl;
        least = std::min(least, after - before);
    }
    std::cout << least << std::endl;
    return 7;
}
