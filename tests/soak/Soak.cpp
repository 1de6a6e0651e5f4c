// Makes many requests of all kinds in one process, and checks that the process does not grow.
//
//   velmora_soak REQUESTS [SEED]
//
// After each tenth it drops everything that it holds, and writes what the process uses. It fails if that grows after
// the first tenth.
#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <malloc.h>

#include "tests/bridge/runtime/hosts/ProcessMemory.h"
#include "tests/soak/ProcessUse.h"
#include "tests/soak/Requests.h"

using namespace Quorvex::Velmora;

namespace
{

constexpr int Parts = 10;

// What the process may use more than after the first tenth. .NET compiles code anew while it runs, keeps memory for
// later, and now and then has a thread more. No such limit depends on the number of requests, and handles have none.
constexpr std::int64_t MoreManagedBytes = 64 * 1024;
constexpr std::int64_t MoreNativeBytes = 2 * 1024 * 1024;
constexpr long MoreMemory = 16 * 1024;
constexpr std::size_t MoreDescriptors = 4;
constexpr std::size_t MoreThreads = 2;

std::size_t entriesOf(const char* folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

// The connection of a queue is closed on the thread of the queues, some time after the queue is gone.
void waitForQueues()
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (TestSupport::countHandles() > 0 && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

Soak::ProcessUse useAfterDropping(Soak::Requests& requests)
{
    requests.drop();
    waitForQueues();
    Soak::ProcessUse use;
    use.managedBytes = requests.service().collect().bytes;
    TestHosts::giveBackFreeMemory();
    const struct mallinfo2 native = mallinfo2();
    use.nativeBytes = static_cast<std::int64_t>(native.uordblks + native.hblkhd);
    use.memory = TestHosts::usedMemory();
    use.descriptors = entriesOf("/proc/self/fd");
    use.threads = entriesOf("/proc/self/task");
    use.handles = TestSupport::countHandles();
    return use;
}

void print(std::uint64_t requests, const Soak::ProcessUse& use)
{
    std::cout << std::setw(10) << requests << " requests: " << use.managedBytes << " managed bytes, " << use.nativeBytes
              << " native bytes, " << use.memory << " KiB, " << use.descriptors << " descriptors, " << use.threads
              << " threads, " << use.handles << " handles" << std::endl;
}

bool isFlat(const Soak::ProcessUse& first, const Soak::ProcessUse& last)
{
    return last.managedBytes <= first.managedBytes + MoreManagedBytes &&
           last.nativeBytes <= first.nativeBytes + MoreNativeBytes && last.memory <= first.memory + MoreMemory &&
           last.descriptors <= first.descriptors + MoreDescriptors && last.threads <= first.threads + MoreThreads &&
           last.handles <= first.handles;
}

std::uint64_t printCounts(const Soak::Requests& requests)
{
    std::uint64_t made = 0;
    std::uint64_t failed = 0;
    for (const auto& [name, count] : requests.counts()) {
        std::cout << "  " << std::left << std::setw(36) << name << std::right << std::setw(10) << count.made
                  << " of which failed " << count.failed << '\n';
        made += count.made;
        failed += count.failed;
    }
    std::cout << made << " requests of " << requests.counts().size() << " kinds, of which " << failed
              << " failed as the script wanted\n";
    return made;
}

bool run(std::uint64_t wanted, std::uint64_t seed)
{
    std::cout << "seed " << seed << std::endl;
    Soak::Requests requests(seed);
    std::vector<Soak::ProcessUse> uses;
    for (int part = 1; part <= Parts; ++part) {
        for (std::uint64_t i = 0; i < wanted / Parts; ++i)
            requests.make();
        uses.push_back(useAfterDropping(requests));
        print(wanted / Parts * static_cast<std::uint64_t>(part), uses.back());
    }
    const bool isComplete = printCounts(requests) >= wanted / Parts * Parts;
    const bool flat = isFlat(uses.front(), uses.back());
    if (!flat)
        std::cerr << "the process grows after the first tenth\n";
    if (!isComplete)
        std::cerr << "requests were left out\n";
    return flat && isComplete;
}

} // namespace

int main(int count, char** arguments)
{
    if (count < 2 || std::strtoull(arguments[1], nullptr, 10) < Parts) {
        std::cerr << "Usage: velmora_soak REQUESTS [SEED]\n";
        return 2;
    }
    try {
        const std::uint64_t seed = count > 2 ? std::strtoull(arguments[2], nullptr, 10) : std::random_device()();
        return run(std::strtoull(arguments[1], nullptr, 10), seed) ? 0 : 1;
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return 1;
    }
}
