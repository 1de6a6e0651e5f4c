// Sends requests from rounds of 10,000 threads, a few at a time, and writes by how many KiB the process has grown in
// the round in which it grew least. Ends at the first round that stays below the limit.
//   Threads_host API_FOLDER
#include <algorithm>
#include <climits>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <malloc.h>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RuntimeOptions.h>

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
    malloc_trim(0);
}

// Private memory in use, in KiB.
long usedMemory()
{
    std::ifstream file("/proc/self/smaps_rollup");
    std::string line;
    while (std::getline(file, line)) {
        if (line.rfind("Private_Dirty:", 0) == 0)
            return std::stol(line.substr(14));
    }
    throw std::runtime_error("no Private_Dirty in /proc/self/smaps_rollup");
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2)
        return 2;
    setRuntimeOptions({arguments[1], {}});
    QvNativeTessaportAPI connection;
    // The runtime grows once, some time after its start; what threads leave behind would come with every round.
    long least = LONG_MAX;
    for (int round = 0; round < 4 && least >= Limit; ++round) {
        const long before = usedMemory();
        useThreads(connection, 10'000);
        const long after = usedMemory();
        std::cerr << before << " KiB before, " << after << " KiB after" << std::endl;
        least = std::min(least, after - before);
    }
    std::cout << least << std::endl;
    return 7;
}
