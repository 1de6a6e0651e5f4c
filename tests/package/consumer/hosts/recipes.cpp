// Parts of hosts, as docs/recipes.md shows them, and tests of them.
#include <chrono>
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <iterator>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include <velmora/api/Interop.h>
#include <velmora/api/QVLog.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RequestQueue.h>
#include <velmora/testkit/ScriptedService.h>
#include "../Expect.h"

using namespace Quorvex::Velmora::TessaportAPI;
using namespace Quorvex::Velmora::TestKit;
using namespace std::chrono_literals;
using Quorvex::Velmora::Common::QVLog;

namespace
{

// Waits for an answer, but not for ever.
std::wstring versionWithin(RequestQueue& queue, std::chrono::milliseconds limit)
{
    std::future<QVString> answer = queue.ask([](QvNativeTessaportAPI& tessaport) { return tessaport.getVersion(); });
    if (answer.wait_for(limit) != std::future_status::ready)
        return L"Tessaport has not answered yet.";
    try {
        return toWide(answer.get());
    } catch (const ApiException& failure) {
        return failure.getErrorMessage();
    }
}

// Runs what other threads post, one call after the other, on the thread that calls run().
class MainLoop
{
public:
    void post(std::function<void()> call)
    {
        const std::lock_guard lock(mutex);
        calls.push_back(std::move(call));
        added.notify_one();
    }

    void run()
    {
        while (!isEnding) {
            std::unique_lock lock(mutex);
            added.wait(lock, [this] { return !calls.empty(); });
            const std::function<void()> call = std::move(calls.front());
            calls.pop_front();
            lock.unlock();
            call();
        }
    }

    // Call it on the thread of run().
    void end() { isEnding = true; }

private:
    std::mutex mutex;
    std::condition_variable added;
    std::deque<std::function<void()>> calls;
    bool isEnding = false;
};

// The number of drives, counted while the loop goes on.
std::size_t countDrives()
{
    MainLoop loop;
    RequestQueue queue(nullptr, [&loop](std::function<void()> call) { loop.post(std::move(call)); });
    std::size_t count = 0;
    queue.ask([](QvNativeTessaportAPI& tessaport) { return tessaport.getDrives(); },
        [&](std::future<QVBuffer<Drive>> answer) {
            count = answer.get().GetSize();
            loop.end();
        });
    loop.run();
    return count;
}

// Appends the lines of the library to a file. The sink is called on any thread, also on several at once.
void logTo(const std::filesystem::path& path)
{
    struct Target {
        std::mutex mutex;
        std::ofstream file;
    };
    const auto target = std::make_shared<Target>();
    target->file.open(path, std::ios::app);
    QVLog::setSink([target](const QVString& line, bool) {
        const std::lock_guard lock(target->mutex);
        target->file << line << std::endl;
    });
}

// The item as it is now: the cache keeps what the first request for this path reported.
bool findFresh(const QVString& path, Item& item)
{
    QvNativeTessaportAPI::removeCachedItem(path);
    return QvNativeTessaportAPI::getItemByWorkspacePath(nullptr, path, item);
}

void testVersionWithin()
{
    ScriptedService service;
    RequestQueue queue;
    service.getVersion.answer(L"12.5");
    EXPECT(versionWithin(queue, 60s) == L"12.5");
    service.getVersion.fail(L"Not now.");
    EXPECT(versionWithin(queue, 60s) == L"Not now.");
    service.getVersion.hold();
    EXPECT(versionWithin(queue, 10ms) == L"Tessaport has not answered yet.");
    service.getVersion.release();
}

void testCountDrives()
{
    ScriptedService service;
    service.getDrives.answer({makeDrive(L"Harbour Project"), makeDrive(L"Archive")});
    EXPECT(countDrives() == 2);
}

void testLogTo()
{
    ScriptedService service;
    service.getDrives.fail(L"The log has this.");
    const std::filesystem::path path = std::filesystem::current_path() / "recipes.log";
    std::filesystem::remove(path);
    logTo(path);
    const bool isListable = QvNativeTessaportAPI::canAccessDriveData(nullptr);
    QVLog::setSink({});
    std::ifstream file(path);
    const std::string lines{std::istreambuf_iterator<char>(file), {}};
    EXPECT(!isListable);
    EXPECT(lines.find("The log has this.") != std::string::npos);
}

void testFindFresh()
{
    ScriptedService service;
    const Drive drive = makeDrive(L"Harbour Project");
    Item file = makeFile(drive, L"Plan.txt");
    const auto answer = [&](bool isOnServer) {
        file.isOnServer = isOnServer;
        service.getItemsByWorkspacePaths.answer({{file, Result::Success, file.workspacePath}});
    };
    Item found;
    answer(false);
    EXPECT(findFresh(file.workspacePath, found) && !found.isOnServer);
    answer(true);
    EXPECT(QvNativeTessaportAPI::getItemByWorkspacePath(nullptr, file.workspacePath, found) && !found.isOnServer);
    EXPECT(findFresh(file.workspacePath, found) && found.isOnServer);
}

} // namespace

int main()
{
    testVersionWithin();
    testCountDrives();
    testLogTo();
    testFindFresh();
}
