// Sends requests from 10,000 threads, one after the other and a few at a time, and writes by how many bytes the
// process has grown after a first 2,000.
//   Threads_host API_FOLDER
#include <fstream>
#include <iostream>
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

void useThreads(QvNativeTessaportAPI& connection, int count)
{
    for (int i = 0; i < count; i += AtATime) {
        std::vector<std::thread> threads;
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
    return -1;
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2)
        return 2;
    setRuntimeOptions({arguments[1], {}});
    QvNativeTessaportAPI connection;
    useThreads(connection, 2000);
    const long before = usedMemory();
    useThreads(connection, 10'000);
    const long after = usedMemory();
    std::cerr << before << " KiB before, " << after << " KiB after" << std::endl;
    std::cout << after - before << std::endl;
    return before > 0 ? 7 : 1;
}
