// A host that makes its requests through a queue, and ends with exit code 7 in the way that its second argument names.
// Before it ends during a request, it writes the time, in milliseconds of the system's clock.
//   Queue_host API_FOLDER WAY
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <iostream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <velmora/native/RequestQueue.h>
#include <velmora/native/RuntimeOptions.h>
#include "tests/bridge/runtime/hosts/HostArguments.h"

using namespace Quorvex::Velmora::TessaportAPI;
using namespace std::chrono_literals;

namespace
{

constexpr int ExitCode = 7;

int say(int code)
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    std::cout << std::chrono::duration_cast<std::chrono::milliseconds>(now).count() << std::endl;
    return code;
}

// Asks for a sync, which the sync application takes half a minute for.
bool hold(RequestQueue& queue)
{
    std::promise<void> begun;
    auto answer = queue.ask([&begun](QvNativeTessaportAPI& tessaport) {
        begun.set_value();
        return tessaport.syncFiles({});
    });
    begun.get_future().wait();
    return answer.wait_for(200ms) == std::future_status::timeout;
}

// Destroyed while the process ends, and so before the objects of the library.
std::optional<RequestQueue> globalQueue;

// Destroyed after the handlers that a queue and a connection register for the end of the process.
struct LateGlobal {
    ~LateGlobal()
    {
        if (action)
            action();
    }
    std::function<void()> action;
};
LateGlobal lateGlobal;

// Keeps the process alive after the destructors of all libraries.
bool lingers = false;

#ifdef __linux__
void linger()
{
    if (lingers)
        std::this_thread::sleep_for(200ms);
}

// Runs before the constructors of libraries, so that its handler runs after their destructors. Has freed memory
// overwritten, so that whoever uses it is found out.
void registerFirst(int, char**, char**)
{
    std::atexit(linger);
#ifdef __GLIBC__
    mallopt(M_PERTURB, 1);
#endif
}

[[gnu::section(".preinit_array"), gnu::used]] void (*const firstFunction)(int, char**, char**) = registerFirst;
#endif

int returnFromMain()
{
    RequestQueue queue;
    return hold(queue) ? say(ExitCode) : 1;
}

int returnWithTheQueueInAGlobal()
{
    globalQueue.emplace(nullptr, [](const std::function<void()>& call) { call(); });
    if (!hold(*globalQueue))
        return 1;
    globalQueue->ask([](QvNativeTessaportAPI&) {}, [](std::future<void>) { std::_Exit(1); });
    return say(ExitCode);
}

[[noreturn]] void exitOnAnotherThread()
{
    globalQueue.emplace();
    const bool isHeld = hold(*globalQueue);
    std::thread([isHeld] { std::exit(isHeld ? say(ExitCode) : 1); }).detach();
    for (;;)
        std::this_thread::sleep_for(1s);
}

[[noreturn]] void exitInARequest()
{
    globalQueue.emplace();
    (void)globalQueue->ask([](QvNativeTessaportAPI& tessaport) {
        (void)tessaport.getDrives();
        std::exit(say(ExitCode));
    });
    for (;;)
        std::this_thread::sleep_for(1s);
}

// The request goes on while globals are destroyed; the one that waits after it must not begin.
int beginNothingMore()
{
    static auto* const leaked = new RequestQueue;
    static auto* const begun = new std::promise<void>;
    lateGlobal.action = [] { std::this_thread::sleep_for(300ms); };
    (void)leaked->ask([](QvNativeTessaportAPI& tessaport) {
        (void)tessaport.getDrives();
        begun->set_value();
        std::this_thread::sleep_for(100ms);
    });
    leaked->ask([](QvNativeTessaportAPI&) { std::_Exit(1); }, [](std::future<void>) { std::_Exit(2); });
    begun->get_future().wait();
    return ExitCode;
}

// Without a connection there is only the queue that can know of the end.
int beginNothingWithoutAConnection(const std::filesystem::path& apiFolder)
{
    static auto* const leaked = new RequestQueue;
    static const auto getVersion = [](QvNativeTessaportAPI& tessaport) { return tessaport.getVersion(); };
    setRuntimeOptions({apiFolder / "missing", {}});
    leaked->ask(getVersion).wait();
    lateGlobal.action = [] {
        if (leaked->ask(getVersion).wait_for(300ms) == std::future_status::ready)
            std::_Exit(1);
    };
    return ExitCode;
}

// Uses the item cache for longer than the process takes to end. It calls nothing managed meanwhile: the runtime stops
// such a thread when the process ends.
int returnWhileTheItemCacheIsUsed()
{
    static auto* const leaked = new RequestQueue;
    static auto* const begun = new std::promise<void>;
    (void)leaked->ask([](QvNativeTessaportAPI& tessaport) {
        const QVBuffer<Item> items = tessaport.getFolderContents(tessaport.getDrives()[0]->root);
        begun->set_value();
        for (const Item& item : items) {
            if (!QvNativeTessaportAPI::removeCachedItem(item.workspacePath))
                std::_Exit(1);
            std::this_thread::sleep_for(100us);
        }
    });
    begun->get_future().wait();
    lingers = true;
    return ExitCode;
}

int connectAfterAFailure(const std::filesystem::path& apiFolder)
{
    setRuntimeOptions({apiFolder / "missing", {}});
    RequestQueue queue;
    auto getVersion = [](QvNativeTessaportAPI& tessaport) { return tessaport.getVersion(); };
    try {
        (void)queue.ask(getVersion).get();
        return 1;
    } catch (const ApiException& e) {
        std::cout << e.what() << std::endl;
    }
    setRuntimeOptions({apiFolder, {}});
    return queue.ask(getVersion).get() == "3.0.0.0" ? ExitCode : 1;
}

} // namespace

int main(int count, char** values)
{
    const std::vector<std::string> arguments = Quorvex::Velmora::TestHosts::argumentsOf(count, values);
    if (arguments.size() != 2)
        return 2;
    const auto apiFolder = std::filesystem::u8path(arguments[0]);
    const std::string& way = arguments[1];
    if (way == "failed-connection")
        return connectAfterAFailure(apiFolder);
    setRuntimeOptions({apiFolder, {}});
    if (way == "return")
        return returnFromMain();
    if (way == "global-queue")
        return returnWithTheQueueInAGlobal();
    if (way == "another-thread")
        exitOnAnotherThread();
    if (way == "in-a-request")
        exitInARequest();
    if (way == "waiting-request")
        return beginNothingMore();
    if (way == "waiting-without-a-connection")
        return beginNothingWithoutAConnection(apiFolder);
    if (way == "used-cache")
        return returnWhileTheItemCacheIsUsed();
    return 2;
}
