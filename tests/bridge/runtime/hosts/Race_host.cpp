// Makes the first bridge objects of the process on 64 threads at once. Exits with 7 when every one of them works.
//   Race_host BRIDGE_FOLDER API_FOLDER
#include <atomic>
#include <filesystem>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include <velmora/bridge/QvManagedTessaportService.h>
#include <velmora/bridge/runtime/ClrRuntime.h>
#include "tests/bridge/runtime/hosts/HostArguments.h"

using namespace Quorvex::Velmora;

namespace
{

constexpr int Threads = 64;

bool firstUse()
{
    try {
        Tessaport::QvManagedTessaportService service;
        return service.getVersion() == Common::QVString("3.0.0.0");
    } catch (const std::exception& e) {
        std::cerr << e.what() << std::endl;
        return false;
    }
}

} // namespace

int main(int count, char** values)
{
    const std::vector<std::string> arguments = TestHosts::argumentsOf(count, values);
    if (arguments.size() != 2)
        return 2;
    auto& runtime = Tessaport::ClrRuntime::ofProcess();
    runtime.setBridgeFolder(std::filesystem::u8path(arguments[0]));
    runtime.setOptions({std::filesystem::u8path(arguments[1]), {}});

    std::atomic<int> waiting{Threads};
    std::atomic<int> succeeded{0};
    std::vector<std::thread> threads;
    threads.reserve(Threads);
    for (int i = 0; i < Threads; ++i) {
        threads.emplace_back([&] {
            for (--waiting; waiting > 0;)
                std::this_thread::yield();
            succeeded += firstUse() ? 1 : 0;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    return succeeded == Threads ? 7 : 1;
}
