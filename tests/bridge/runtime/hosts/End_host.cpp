// A host that ends in the way that its second argument names, with exit code 7.
//   End_host API_FOLDER WAY
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/native/RuntimeOptions.h>
#include "tests/bridge/runtime/hosts/HostArguments.h"
#include "tests/support/KeptInThread.h"

using namespace Quorvex::Velmora::TessaportAPI;
using Quorvex::Velmora::Common::QVBuffer;

namespace
{

constexpr int ExitCode = 7;

// What hosts keep in globals, which are constructed before the runtime starts and so are destroyed when it takes no
// more calls.
struct Kept {
    std::unique_ptr<QvNativeTessaportAPI> connection;
    QVBuffer<Drive> drives;
    QVBuffer<Item> items;
    QVBuffer<Command> commands;
};
Kept kept;

QVBuffer<Item> list(QvNativeTessaportAPI& connection)
{
    const QVBuffer<Drive> drives = connection.getDrives();
    return connection.getFolderContents(drives[0]->root);
}

void keepEverything()
{
    kept.connection = std::make_unique<QvNativeTessaportAPI>();
    kept.drives = kept.connection->getDrives();
    kept.items = kept.connection->getFolderContents(kept.drives[0]->root);
    CommandContext context;
    context.itemId = kept.items[0]->id;
    kept.commands = kept.connection->getCommands(context);
}

void listAndKeepInThread()
{
    QvNativeTessaportAPI connection;
    Quorvex::Velmora::TestSupport::keepInThread(list(connection));
}

// Destroyed while the runtime still takes calls, because it was complete only after the runtime had started.
int useConnectedStatic()
{
    struct Connected {
        QvNativeTessaportAPI connection;
        QVBuffer<Item> items = list(connection);
    };
    static const Connected connected;
    return connected.items.GetSize() == 5000 ? ExitCode : 1;
}

[[noreturn]] void exitFromAnotherThread()
{
    std::thread([] { std::exit(ExitCode); }).detach();
    for (;;)
        std::this_thread::sleep_for(std::chrono::seconds(1));
}

[[noreturn]] void exitWhileThisThreadIsInARequest()
{
    QvNativeTessaportAPI connection;
    std::thread([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        std::exit(ExitCode);
    }).detach();
    for (;;)
        (void)connection.getVersion();
}

} // namespace

int main(int count, char** values)
{
    const std::vector<std::string> arguments = Quorvex::Velmora::TestHosts::argumentsOf(count, values);
    if (arguments.size() != 2)
        return 2;
    setRuntimeOptions({std::filesystem::u8path(arguments[0]), {}});
    const std::string& way = arguments[1];
    if (way == "full-cache") {
        QvNativeTessaportAPI connection;
        return list(connection).GetSize() == 5000 ? ExitCode : 1;
    }
    if (way == "nothing-done")
        return ExitCode;
    if (way == "connected-static")
        return useConnectedStatic();
    keepEverything();
    if (way == "globals")
        return kept.items.GetSize() == 5000 && kept.commands.GetSize() == 1 ? ExitCode : 1;
    if (way == "thread-local") {
        listAndKeepInThread();
        std::thread(listAndKeepInThread).join();
        return ExitCode;
    }
    if (way == "second-thread")
        exitFromAnotherThread();
    if (way == "during-a-request")
        exitWhileThisThreadIsInARequest();
    if (way == "exit-handler") {
        // Registered after the library's handler, so it runs earlier: requests still work.
        std::atexit([] {
            const QVBuffer<Item> items = list(*kept.connection);
            std::_Exit(items.GetSize() == 5000 ? ExitCode : 1);
        });
        return 1;
    }
    return 2;
}
